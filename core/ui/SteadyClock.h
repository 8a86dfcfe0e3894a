#pragma once
#include <chrono>

#include "ui/Pump.h"

namespace tavlo {

// The real clock, for the program and the command-line tools.
class SteadyClock : public Clock {
public:
    std::int64_t now() const override {
        using namespace std::chrono;
        return duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count();
    }
};

// A pump for headless programs: sleeps a little instead of running a toolkit.
class SleepingPump : public Pump {
public:
    void yield() override;
};

}  // namespace tavlo

#pragma once
#include <cstdint>
#include <functional>

#include "ui/Pump.h"

namespace tavlo::testing {

// Time that moves only when a wait yields: a 30-second time-out takes
// microseconds, and every run sees the same times.
class FakeClock : public Clock {
public:
    std::int64_t now() const override { return now_; }
    void advance(std::int64_t ms) { now_ += ms; }

private:
    std::int64_t now_ = 1'000'000;
};

class FakePump : public Pump {
public:
    explicit FakePump(FakeClock& clock, std::int64_t stepMs = 10) : clock_(clock), step_(stepMs) {}
    void yield() override {
        ++yields_;
        clock_.advance(step_);
        if (onYield) onYield();
    }
    std::int64_t yields() const { return yields_; }
    // Runs at every yield: a test's way to act "while the program waits".
    std::function<void()> onYield;

private:
    FakeClock& clock_;
    std::int64_t step_;
    std::int64_t yields_ = 0;
};

}  // namespace tavlo::testing

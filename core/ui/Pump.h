#pragma once
#include <cstdint>

namespace tavlo {

// Lets the toolkit run (paint, timers, clicks) inside a wait loop.
class Pump {
public:
    virtual ~Pump() = default;
    virtual void yield() = 0;
};

// Monotonic milliseconds. Every wait measures time through this.
class Clock {
public:
    virtual ~Clock() = default;
    virtual std::int64_t now() const = 0;
};

// The one wait loop: yields until `done` says so or `ms` have passed.
// Returns true when `done` ended the wait.
template <typename Done>
bool waitUntil(Pump& pump, const Clock& clock, std::int64_t ms, Done done) {
    const std::int64_t start = clock.now();
    while (!done()) {
        if (clock.now() - start >= ms) return false;
        pump.yield();
    }
    return true;
}

}  // namespace tavlo

#pragma once
#include <cstdint>

namespace tavlo {

// MIDIForm's WaitTimer, the common time-out. A wait lasts two ticks: the
// first sets the half-way flag, the second clears it, raises TimedOut and
// stops the timer. A flow that stops the timer between the ticks leaves the
// flag set, so that the next wait ends after one interval: a simplicity the
// device's users know and that stays.
class WaitTimer {
public:
    void setInterval(std::int64_t ms) { interval_ = ms; }
    std::int64_t interval() const { return interval_; }
    // Starting (again) counts the interval from `now`.
    void start(std::int64_t now) {
        enabled_ = true;
        nextTick_ = now + interval_;
    }
    void stop() { enabled_ = false; }
    bool enabled() const { return enabled_; }
    bool halfWay() const { return halfWay_; }

    // Runs the ticks that are due at `now`; sets `timedOut` at the second.
    void update(std::int64_t now, bool& timedOut) {
        while (enabled_ && interval_ > 0 && now >= nextTick_) {
            nextTick_ += interval_;
            if (!halfWay_) {
                halfWay_ = true;
            } else {
                halfWay_ = false;
                timedOut = true;
                enabled_ = false;
            }
        }
    }

private:
    std::int64_t interval_ = 45000;
    std::int64_t nextTick_ = 0;
    bool enabled_ = false;
    bool halfWay_ = false;
};

}  // namespace tavlo

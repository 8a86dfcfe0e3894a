#include "ui/SteadyClock.h"

#include <thread>

namespace tavlo {

void SleepingPump::yield() { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }

}  // namespace tavlo

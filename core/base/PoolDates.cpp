#include "base/PoolDates.h"

#include <cstdio>
#include <ctime>

namespace tavlo {

std::string NowDateText() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    char buffer[32];
    std::strftime(buffer, sizeof buffer, "%Y-%m-%d %H:%M:%S", &local);
    return buffer;
}

std::string DisplayDate(const std::string& stored) {
    int year = 0, month = 0, day = 0;
    if (std::sscanf(stored.c_str(), "%4d-%2d-%2d", &year, &month, &day) != 3) return {};
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%02d/%02d/%04d", month, day, year);
    return buffer;
}

}  // namespace tavlo

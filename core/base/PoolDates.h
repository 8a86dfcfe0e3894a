#pragma once
#include <string>

namespace tavlo {

// Dates are stored as "YYYY-MM-DD HH:MM:SS" local time.
std::string NowDateText();
// "mm/dd/yyyy", as the windows show dates; empty for an unreadable date.
std::string DisplayDate(const std::string& stored);

}  // namespace tavlo

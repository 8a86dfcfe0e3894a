#pragma once
#include <string>
#include <string_view>

// Tavlo's texts are Windows-1252 inside; the database and the windows speak
// UTF-8. These two functions are the only crossing between the two.
namespace tavlo {

std::string Windows1252ToUtf8(std::string_view text);
// Characters that Windows-1252 cannot hold become "?"; malformed UTF-8 bytes
// are taken as Windows-1252 characters themselves, so nothing is dropped.
std::string Utf8ToWindows1252(std::string_view text);

}  // namespace tavlo

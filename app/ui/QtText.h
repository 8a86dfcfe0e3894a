#pragma once
#include <QString>
#include <string>

#include "base/Windows1252.h"

namespace tavlo {

// Core texts are Windows-1252; Qt's are Unicode.
inline QString toQt(const std::string& text) { return QString::fromStdString(Windows1252ToUtf8(text)); }
inline std::string fromQt(const QString& text) { return Utf8ToWindows1252(text.toStdString()); }

}  // namespace tavlo

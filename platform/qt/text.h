#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "platform/code_page.h"

// Converts between Qt's text and the tool's.
namespace platform {

inline QString ToQt(std::string_view text) { return QString::fromStdU16String(ToUtf16(text)); }

inline std::string FromQt(const QString& text) { return FromUtf16(text.toStdU16String()); }

}  // namespace platform

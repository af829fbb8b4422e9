#pragma once

#include <QString>
#include <string>
#include <string_view>

#include "platform/code_page.h"

// Between the toolkit's text and the tool's.
namespace platform {

inline QString ToQt(std::string_view text) { return QString::fromStdU16String(ToUtf16(text)); }

inline std::string FromQt(const QString& text) { return FromUtf16(text.toStdU16String()); }

// For captions, where the toolkit takes a single "&" for the mark of an access key.
inline QString ToQtCaption(std::string_view text) { return ToQt(text).replace('&', "&&"); }

}  // namespace platform

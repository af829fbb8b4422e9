#include "settings/EZINILib.h"

#include <utility>

#include "platform/files.h"

namespace EZINILib {
namespace {

// Text in UTF-16 is none that could be read, or added to.
std::string_view TextOf(const platform::HostPath& file, platform::FileBytes& bytes, std::error_code& unread) {
  unread = bytes.Read(file);
  if (unread == std::errc::no_such_file_or_directory) unread.clear();
  const std::string_view text = bytes.View();
  const bool isUtf16 = text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
  if (isUtf16) unread = platform::FileRefusal::Utf16;
  return isUtf16 ? std::string_view() : text;
}

std::string WholeTextOf(const platform::HostPath& file, std::error_code& unread) {
  platform::FileBytes bytes;
  return std::string(TextOf(file, bytes, unread));
}

std::string Shortened(std::string_view value) { return std::string(value.substr(0, kMostCharacters)); }

}  // namespace

std::string ReadINI(const platform::HostPath& file, std::string_view section, std::string_view key,
                    std::string_view fallback) {
  platform::FileBytes bytes;
  std::error_code unread;
  return Shortened(platform::ProfileText::FindIn(TextOf(file, bytes, unread), section, key).value_or(fallback));
}

void WriteINI(const platform::HostPath& file, std::string_view section, std::string_view key, std::string_view value) {
  WholeINI whole(file);
  whole.Write(section, key, value);
  [[maybe_unused]] const std::error_code failure = whole.Save();
}

WholeINI::WholeINI(platform::HostPath file) : file_(std::move(file)), text_(WholeTextOf(file_, unread_)) {}

std::string WholeINI::Read(std::string_view section, std::string_view key, std::string_view fallback) {
  return Shortened(text_.Find(section, key).value_or(fallback));
}

void WholeINI::Write(std::string_view section, std::string_view key, std::string_view value) {
  text_.Set(section, key, value);
  isChanged_ = true;
}

std::error_code WholeINI::Save() {
  if (unread_) return unread_;
  if (!std::exchange(isChanged_, false)) return {};
  return platform::ReplaceFile(file_, text_.Text());
}

}  // namespace EZINILib

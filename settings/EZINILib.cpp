#include "settings/EZINILib.h"

#include <utility>

namespace EZINILib {
namespace {

std::string Truncated(std::string_view value) { return std::string(value.substr(0, kMostCharacters)); }

}  // namespace

std::string ReadINI(const std::filesystem::path& file, std::string_view section, std::string_view key,
                    std::string_view fallback) {
  return WholeINI(file).Read(section, key, fallback);
}

void WriteINI(const std::filesystem::path& file, std::string_view section, std::string_view key,
              std::string_view value) {
  WholeINI whole(file);
  whole.Write(section, key, value);
  [[maybe_unused]] const std::error_code failure = whole.Save(file);
}

// UTF-16 files are rejected: their text cannot be read as lines of bytes.
WholeINI::WholeINI(const std::filesystem::path& file) {
  std::string bytes;
  unread_ = platform::ReadFile(file, bytes);
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) unread_ = platform::FileRefusal::Utf16;
  isMissing_ = unread_ == std::errc::no_such_file_or_directory;
  if (isMissing_) unread_.clear();
  if (!unread_) text_ = ProfileText(bytes);
}

std::string WholeINI::Read(std::string_view section, std::string_view key, std::string_view fallback) const {
  return Truncated(text_.Find(section, key).value_or(fallback));
}

void WholeINI::Write(std::string_view section, std::string_view key, std::string_view value) {
  text_.Set(section, key, value);
  isChanged_ = true;
}

std::error_code WholeINI::Save(const std::filesystem::path& file, const platform::OldFile& old) {
  if (unread_) return unread_;
  if (!std::exchange(isChanged_, false)) return {};
  return platform::ReplaceFile(file, text_.Text(), old);
}

}  // namespace EZINILib

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/files.h"
#include "platform/paths.h"
#include "settings/profile_text.h"

// Access to any profile file.
namespace EZINILib {

constexpr std::size_t kMostCharacters = 254;  // longer values are truncated to this when they are read

// Each of these two calls opens the file itself.

// The value, or `fallback` if the file, section or key is missing or the file cannot be read; either is truncated to
// kMostCharacters.
std::string ReadINI(const std::filesystem::path& file, std::string_view section, std::string_view key,
                    std::string_view fallback);

// Creates a missing file. A failure is silent and leaves the file as it was; a file that cannot be read is never
// replaced.
void WriteINI(const std::filesystem::path& file, std::string_view section, std::string_view key,
              std::string_view value);

// A profile file that is read once, kept in memory, and replaced once.
class WholeINI {
 public:
  explicit WholeINI(const std::filesystem::path& file);
  explicit WholeINI(ProfileText text) : text_(std::move(text)) {}  // not backed by a file

  // Like ReadINI and WriteINI, but in memory.
  std::string Read(std::string_view section, std::string_view key, std::string_view fallback) const;
  void Write(std::string_view section, std::string_view key, std::string_view value);
  std::string Text() const { return text_.Text(); }

  // Whether there was no file.
  bool IsMissing() const { return isMissing_; }
  // Why an existing file could not be read; then Save replaces nothing.
  std::error_code Unread() const { return unread_; }

  // Whether anything was written since the last read or save.
  bool IsChanged() const { return isChanged_; }
  // Replaces the file if anything was written. `file` must be the file that was read.
  std::error_code Save(const std::filesystem::path& file, const platform::OldFile& old = {});

 private:
  ProfileText text_{""};
  std::error_code unread_;
  bool isMissing_ = false;
  bool isChanged_ = false;
};

}  // namespace EZINILib

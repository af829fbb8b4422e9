#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/files.h"
#include "platform/paths.h"
#include "settings/profile_text.h"

// The values of any profile file.
namespace EZINILib {

constexpr std::size_t kMostCharacters = 254;  // longer values are truncated to this when they are read

// Each of these two opens the file and is complete in itself.

// The value, or `fallback` when the file, the section or the key is missing or the file cannot be read. Of either, the
// first kMostCharacters.
std::string ReadINI(const std::filesystem::path& file, std::string_view section, std::string_view key,
                    std::string_view fallback);

// Creates the file when it is missing. A failure is silent and leaves the file as it was; one that is there but cannot
// be read is never replaced.
void WriteINI(const std::filesystem::path& file, std::string_view section, std::string_view key,
              std::string_view value);

// A profile file that is read once, answers from memory, and is replaced once.
class WholeINI {
 public:
  explicit WholeINI(const std::filesystem::path& file);
  explicit WholeINI(ProfileText text) : text_(std::move(text)) {}  // of no file

  // As ReadINI and WriteINI, on the text in memory.
  std::string Read(std::string_view section, std::string_view key, std::string_view fallback) const;
  void Write(std::string_view section, std::string_view key, std::string_view value);
  std::string Text() const { return text_.Text(); }

  // Whether there was no file.
  bool IsMissing() const { return isMissing_; }
  // Why the file, which is there, could not be read. Nothing is replaced then.
  std::error_code Unread() const { return unread_; }

  // Whether something was written since it was read or saved.
  bool IsChanged() const { return isChanged_; }
  // Replaces the file, which is the one that was read, where something was written.
  std::error_code Save(const std::filesystem::path& file, const platform::OldFile& old = {});

 private:
  ProfileText text_{""};
  std::error_code unread_;
  bool isMissing_ = false;
  bool isChanged_ = false;
};

}  // namespace EZINILib

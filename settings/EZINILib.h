#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <system_error>

#include "platform/paths.h"
#include "platform/profile_text.h"

// The values of any profile file.
namespace EZINILib {

// Of a longer value, reading gives so many characters.
constexpr std::size_t kMostCharacters = 254;

// Each of these two opens the file and is complete in itself.

// The value, or `fallback` when the file, the section or the key is missing or the file cannot be read. Of either, the
// first kMostCharacters.
std::string ReadINI(const platform::HostPath& file, std::string_view section, std::string_view key,
                    std::string_view fallback);

// Creates the file when it is missing. A failure is silent and leaves the file as it was; one that is there but cannot
// be read is never replaced.
void WriteINI(const platform::HostPath& file, std::string_view section, std::string_view key, std::string_view value);

// A profile file that is read once, answers from memory, and is replaced once.
class WholeINI {
 public:
  explicit WholeINI(platform::HostPath file);

  // As ReadINI and WriteINI, on the text in memory.
  std::string Read(std::string_view section, std::string_view key, std::string_view fallback);
  void Write(std::string_view section, std::string_view key, std::string_view value);

  // Why the file, which is there, could not be read.
  std::error_code Unread() const { return unread_; }
  const platform::HostPath& File() const { return file_; }

  // Replaces the file, where something was written. What could not be read may not be saved.
  std::error_code Save();

 private:
  platform::HostPath file_;
  std::error_code unread_;
  platform::ProfileText text_;
  bool isChanged_ = false;
};

}  // namespace EZINILib

#pragma once

#include <string>
#include <string_view>
#include <system_error>

#include "platform/paths.h"

// The values of any profile file.
namespace EZINILib {

// Each of these two opens the file and is complete in itself.

// The value, or `fallback` when the file, the section or the key is missing or the file cannot be read. Of either, the
// first 254 characters at most. `failure`, if given, becomes the reason why a file that is there could not be read.
std::string ReadINI(const platform::HostPath& file, std::string_view section, std::string_view key,
                    std::string_view fallback, std::error_code* failure = nullptr);

// Returns whether the value was written. A failure is silent and leaves the file as it was.
bool WriteINI(const platform::HostPath& file, std::string_view section, std::string_view key, std::string_view value);

// A profile file whose changes reach the disk together: read once, changed in memory, replaced once.
class WholeINI {
 public:
  explicit WholeINI(platform::HostPath file);

  // As ReadINI and WriteINI, on the text in memory.
  std::string Read(std::string_view section, std::string_view key, std::string_view fallback) const;
  void Write(std::string_view section, std::string_view key, std::string_view value);

  // A failure is silent and leaves the file as it was. Nothing is done when nothing was written, nor when the file is
  // there but could not be read.
  void Save() const;

 private:
  platform::HostPath file_;
  std::string text_;
  bool maySave_ = false;
  bool isChanged_ = false;
};

}  // namespace EZINILib

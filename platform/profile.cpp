#include "platform/profile.h"

#include <algorithm>
#include <system_error>

#include "platform/files.h"
#include "platform/profile_text.h"

namespace platform {

std::size_t GetPrivateProfileStringA(std::string_view section, std::string_view key, std::string_view fallback,
                                     std::span<char> buffer, const HostPath& file, std::error_code* failure) {
  FileBytes text;
  const std::error_code unread = text.Read(file);
  if (failure != nullptr && unread && unread != std::errc::no_such_file_or_directory) *failure = unread;
  const std::string_view value = !unread ? FindValue(text.View(), section, key).value_or(fallback) : fallback;
  const std::size_t count = std::min(value.size(), buffer.size() - 1);
  std::copy_n(value.begin(), count, buffer.begin());
  buffer[count] = '\0';
  return count;
}

bool WritePrivateProfileStringA(std::string_view section, std::string_view key, std::string_view value,
                                const HostPath& file) {
  FileBytes text;
  const std::error_code failure = text.Read(file);
  if (failure && failure != std::errc::no_such_file_or_directory) return false;
  return !ReplaceFile(file, SetValue(text.View(), section, key, value));
}

}  // namespace platform

#include "settings/EZINILib.h"

#include <array>
#include <cstddef>

#include "platform/profile.h"

namespace EZINILib {

std::string ReadINI(const platform::HostPath& file, std::string_view section, std::string_view key,
                    std::string_view fallback) {
  std::array<char, 255> buffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): the call fills what is read of it
  const std::size_t count = platform::GetPrivateProfileStringA(section, key, fallback, buffer, file);
  return {buffer.data(), count};
}

void WriteINI(const platform::HostPath& file, std::string_view section, std::string_view key, std::string_view value) {
  platform::WritePrivateProfileStringA(section, key, value, file);
}

}  // namespace EZINILib

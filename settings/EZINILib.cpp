#include "settings/EZINILib.h"

#include <array>
#include <cstddef>
#include <system_error>
#include <utility>

#include "platform/files.h"
#include "platform/profile.h"
#include "platform/profile_text.h"

namespace EZINILib {
namespace {

constexpr std::size_t kMostCharacters = 254;

}  // namespace

std::string ReadINI(const platform::HostPath& file, std::string_view section, std::string_view key,
                    std::string_view fallback, std::error_code* failure) {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): the call fills what is read of it
  std::array<char, kMostCharacters + 1> buffer;
  const std::size_t count = platform::GetPrivateProfileStringA(section, key, fallback, buffer, file, failure);
  return {buffer.data(), count};
}

bool WriteINI(const platform::HostPath& file, std::string_view section, std::string_view key, std::string_view value) {
  return platform::WritePrivateProfileStringA(section, key, value, file);
}

WholeINI::WholeINI(platform::HostPath file) : file_(std::move(file)) {
  platform::FileBytes bytes;
  const std::error_code failure = bytes.Read(file_);
  maySave_ = !failure || failure == std::errc::no_such_file_or_directory;
  text_ = bytes.View();
}

std::string WholeINI::Read(std::string_view section, std::string_view key, std::string_view fallback) const {
  return std::string(platform::FindValue(text_, section, key).value_or(fallback).substr(0, kMostCharacters));
}

void WholeINI::Write(std::string_view section, std::string_view key, std::string_view value) {
  text_ = platform::SetValue(text_, section, key, value);
  isChanged_ = true;
}

void WholeINI::Save() const {
  if (!isChanged_ || !maySave_) return;
  [[maybe_unused]] const std::error_code failure = platform::ReplaceFile(file_, text_);
}

}  // namespace EZINILib

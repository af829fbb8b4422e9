#include "module_file/module_file.h"

#include <system_error>

#include "module_file/module_text.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace {

bool IsProgram(const std::filesystem::path& path) {
  constexpr std::size_t kMark = 4;
  std::string start;
  [[maybe_unused]] const auto isLonger = platform::ReadFile(path, start, kMark);
  return start.starts_with("MZ") || start.starts_with(
                                        "\x7F"
                                        "ELF");
}

// A mistake in Make.ini must not overwrite the game itself or the tool's own files.
std::error_code WhyNotReplaced(const std::filesystem::path& path, std::string_view header, std::string_view footer) {
  if (IsProgram(path)) return platform::FileRefusal::Program;
  for (const std::string_view own : {std::string_view("Ulvane.ini"), std::string_view("Make.ini"), header, footer}) {
    if (platform::IsSameFile(path, platform::BesideExecutable(own))) return platform::FileRefusal::OwnFile;
  }
  return {};
}

std::optional<FileFailure> ReadTemplate(std::string_view name, std::string& text) {
  const std::filesystem::path path = platform::BesideExecutable(name);
  const std::error_code failure = platform::ReadFile(path, text);
  return failure ? std::optional(FileFailure{platform::DisplayName(path), "read", failure}) : std::nullopt;
}

}  // namespace

// Builds the whole text first: the module file changes only if everything could be read.
std::optional<FileFailure> WriteModule(const Module1::Settings& settings, const std::string& game) {
  const std::string file = ModulePath(settings, game);
  if (file.empty()) return std::nullopt;
  const std::string headerName = settings.GetMakeSetting("Make", "Header", "HEADER");
  const std::string footerName = settings.GetMakeSetting("Make", "Footer", "FOOTER");
  if (auto unread = settings.Unread()) return unread;
  std::string header;
  std::string footer;
  if (auto failure = ReadTemplate(headerName, header)) return failure;
  if (auto failure = ReadTemplate(footerName, footer)) return failure;

  const auto path = platform::ToHostPath(file);
  if (!path) return FileFailure{file, "written", std::make_error_code(std::errc::no_such_device)};
  std::error_code failure = WhyNotReplaced(*path, headerName, footerName);
  if (!failure) failure = platform::ReplaceFile(*path, ModuleText(settings, game, header, footer));
  return failure ? std::optional(FileFailure{file, "written", failure}) : std::nullopt;
}

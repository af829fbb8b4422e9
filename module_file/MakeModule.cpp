#include <system_error>

#include "mods/frmMain.h"
#include "module_file/module_text.h"
#include "platform/files.h"
#include "settings/Module1.h"
#include "settings/schema.h"

using Module1::GetMakeSetting;
using Module1::GetNumber;
using Module1::GetSetting;

namespace {

FileFailure NotMade(std::string file, const char* what, std::error_code reason) {
  return {std::move(file), what, reason, "The module file was left as it was."};
}

// What a slip in Make.ini must not cost: the game itself, or the tool's own files.
std::error_code WhyNotReplaced(const platform::HostPath& path, std::string_view header, std::string_view footer) {
  platform::FileBytes old;
  const std::error_code unread = old.Read(path);
  const bool isProgram = old.View().starts_with("MZ") || old.View().starts_with(
                                                             "\x7F"
                                                             "ELF");
  if (isProgram || unread == platform::FileRefusal::TooLarge) return platform::FileRefusal::Program;
  for (const std::string_view own : {std::string_view("Ulvane.ini"), std::string_view("Make.ini"), header, footer}) {
    if (platform::IsSameFile(path, platform::BesideExecutable(own))) return platform::FileRefusal::OwnFile;
  }
  return {};
}

// Appends the lines of a template beside the executable.
std::optional<FileFailure> CopyTemplate(std::string_view name, std::string& module) {
  const platform::HostPath path = platform::BesideExecutable(name);
  platform::FileBytes text;
  if (const auto failure = text.Read(path)) return NotMade(platform::Shown(path), "read", failure);
  module_text::AppendTemplate(text.View(), module);
  return std::nullopt;
}

// Appends the folders of the game's active mods, those of the highest number first, counting them up from `number`.
void AppendMods(const std::string& game, std::int64_t modCount, std::int64_t number, std::string& module) {
  for (std::int64_t i = modCount; i >= 1; --i) {
    const std::string section = schema::ModSection(game, i);
    if (GetNumber(section, "Active", 0) != 1) continue;
    const std::int64_t dirCount = Module1::DirCount(section);
    for (std::int64_t j = 1; j <= dirCount; ++j) {
      module_text::AppendDataFolder(number++, GetSetting(section, schema::DirKey(j), ""), module);
    }
  }
}

}  // namespace

std::string frmMain::ModuleFile() const {
  const Module1::Reading reading;
  const std::string folder = GetBPath();
  return folder.empty() ? "" : folder + GetMakeSetting("Make", "Outfile", "Ulvane.module");
}

// The whole text comes first: the module file changes only when everything that belongs into it could be read.
std::optional<FileFailure> frmMain::MakeModule() const {
  const Module1::Reading reading;
  const std::string game = SelectedGame();
  const std::int64_t firstNumber = Module1::GetMakeNumber("Make", "NextDirNum", 5);
  const std::int64_t modCount = Module1::ModCount(game);
  const std::string file = ModuleFile();
  if (const auto unread = Module1::Unread()) return NotMade(unread->file, unread->what, unread->reason);
  if (file.empty()) return std::nullopt;

  const std::string header = GetMakeSetting("Make", "Header", "HEADER");
  const std::string footer = GetMakeSetting("Make", "Footer", "FOOTER");
  std::string module;
  if (auto failure = CopyTemplate(header, module)) return failure;
  AppendMods(game, modCount, firstNumber, module);
  if (auto failure = CopyTemplate(footer, module)) return failure;

  const auto path = platform::ToHostPath(file);
  if (!path) return NotMade(file, "written", std::make_error_code(std::errc::no_such_device));
  std::error_code failure = WhyNotReplaced(*path, header, footer);
  if (!failure) failure = platform::ReplaceFile(*path, module);
  if (failure) return NotMade(file, "written", failure);
  return std::nullopt;
}

#include <system_error>

#include "mods/frmMain.h"
#include "module_file/module_text.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "settings/Module1.h"
#include "settings/schema.h"

using Module1::GetMakeSetting;
using Module1::GetNumber;
using Module1::GetSetting;

namespace {

std::string FailureText(const std::string& file, std::string_view what, const std::error_code& reason) {
  return file + " could not be " + std::string(what) + ": " + reason.message() +
         ".\n\nThe module file was left as it was.";
}

// Appends the lines of a template beside the executable.
std::optional<std::string> CopyTemplate(std::string_view name, std::string& module) {
  const platform::HostPath path = platform::BesideExecutable(name);
  platform::FileBytes text;
  if (const auto failure = text.Read(path)) return FailureText(platform::Shown(path), "read", failure);
  module_text::AppendTemplate(text.View(), module);
  return std::nullopt;
}

// Appends the folders of the game's active mods, those of the highest number first, counting them up from `number`.
void AppendMods(const std::string& game, std::int64_t modCount, std::int64_t number, std::string& module) {
  for (std::int64_t i = modCount; i >= 1; --i) {
    const std::string section = schema::ModSection(game, i);
    if (GetNumber(section, "Active", 0) != 1) continue;
    const std::int64_t dirCount = GetNumber(section, "DirCount", 0);
    for (std::int64_t j = 1; j <= dirCount; ++j) {
      module_text::AppendDataFolder(number++, GetSetting(section, schema::DirKey(j), ""), module);
    }
  }
}

}  // namespace

void frmMain::MakeModule() const { ShowFailure(WriteModule()); }

// The whole text comes first: the module file changes only when everything that belongs into it could be read.
frmMain::ModuleFailure frmMain::WriteModule() const {
  const Module1::Command command;
  const std::string game = SelectedGame();
  const std::int64_t firstNumber = Module1::GetMakeNumber("Make", "NextDirNum", 5);
  const std::int64_t modCount = Module1::ModCount(game);
  const std::string folder = GetBPath();
  if (folder.empty() && !command.FirstUnread()) return std::nullopt;
  const std::string file = folder + GetMakeSetting("Make", "Outfile", "Ulvane.module");

  std::string module;
  if (auto failure = CopyTemplate(GetMakeSetting("Make", "Header", "HEADER"), module)) return failure;
  AppendMods(game, modCount, firstNumber, module);
  if (auto failure = CopyTemplate(GetMakeSetting("Make", "Footer", "FOOTER"), module)) return failure;
  if (const auto& unread = command.FirstUnread()) {
    return FailureText(platform::Shown(unread->file), "read", unread->reason);
  }

  const auto path = platform::ToHostPath(file);
  const auto failure = path ? platform::ReplaceFile(*path, module) : std::make_error_code(std::errc::no_such_device);
  if (failure) return FailureText(file, "written", failure);
  return std::nullopt;
}

void frmMain::ShowFailure(const ModuleFailure& failure) {
  if (failure) platform::MsgBox(*failure, platform::Buttons::Ok, platform::Icon::Critical, "Make Module");
}

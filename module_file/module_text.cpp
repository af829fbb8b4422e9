#include "module_file/module_text.h"

#include <algorithm>

#include "settings/schema.h"

namespace {

constexpr std::string_view kLineEnd = "\r\n";

// A line end at the template's very end adds no empty line.
void AppendTemplate(std::string_view templateText, std::string& module) {
  while (!templateText.empty()) {
    const std::size_t length = std::min(templateText.find('\r'), templateText.size());
    module.append(templateText.substr(0, length)).append(kLineEnd);
    templateText.remove_prefix(length);
    if (!templateText.empty()) templateText.remove_prefix(templateText.starts_with(kLineEnd) ? 2 : 1);
  }
}

std::string OutFile(const Module1::Settings& settings) {
  return settings.GetMakeSetting("Make", "Outfile", "Ulvane.module");
}

}  // namespace

std::string ModuleText(const Module1::Settings& settings, std::string_view game, std::string_view header,
                       std::string_view footer) {
  std::string module;
  AppendTemplate(header, module);
  std::int64_t number = settings.GetMakeNumber("Make", "NextDirNum", 5);
  for (std::int64_t i = settings.ModCount(game); i >= 1; --i) {
    const std::string section = schema::ModSection(game, i);
    if (settings.GetNumber(section, "Active", 0) != 1) continue;
    for (const std::string& folder : settings.Folders(section))
      module.append("DataFolder.").append(std::to_string(number++)).append(" = ").append(folder).append(kLineEnd);
  }
  AppendTemplate(footer, module);
  return module;
}

std::string ModulePath(const Module1::Settings& settings, std::string_view game) {
  const std::string folder = settings.InstallFolder(game);
  return folder.empty() ? "" : folder + OutFile(settings);
}

std::string LaunchOption(const Module1::Settings& settings) {
  const std::string file = OutFile(settings);
  return "-modname " + file.substr(0, file.rfind('.'));
}

std::vector<std::string> GamesWithOtherModules(const Module1::Settings& before, const Module1::Settings& after) {
  std::vector<std::string> games;
  const std::int64_t count = after.GameCount();
  for (std::int64_t n = 1; n <= count; ++n) {
    const std::string game = after.GameName(n);
    const std::string oldPath = ModulePath(before, game);
    const bool isMoved = !oldPath.empty() && oldPath != ModulePath(after, game);
    if (isMoved || ModuleText(before, game, "", "") != ModuleText(after, game, "", "")) games.push_back(game);
  }
  return games;
}

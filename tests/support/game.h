#pragma once

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/paths.h"
#include "settings/Module1.h"
#include "support/own_folder.h"
#include "support/user.h"

// A registered game with four mods; the first and the third are active.
namespace support {

using Names = std::vector<std::string>;

inline std::string Text(const Names& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

// A mod in the settings; `leftOver` are folders beyond its count.
struct Mod {
  std::string name;
  std::string active;
  Names folders = {};
  Names leftOver = {};
};

inline const Mod kAlpha = {"Alpha", "1", {"AlphaData"}};
inline const Mod kBeta = {"Beta", "0", {"BetaData"}};
inline const Mod kGamma = {"Gamma", "1", {"GammaData", "GammaSound"}};
inline const Mod kDelta = {"Delta", "0"};

inline std::string Section(const std::string& number, const Mod& mod) {
  Names folders = mod.folders;
  folders.insert(folders.end(), mod.leftOver.begin(), mod.leftOver.end());
  std::string text = Text({"[Dawn of War." + number + "]", "Name=" + mod.name, "Active=" + mod.active,
                           "DirCount=" + std::to_string(mod.folders.size())});
  for (std::size_t i = 0; i < folders.size(); ++i) text += Text({"Dir" + std::to_string(i + 1) + "=" + folders[i]});
  return text;
}

inline std::string Settings(int count, const std::vector<Mod>& mods) {
  std::string text = Text({"[Games]", "Count=1", "DoW1=Dawn of War", "[Dawn of War]", "Path=C:\\Games\\D\xF6W\\",
                           "ModCount=" + std::to_string(count)});
  for (std::size_t i = 0; i < mods.size(); ++i) text += Section(std::to_string(i + 1), mods[i]);
  return text;
}

inline std::string FourMods() { return Settings(4, {kAlpha, kBeta, kGamma, kDelta}); }
inline const std::string kFourShown = "Beta, Delta | Alpha, Gamma";  // as the user sees it: available | active

// `text` with its only `old` replaced, to describe a change. Throws if there is not exactly one.
inline std::string With(std::string text, const std::string& old, const std::string& with) {
  const std::size_t at = text.find(old);
  if (at == std::string::npos || text.find(old, at + 1) != std::string::npos) throw std::logic_error("not one " + old);
  return text.replace(at, old.size(), with);
}

inline std::string TwoGames() {
  return With(FourMods(), "Count=1\r\nDoW1", "Count=2\r\nDoW2=Second\r\nDoW1") +
         Text({"[Second]", "ModCount=1", "[Second.1]", "Name=Other"});
}

inline fs::path GameFolder() { return DriveC() / "Games" / u8"D\u00F6W"; }
inline fs::path ModuleFile() { return GameFolder() / "Ulvane.module"; }

// The whole module file with these folders between header and footer.
inline std::string Module(const Names& folders) {
  std::string text = ReadFile(ExecutableFolder() / "HEADER");
  int number = 5;
  for (const std::string& folder : folders) text += Text({"DataFolder." + std::to_string(number++) + " = " + folder});
  return text + ReadFile(ExecutableFolder() / "FOOTER");
}

// A message about the settings file.
inline Message Failed(const std::string& title, const std::string& how, const std::string& outcome) {
  return {title, platform::DisplayName({SettingsFile().native()}) + how + "\n\n" + outcome, "critical", {"OK"}};
}

inline const std::string kUnread = " could not be read: UTF-16 text is not supported.";  // for these settings:
inline const std::string kUnreadable = "\xFF\xFE";

inline void ResetWithFourMods() {
  Reset();
  for (const char8_t* const folder : {u8"Data", u8"data2", u8"B\u00E4r", u8"b", u8".hidden", u8"Zoo"})
    fs::create_directories(GameFolder() / "w40K" / folder);
  WriteFile(SettingsFile(), FourMods());
}

// With two games.
inline const Act kChooseSecond = InTurn({GoTo("lstGame"), Press("Down")});
inline Act Sees(const std::optional<Message>& message) {
  return [=] { EXPECT_EQ(ShownMessage(), message); };
}
inline Act Focused(const std::string& control) {
  return [=] { EXPECT_EQ(Focus(), control); };
}
// Simulates another program's write.
inline Act Write(const std::string& settings) {
  return [=] { WriteFile(SettingsFile(), settings); };
}

inline Act Shows(const std::string& list, const std::string& shown) {
  return [=] { EXPECT_EQ(Shown(list), shown); };
}

// Checks what the user sees after the acts: the games if the setup dialog is open, else both lists.
inline void Try(const std::string& settings, const std::string& rule, const std::vector<Act>& acts,
                const std::string& lists) {
  SCOPED_TRACE(rule);
  ResetWithFourMods();
  WriteFile(SettingsFile(), settings);
  const Act look = [&] {
    EXPECT_FALSE(ShownMessage());
    EXPECT_FALSE(Exists("frmNew"));
    const bool isInSetup = CountWindows("frmDoWSetup") > 0;
    EXPECT_EQ(isInSetup ? Shown("lstGames") : Shown("lstNotActive") + " | " + Shown("lstActive"), lists);
  };
  EXPECT_FALSE(Use({InTurn(acts), look})) << "it ends by itself";
}

// Also checks the disk: the settings (unchanged if none given), and the module file's folders (no file if none given).
inline void Check(const std::string& settings, const std::string& rule, const std::vector<Act>& acts,
                  const std::string& lists, const std::optional<std::string>& newSettings = {},
                  const std::optional<Names>& moduleFolders = {}) {
  Try(settings, rule, acts, lists);
  EXPECT_EQ(ReadFile(SettingsFile()), newSettings.value_or(settings)) << rule;
  EXPECT_EQ(ReadFile(ModuleFile()), moduleFolders ? Module(*moduleFolders) : "") << rule;
}

// A rule on settings in memory, with the settings before and after.
using Rule = std::function<void(Module1::Change&)>;
struct RuleRow {
  const char* rule;
  std::string before;
  Rule act;
  std::string after;
};
inline void CheckRules(const std::vector<RuleRow>& rows) {
  for (const RuleRow& row : rows) {
    Module1::Change change(row.before);
    row.act(change);
    EXPECT_EQ(change.Text(), row.after) << row.rule;
  }
}

}  // namespace support

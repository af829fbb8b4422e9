#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// The system's own dialogs. All are modal to the whole program. Text is shown as it is, never as markup.
namespace platform {

enum class Buttons : std::uint8_t { Ok, OkCancel, YesNo };  // the first is the default button
enum class Icon : std::uint8_t { None, Information, Exclamation, Critical };
enum class Answer : std::uint8_t { Ok, Cancel, Yes, No };

// Escape, the close box, and a program that is asked to quit, answer Cancel or No where there is such a button.
Answer MsgBox(std::string_view text, Buttons buttons, Icon icon, std::string_view title);

// The text entered; empty on cancel. Takes no character that the code page lacks, and says so beside the text.
std::string InputBox(std::string_view prompt, std::string_view title, std::string_view defaultText);

struct FileFilter {
  std::string_view text;
  std::string_view pattern;
};

struct OpenFileDialog {
  std::string_view title;
  // A Windows path to start in. Where there is no such folder, the dialog starts on Linux with the game in a Steam
  // library that has the file, else on drive C: of a prefix, else in the user's home; on Windows, where it likes.
  std::string folder;
  std::string_view fileName;
  std::span<const FileFilter> filters;
  std::string_view defaultExtension;
  std::size_t longestFolder;  // that of the chosen file, in characters, the separator at its end counted
};

struct ChosenFile {
  std::string path;  // a Windows path
  std::string name;  // its last component
};

// Nothing when the user cancels. A file whose path the code page cannot spell, or whose folder's path is too long, is
// refused with a message, and the choice goes on.
std::optional<ChosenFile> ShowOpen(const OpenFileDialog& settings);

// Shows a folder, a Windows path, in the desktop's file manager. False where it is missing or the desktop has none.
bool OpenFolder(std::string_view windowsPath);

// Puts the text on the clipboard.
void CopyText(std::string_view text);

}  // namespace platform

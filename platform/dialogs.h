#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// The system's own dialogs, modal to the whole program. Text is plain, never markup.
namespace platform {

enum class Buttons : std::uint8_t { Ok, OkCancel, YesNo };  // the first is the default button
enum class Icon : std::uint8_t { None, Information, Exclamation, Critical };
enum class Answer : std::uint8_t { Ok, Cancel, Yes, No };

// Escape, the close box and a quit request answer Cancel or No if there is such a button.
Answer MsgBox(std::string_view text, Buttons buttons, Icon icon, std::string_view title);

// The text entered; empty on Cancel. Rejects characters that the code page lacks, with a hint next to the box.
std::string InputBox(std::string_view prompt, std::string_view title, std::string_view defaultText);

struct FileFilter {
  std::string_view text;
  std::string_view pattern;
};

struct OpenFileDialog {
  std::string_view title;
  // The Windows path to start in. If there is no such folder: on Linux, the game in a Steam library that has the file,
  // else drive C: of a prefix, else the user's home; on Windows, the system's choice.
  std::string folder;
  std::string_view fileName;
  std::span<const FileFilter> filters;
  std::string_view defaultExtension;
  std::size_t longestFolder;  // in characters, including the trailing separator
};

struct ChosenFile {
  std::string path;  // a Windows path
  std::string name;  // its last component
};

// Nothing when the user cancels. If the code page cannot spell the path, or the folder's path is too long, a message
// says so and the dialog stays open.
std::optional<ChosenFile> ShowOpen(const OpenFileDialog& settings);

// Opens a folder, a Windows path, in the file manager. False if the folder or a file manager is missing.
bool OpenFolder(std::string_view windowsPath);

void CopyText(std::string_view text);

}  // namespace platform

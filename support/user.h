#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// Someone who uses the tool: clicks, types, reads what the screen shows. The windows are the real ones, and everything
// goes through the events that a mouse and a keyboard cause.
//
// What the user does is a list of acts. Each begins when the tool has come to rest from the one before: the command has
// ended, or waits for the user in a dialog. All text is in the code page. An act that cannot be done throws.
namespace support {

using Act = std::function<void()>;

// Starts the tool, and ends it after the last act. When the tool ends by itself before, returns its exit code; what was
// left to do is not done then. Rethrows what an act throws.
[[nodiscard]] std::optional<int> Use(const std::vector<Act>& acts);

Act InTurn(const std::vector<Act>& acts);
void DoNext(const std::vector<Act>& acts);  // before what was to come, for an act that finds out what there is to do
Act Wait(std::chrono::milliseconds time);
Act Soon(const Act& act);  // as an event that waits behind those that are there; what runs comes first
Act Together(const Act& first, const Act& second);  // without a rest between them

// Controls are known by their names. Of two on the screen with the same name, that of the active window is meant.
Act Click(const std::string& control, const std::string& entry = "");       // on the entry, where one is named
Act RightClick(const std::string& control, const std::string& entry = "");  // opens the menu, if there is one
Act Choose(const std::string& caption);                                     // from the menu
Act Drag(const std::string& list, const std::string& entry, const std::string& below);  // another entry
Act DoubleClick(const std::string& list, const std::string& entry);
Act Hover(const std::string& control, const std::string& entry = "");  // until the tooltip comes
Act Select(const std::string& list, const std::string& entry);         // as a screen reader does, without the focus
Act TurnWheel(const std::string& control);                             // one notch, over it
Act Answer(const std::string& button);                                 // a message or another dialog

Act Press(const std::string& keys);                                  // as Qt writes them: "Return", "Esc", "Alt+Up"
Act Repeat(const std::string& keys);                                 // once more, while they are held down
Act GoTo(const std::string& control);                                // by the Tab key
Act Type(const std::string& text);                                   // where the focus is, in place of what is selected
Act Paste(const std::u16string& text);                               // there as well, and not in the code page
Act Perform(const std::string& action, const std::string& control);  // by a screen reader: "Press", "Increase"

// Of the named window; where none is named, of the message or other dialog that is shown, or else of the active window.
Act Close(const std::string& window = "");  // by its close box
Act SavePicture(const std::filesystem::path& file);

// Makes the desktop's colours white on black.
Act TurnDark();
Act SwitchToAnotherProgram();  // and back
// Does `look` at each change to the list that `act` makes.
Act Watch(const std::string& list, const Act& look, const Act& act);

struct Message {
  std::string title;
  std::string text;
  std::string icon;                  // "", "information", "exclamation" or "critical"
  std::vector<std::string> buttons;  // the default button first
  bool operator==(const Message&) const = default;
};

// What the screen shows, for acts to look at.
std::optional<Message> ShownMessage();        // or other dialog
int CountWindows(const std::string& window);  // those on the screen; of several at one place, one
bool Exists(const std::string& window);       // there, or in memory
// As a screen reader speaks them.
std::vector<std::string> Entries(const std::string& list);
// The same in one line, with the selected one in brackets; in parentheses, what is there in the place of entries.
std::string Shown(const std::string& list);
std::string Menu();                            // its lines, with what is grey in parentheses
std::string Marked(const std::string& list);   // the entries with a warning sign
std::string Look(const std::string& control);  // "<spoken name>, <font> <its pixels> in <window's fixed size>"
// The pixels of a window or a control in one colour: 0xFFFFFF is white.
int CountPixels(const std::string& name, unsigned colour);
bool IsAtTop(const std::string& list);  // of its entries
bool IsEnabled(const std::string& control);
bool IsPointerBusy();
std::string ToolTip();
// The name of the control with the focus. The display makes a new window active in its own time: waits for that.
std::string Focus();
std::string Clipboard();
std::string TextOfFocus();  // what stands in the text box with the focus

}  // namespace support

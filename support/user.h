#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

// A simulated user: clicks, types, reads the screen. The windows are real, and everything goes through mouse and
// keyboard events.
//
// The user performs a list of acts. Each starts when the tool is idle after the previous one: the command has returned
// or a dialog waits for the user. All text is in the code page. An impossible act throws.
namespace support {

using Act = std::function<void()>;

// Starts the tool, and ends it after the last act. If the tool exits earlier, returns its exit code and skips the
// remaining acts. Rethrows what an act throws.
[[nodiscard]] std::optional<int> Use(const std::vector<Act>& acts);

Act InTurn(const std::vector<Act>& acts);
void DoNext(const std::vector<Act>& acts);  // before the remaining acts; for an act that computes further acts
Act Wait(std::chrono::milliseconds time);
Act Soon(const Act& act);                           // as an event at the end of the queue; lets running code finish
Act Together(const Act& first, const Act& second);  // without idling in between

// Controls are identified by name. Of two visible ones with the same name, the active window's is meant.
Act Click(const std::string& control, const std::string& entry = "");                   // on the entry if given
Act RightClick(const std::string& control, const std::string& entry = "");              // opens the menu, if any
Act Choose(const std::string& caption);                                                 // from the menu
Act Drag(const std::string& list, const std::string& entry, const std::string& below);  // `below` is an entry, too
Act DoubleClick(const std::string& list, const std::string& entry);
Act Hover(const std::string& control, const std::string& entry = "");  // until the tooltip appears
Act Select(const std::string& list, const std::string& entry);         // like a screen reader, without the focus
Act TurnWheel(const std::string& control);                             // one notch, over it
Act Answer(const std::string& button);                                 // in a message or another dialog

Act Press(const std::string& keys);     // in Qt's notation: "Return", "Esc", "Alt+Up"
Act Repeat(const std::string& keys);    // auto-repeat of held keys
Act GoTo(const std::string& control);   // by the Tab key
Act Type(const std::string& text);      // into the focused control, replacing the selection
Act Paste(const std::u16string& text);  // the same, not in the code page
Act Perform(const std::string& action, const std::string& control);  // by a screen reader: "Press", "Increase"

// Of the named window; by default the open dialog, else the active window.
Act Close(const std::string& window = "");  // by its close box
Act SavePicture(const std::filesystem::path& file);

// Switches the desktop to white on black.
Act TurnDark();
Act SwitchToAnotherProgram();  // and back
// Calls `look` at each change to the list during `act`.
Act Watch(const std::string& list, const Act& look, const Act& act);

struct Message {
  std::string title;
  std::string text;
  std::string icon;                  // "", "information", "exclamation" or "critical"
  std::vector<std::string> buttons;  // the default button first
  bool operator==(const Message&) const = default;
};

// What the screen shows; call these from acts.
std::optional<Message> ShownMessage();        // or other dialog
int CountWindows(const std::string& window);  // visible ones; several at the same place count once
bool Exists(const std::string& window);       // in memory, visible or not
// As read by screen readers.
std::vector<std::string> Entries(const std::string& list);
// In one line: the selected entry in brackets, the empty text in parentheses.
std::string Shown(const std::string& list);
std::string Menu();                            // its lines; disabled ones in parentheses
std::string Marked(const std::string& list);   // the entries with a warning sign
std::string Look(const std::string& control);  // "<accessible name>, <font> <its pixels> in <window's fixed size>"
// The number of pixels of this colour in a window or control; 0xFFFFFF is white.
int CountPixels(const std::string& name, unsigned colour);
bool IsAtTop(const std::string& list);  // whether it is scrolled to the top
bool IsEnabled(const std::string& control);
bool IsPointerBusy();
std::string ToolTip();
// The name of the focused control. Waits until the display has activated a new window.
std::string Focus();
std::string Clipboard();
std::string TextOfFocus();  // the text in the focused text box

}  // namespace support

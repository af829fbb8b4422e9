#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

class QWidget;

// Someone who uses the tool: clicks, types, reads what the screen shows. The windows are the real ones, and everything
// goes through the events that a mouse and a keyboard cause.
//
// The tool runs on the main thread; the user acts from a thread of their own, so what they do reads from top to bottom,
// also where a command waits for a dialog. Each act returns when the tool has come to rest: the command has ended, or
// waits for the user in a dialog. All text is in the code page. An act that cannot be done throws.
namespace support {

struct Message {
  std::string title;
  std::string text;
  std::string icon;                  // "", "information", "exclamation" or "critical"
  std::vector<std::string> buttons;  // the default button first
  bool operator==(const Message&) const = default;
};

enum class Key : std::uint8_t { Tab, BackTab, Enter, Escape, Space, Up, Down, AltUp, AltDown, Delete, Insert, F5 };

class Hands;

class User {
 public:
  explicit User(Hands& hands) : hands_(&hands) {}

  // The window that the following acts are about, the `which`th of that name, in the order of their opening.
  void LookAt(std::string_view window, int which = 0);
  int CountWindows(std::string_view window);  // those on the screen
  bool IsInUse();                             // whether the window takes input

  void Click(std::string_view control);
  void ClickEntry(std::string_view list, std::string_view text);
  void Choose(std::string_view dropDown, std::string_view text);  // opens it, and clicks the entry
  void OpenDropDown(std::string_view dropDown);                   // and closes it again with Escape
  void Type(std::string_view text);                               // where the focus is, in place of what is selected
  void Press(Key key);
  void GoTo(std::string_view control);  // by the Tab key
  // Whether the pointer says so all the while that `act` lasts, as far as the changes to a list show it.
  bool IsBusy(std::string_view list, const std::function<void()>& act);

  void CloseWindow();             // by its close box
  void SwitchToAnotherProgram();  // and back

  std::vector<std::string> Entries(std::string_view list);
  std::string Selected(std::string_view list);  // its text; empty when no entry is
  bool IsEnabled(std::string_view control);
  std::string EmptyText(std::string_view list);  // what it shows in the place of entries
  std::string Font(std::string_view control);    // the family that it is drawn with
  std::string TextOfFocus();                     // what stands in the text box with the focus
  std::string Focus();                           // the name of the control with the focus, in the active window
  std::string ActiveWindow();
  void AwaitActiveWindow();  // the display gives a new window the focus in its own time

  std::optional<Message> ShownMessage();
  void Answer(std::string_view button);                  // of the message or other dialog that is shown
  void DismissDialog();                                  // by its close box
  void TypeFileName(const std::filesystem::path& name);  // into the file dialog, in place of what is there
  std::string DialogText();                              // what a dialog that is no message says
  std::string DialogTitle();  // of the message or other dialog that is shown; empty when none is

  void SavePicture(const std::filesystem::path& file);        // of the window
  void SaveDialogPicture(const std::filesystem::path& file);  // of the message or other dialog

  bool HasEnded();

  void RefillMainWindow();  // all in it is as at the tool's start, the focus included

  // What nothing above says: runs on the tool's thread.
  void Do(const std::function<void()>& act);

  // Copies the whole process, with its windows as they are. In the copy, which ends with them, a user of its own acts;
  // one who gives up says why on the error output. Returns the copy's wait status, 0 when all went well. A copy that
  // hangs is ended by SIGALRM. `acts` holds no reference to the caller's variables, which the copy does not have.
  int DoInACopy(const std::function<void(User&)>& acts);

  void DoubleClickEntry(std::string_view list, std::string_view text);
  void Hold(Key key);                        // down for so long that it comes again
  void TurnWheel(std::string_view control);  // one notch, over it
  void Paste(std::u16string_view text);      // where the focus is
  // Clicks the button; while its command fills the list, clicks the other, and the close box.
  void ClickWhile(std::string_view button, std::string_view list, std::string_view other);

 private:
  QWidget& Window() const;
  QWidget& Control(std::string_view name) const;

  Hands* hands_;
  std::string window_ = "frmMain";
  int which_ = 0;
};

// Starts the tool, lets the user act, and ends the tool when the user is done and it has not ended by itself. Rethrows
// what `acts` throws. Returns the tool's exit code.
int Use(const std::function<void(User&)>& acts);

}  // namespace support

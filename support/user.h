#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

enum class Key : std::uint8_t { Tab, Enter, Escape, Space, Up, Down, AltUp, AltDown, Delete, Insert, F5 };

class Hands;

// Controls are known by their names. Of two on the screen with the same name, that of the active window is meant.
class User {
 public:
  explicit User(Hands& hands) : hands_(&hands) {}

  void Click(std::string_view control);
  void ClickEntry(std::string_view list, std::string_view text);
  void Type(std::string_view text);      // where the focus is, in place of what is selected
  void Paste(std::u16string_view text);  // there as well, and not in the code page
  void Press(Key key);
  void Hold(Key key);  // down for so long that it comes again
  void DoubleClickEntry(std::string_view list, std::string_view text);
  void TurnWheel(std::string_view control);  // one notch, over it
  // Clicks the button; while its command fills the list, clicks the other, and the close box.
  void ClickWhile(std::string_view button, std::string_view list, std::string_view other);
  void GoTo(std::string_view control);  // by the Tab key
  void SwitchToAnotherProgram();        // and back
  // Whether the pointer says so when `act` last changes the list.
  bool IsBusy(std::string_view list, const std::function<void()>& act);

  int CountWindows(std::string_view window);  // those on the screen
  std::vector<std::string> Entries(std::string_view list);
  std::string Selected(std::string_view list);  // its text; empty when no entry is
  bool IsEnabled(std::string_view control);
  std::string EmptyText(std::string_view list);  // what it shows in the place of entries
  std::string Font(std::string_view control);    // the family that it is drawn with
  // The name of the control with the focus. The display makes a new window active in its own time: waits for that.
  std::string Focus();
  std::string TextOfFocus();  // what stands in the text box with the focus

  std::optional<Message> ShownMessage();  // or other dialog
  void Answer(std::string_view button);

  // By its close box. Where none is named, it is that of the message or other dialog that is shown, or else the active
  // window; so with the picture.
  void CloseWindow(std::string_view window = "");
  void SavePicture(const std::filesystem::path& file);

  // Whether the tool has. No other act can be done then.
  bool HasEnded();

  // What nothing above says: runs on the tool's thread.
  void Do(const std::function<void()>& act);

 private:
  // Calls `look` at each change to the list that `act` makes.
  void Watch(std::string_view list, const std::function<void()>& look, const std::function<void()>& act);

  Hands* hands_;
};

// Starts the tool, lets the user act, and ends the tool when the user is done and it has not ended by itself. Rethrows
// what `acts` throws. Returns the tool's exit code.
int Use(const std::function<void(User&)>& acts);

}  // namespace support

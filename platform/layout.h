#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// A window's layout as data. Start-up passes the layouts to the platform, which builds the windows. Positions and sizes
// are in twips; 15 twips are one device-independent pixel. Text is in the code page.
namespace platform {

enum class ControlKind : std::uint8_t {
  Label,
  CentredLabel,
  Line,   // from (left, top) over (width, height)
  Frame,  // decorative, behind the other controls
  Button,
  DropDownList,
  ListBox,       // at most one entry selected
  MultiListBox,  // any number of entries selected
  TextBox,
};

struct FontLayout {
  std::string_view family;  // a similar font is used if the system lacks it
  double points = 0;
  bool isBold = false;
};

struct Place {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

constexpr int kNoTabStop = -1;

enum class Initially : std::uint8_t { Enabled, Disabled };

// Where an entry that does not fit is cut and gets its "…".
enum class Cutting : std::uint8_t { AtTheEnd, InTheMiddle };

// Enter clicks the focused button, or else the default button. In a window with a default button, Escape clicks the
// cancel button, or asks the window to close if there is none.
enum class ButtonRole : std::uint8_t { Plain, Default, Cancel };

struct ControlLayout {
  std::string_view name;
  ControlKind kind = ControlKind::Label;
  std::string_view caption = {};
  Place place = {};
  int tabOrder = kNoTabStop;
  FontLayout font = {};  // the window's if no family is named
  std::string_view tooltip = {};
  Initially initially = Initially::Enabled;
  ButtonRole role = ButtonRole::Plain;
  std::string_view label = {};           // the label whose caption is this control's accessible name
  std::string_view accessibleName = {};  // used without a label; if empty, the tooltip or the caption
  Cutting cutting = Cutting::AtTheEnd;   // of a list's entries
  std::string_view focusFallback = {};   // a button's: the list that takes the focus when the button is disabled
};

enum class ActsOn : std::uint8_t { Window, SelectedEntry };

// A command of a window. Its menu entry, key and screen-reader action are made from this.
struct CommandLayout {
  std::string_view caption;
  std::string_view key = {};      // like "Alt+Up"; in a list, "Enter" also means double click
  std::string_view button = {};   // the button it clicks if enabled; without one, the command has its own handler
  std::string_view control = {};  // has it in its menu; must be focused for the key; empty: any control
  ActsOn actsOn = ActsOn::Window;
  bool repeats = false;      // while the key is held down, at the keyboard's repeat rate
  bool startsGroup = false;  // draws a line above it in the menu
};

struct Colour {
  std::uint8_t red = 0;
  std::uint8_t green = 0;
  std::uint8_t blue = 0;
};

struct Colours {
  Colour background;
  Colour labels;
};

struct WindowLayout {
  std::string_view name;
  std::string_view caption;
  int width = 0;  // of the client area; windows have a fixed size
  int height = 0;
  FontLayout font = {};
  std::span<const ControlLayout> controls = {};
  std::optional<Colours> colours = {};  // the desktop's if none
  std::string_view firstFocus = {};     // if empty, the first in tab order
  std::span<const CommandLayout> commands = {};
};

}  // namespace platform

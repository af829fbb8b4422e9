#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

// A window's layout as data: what start-up hands to the platform, and the platform builds windows from. Positions and
// sizes are in twips; 15 twips are one device-independent pixel. Text is in the code page.
namespace platform {

enum class ControlKind : std::uint8_t {
  Label,
  CentredLabel,
  Line,   // from (left, top) over (width, height)
  Frame,  // decorative, behind the other controls
  Button,
  DropDownList,
  ListBox,       // one entry selected at most
  MultiListBox,  // any number of entries selected
  TextBox,
};

struct FontLayout {
  std::string_view family;  // a like-looking one is used where the system lacks it
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

// Where an entry that does not fit is cut, with "…" in that place.
enum class Cutting : std::uint8_t { AtTheEnd, InTheMiddle };

// Enter clicks the button that has the focus, or else the window's default button. In a window with a default button,
// Escape clicks the cancel button, or asks the window to close where there is none.
enum class ButtonRole : std::uint8_t { Plain, Default, Cancel };

struct ControlLayout {
  std::string_view name;
  ControlKind kind = ControlKind::Label;
  std::string_view caption = {};
  Place place = {};
  int tabOrder = kNoTabStop;
  FontLayout font = {};  // the window's, where no family is named
  std::string_view tooltip = {};
  Initially initially = Initially::Enabled;
  ButtonRole role = ButtonRole::Plain;
  std::string_view label = {};           // whose caption names the control for screen readers
  std::string_view accessibleName = {};  // the same where no label does; the tooltip or the caption, where it is empty
  Cutting cutting = Cutting::AtTheEnd;   // of a list's entries
  std::string_view focusFallback = {};   // a button's: the list that takes the focus from it when it is disabled
};

enum class ActsOn : std::uint8_t { Window, SelectedEntry };

// A command of a window. Its menus, its keys and the actions that screen readers offer are made from these.
struct CommandLayout {
  std::string_view caption;
  std::string_view key = {};     // as "Alt+Up"; "Enter" is a double click in a list as well
  std::string_view button = {};  // that it clicks while it is enabled; a command without one has a handler of its own
  std::string_view control =
      {};  // in whose menu it is, and that must have the focus for the key; any, where it is empty
  ActsOn actsOn = ActsOn::Window;
  bool repeats = false;      // while the key is held down, at the keyboard's rate; otherwise it acts once
  bool startsGroup = false;  // a line above it in the menu
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
  int width = 0;  // of the area inside the frame; windows keep their size
  int height = 0;
  FontLayout font = {};
  std::span<const ControlLayout> controls = {};
  std::optional<Colours> colours = {};  // the desktop's own, where there are none
  std::string_view firstFocus = {};     // the first in the tab order, where it is empty
  std::span<const CommandLayout> commands = {};
};

}  // namespace platform

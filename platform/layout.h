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
  std::string_view focusFallback = {};   // a button's: the list that takes the focus from it when it is disabled
};

// A command of a window: its key, beyond what the key does in every window, and what screen readers hear of it.
struct CommandLayout {
  std::string_view caption;
  std::string_view key;          // as "Alt+Up"
  std::string_view button = {};  // that it clicks while it is enabled; a command without one has a handler of its own
  std::string_view list = {};    // whose selected entry must have the focus; "Enter" is a double click there as well
  bool repeats = false;          // while the key is held down, at the keyboard's rate; otherwise it acts once
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

#include "app/layouts.h"

#include <array>

namespace {

using platform::ActsOn;
using platform::ButtonRole;
using platform::Colours;
using platform::CommandLayout;
using platform::ControlLayout;
using platform::Cutting;
using platform::FontLayout;
using platform::Initially;
using platform::WindowLayout;
using enum platform::ControlKind;

constexpr FontLayout Comic(double points) { return {.family = "Comic Sans MS", .points = points}; }
constexpr FontLayout ComicBold(double points) { return {.family = "Comic Sans MS", .points = points, .isBold = true}; }
constexpr FontLayout kStar = {.family = "MS Sans Serif", .points = 18};

// A button of the main window that has nothing to act on until the lists are filled.
constexpr ControlLayout ModButton(std::string_view name, std::string_view caption, std::string_view tooltip,
                                  platform::Place place, int tabOrder, std::string_view focusFallback,
                                  FontLayout font = {}) {
  return {.name = name,
          .kind = Button,
          .caption = caption,
          .place = place,
          .tabOrder = tabOrder,
          .font = font,
          .tooltip = tooltip,
          .initially = Initially::Disabled,
          .focusFallback = focusFallback};
}

constexpr std::array kMainControls = {
    ControlLayout{.name = "Line1", .kind = Line, .place = {0, 480, 6360, 0}},
    ControlLayout{.name = "Line2", .kind = Line, .place = {0, 1080, 6360, 0}},
    ControlLayout{.name = "Shape1", .kind = Frame, .place = {0, 1440, 855, 1095}},
    ControlLayout{.name = "Shape2", .kind = Frame, .place = {2880, 1440, 855, 2175}},
    ControlLayout{.name = "Shape5", .kind = Frame, .place = {5640, 1440, 735, 1095}},
    ControlLayout{.name = "Shape3", .kind = Frame, .place = {600, 1080, 2295, 1455}},
    ControlLayout{.name = "Shape4", .kind = Frame, .place = {3480, 1080, 2295, 975}},
    ControlLayout{.name = "lblTitle",
                  .kind = CentredLabel,
                  .caption = "Ulvane's Gantrel",
                  .place = {0, 0, 6375, 495},
                  .tabOrder = 0,
                  .font = Comic(18)},
    ControlLayout{.name = "Label1",
                  .kind = Label,
                  .caption = "Product:",
                  .place = {0, 600, 1935, 255},
                  .tabOrder = 1,
                  .font = Comic(9.75)},
    ControlLayout{
        .name = "lstGame", .kind = DropDownList, .place = {840, 600, 4935, 375}, .tabOrder = 2, .label = "Label1"},
    ControlLayout{.name = "cmdGoToGames",
                  .kind = Button,
                  .caption = "*",
                  .place = {5880, 600, 375, 375},
                  .tabOrder = 15,
                  .font = kStar,
                  .tooltip = "DoW Installation Setup"},
    ControlLayout{.name = "Label2",
                  .kind = CentredLabel,
                  .caption = "Available Mods",
                  .place = {600, 1200, 2295, 375},
                  .tabOrder = 4,
                  .font = ComicBold(9.75)},
    ControlLayout{.name = "Label3",
                  .kind = CentredLabel,
                  .caption = "Activated Mods",
                  .place = {3480, 1200, 2295, 375},
                  .tabOrder = 6,
                  .font = ComicBold(9.75)},
    ControlLayout{
        .name = "lstNotActive", .kind = ListBox, .place = {600, 1560, 2295, 3630}, .tabOrder = 3, .label = "Label2"},
    ControlLayout{
        .name = "lstActive", .kind = ListBox, .place = {3480, 1560, 2295, 3630}, .tabOrder = 5, .label = "Label3"},
    ControlLayout{.name = "cmdNewMod",
                  .kind = Button,
                  .caption = "+",
                  .place = {120, 1560, 375, 375},
                  .tabOrder = 13,
                  .font = ComicBold(11.25),
                  .tooltip = "New Mod"},
    ModButton("cmdDeleteMod", "X", "Delete Mod", {120, 2040, 375, 375}, 14, "lstNotActive", ComicBold(9)),
    ModButton("cmdActivate1", ">", "Activate Selected", {3000, 1560, 375, 375}, 7, "lstActive"),
    ModButton("cmdDeactivate1", "<", "Deactivate Selected", {3000, 2040, 375, 375}, 8, "lstNotActive"),
    ModButton("cmdActivateAll", ">>", "Activate All", {3000, 2640, 375, 375}, 9, "lstActive"),
    ModButton("cmdDeactivateAll", "<<", "Deactivate All", {3000, 3120, 375, 375}, 10, "lstNotActive"),
    ModButton("cmdMoveUp", "/\\", "Move Selected Up", {5880, 1560, 375, 375}, 11, "lstActive"),
    ModButton("cmdMoveDown", "\\/", "Move Selected Down", {5880, 2040, 375, 375}, 12, "lstActive"),
};

constexpr CommandLayout InNewGroup(CommandLayout command) {
  command.startsGroup = true;
  return command;
}

constexpr CommandLayout WhileHeld(CommandLayout command) {
  command.repeats = true;
  return command;
}

constexpr auto kOnEntry = ActsOn::SelectedEntry;
constexpr std::string_view kLeft = "lstNotActive";
constexpr std::string_view kRight = "lstActive";

constexpr std::array kMainCommands = {
    CommandLayout{"Activate Selected", "Enter", "cmdActivate1", kLeft, kOnEntry},
    CommandLayout{"Deactivate Selected", "Enter", "cmdDeactivate1", kRight, kOnEntry},
    CommandLayout{"Activate All", "", "cmdActivateAll", kLeft},
    CommandLayout{"Deactivate All", "", "cmdDeactivateAll", kRight},
    InNewGroup(WhileHeld({"Move Selected Up", "Alt+Up", "cmdMoveUp", kRight, kOnEntry})),
    WhileHeld({"Move Selected Down", "Alt+Down", "cmdMoveDown", kRight, kOnEntry}),
    CommandLayout{"Move to Top", "Alt+Home", "", kRight, kOnEntry},
    CommandLayout{"Move to Bottom", "Alt+End", "", kRight, kOnEntry},
    InNewGroup({"Edit...", "F2", "", kLeft, kOnEntry}),
    InNewGroup({"Edit...", "F2", "", kRight, kOnEntry}),
    CommandLayout{"Details", "Alt+Enter", "", kLeft, kOnEntry},
    CommandLayout{"Details", "Alt+Enter", "", kRight, kOnEntry},
    CommandLayout{"Which Mod Wins...", "F4", "", kRight, kOnEntry},
    CommandLayout{"Delete Mod", "Delete", "cmdDeleteMod", kLeft, kOnEntry},
    CommandLayout{"Details", "Alt+Enter", "", "lstGame"},
    CommandLayout{"Open Game Folder", "", "", "lstGame"},
    CommandLayout{"Copy Launch Option", "", "", "lstGame"},
    InNewGroup({"DoW Installation Setup", "", "cmdGoToGames", "lstGame"}),
    InNewGroup({"New Mod", "Insert", "cmdNewMod"}),
    InNewGroup({"Undo", "Ctrl+Z"}),
    CommandLayout{"Redo", "Ctrl+Y"},
    InNewGroup({"Refresh", "F5"}),
};

constexpr std::array kNewControls = {
    ControlLayout{.name = "Shape1", .kind = Frame, .place = {840, 2760, 2895, 735}},
    ControlLayout{.name = "OKButton",
                  .kind = Button,
                  .caption = "OK",
                  .place = {2280, 2880, 1215, 375},
                  .tabOrder = 0,
                  .role = ButtonRole::Default},
    ControlLayout{.name = "CancelButton",
                  .kind = Button,
                  .caption = "Cancel",
                  .place = {960, 2880, 1215, 375},
                  .tabOrder = 1,
                  .role = ButtonRole::Cancel},
    ControlLayout{.name = "Label1",
                  .kind = Label,
                  .caption = "Name:",
                  .place = {120, 120, 1695, 375},
                  .tabOrder = 2,
                  .font = Comic(9.75)},
    ControlLayout{.name = "txtName", .kind = TextBox, .place = {720, 120, 2775, 375}, .tabOrder = 3, .label = "Label1"},
    ControlLayout{.name = "Label2",
                  .kind = Label,
                  .caption = "Data Folder(s):",
                  .place = {120, 720, 1455, 255},
                  .tabOrder = 4,
                  .font = Comic(9.75)},
    ControlLayout{
        .name = "lstDirs", .kind = MultiListBox, .place = {120, 960, 3375, 1485}, .tabOrder = 6, .label = "Label2"},
};

constexpr std::array kSetupControls = {
    ControlLayout{.name = "Shape1", .kind = Frame, .place = {0, 360, 1815, 1215}},
    ControlLayout{.name = "Shape2", .kind = Frame, .place = {2760, 1440, 1455, 975}},
    ControlLayout{.name = "OKButton",
                  .kind = Button,
                  .caption = "OK",
                  .place = {2880, 1920, 1215, 375},
                  .tabOrder = 0,
                  .font = Comic(9.75),
                  .role = ButtonRole::Default},
    ControlLayout{.name = "lstGames",
                  .kind = ListBox,
                  .place = {600, 0, 5775, 1845},
                  .tabOrder = 1,
                  .accessibleName = "Installations",
                  .cutting = Cutting::InTheMiddle},
    ControlLayout{.name = "cmdnew",
                  .kind = Button,
                  .caption = "+",
                  .place = {120, 480, 375, 375},
                  .tabOrder = 2,
                  .font = ComicBold(11.25),
                  .tooltip = "New"},
    ControlLayout{.name = "cmdDelete",
                  .kind = Button,
                  .caption = "X",
                  .place = {120, 960, 375, 375},
                  .tabOrder = 3,
                  .font = ComicBold(9.75),
                  .tooltip = "Delete"},
};

constexpr std::array kSetupCommands = {
    CommandLayout{"New", "Insert", "cmdnew", "lstGames"},
    CommandLayout{"Delete", "Delete", "cmdDelete", "lstGames", kOnEntry},
    CommandLayout{"Details", "Alt+Enter", "", "lstGames", kOnEntry},
};

constexpr Colours kWhiteOnGrey = {.background = {128, 128, 128}, .labels = {255, 255, 255}};

constexpr std::array kWindows = {
    WindowLayout{.name = "frmMain",
                 .caption = "Ulvane's Gantrel v1.2",
                 .width = 6390,
                 .height = 5295,
                 .font = Comic(9),
                 .controls = kMainControls,
                 .colours = kWhiteOnGrey,
                 .commands = kMainCommands},
    WindowLayout{.name = "frmNew",
                 .caption = "New Mod",
                 .width = 3600,
                 .height = 3375,
                 .font = Comic(9),
                 .controls = kNewControls,
                 .firstFocus = "txtName"},
    WindowLayout{.name = "frmDoWSetup",
                 .caption = "DoW Installation Setup",
                 .width = 6390,
                 .height = 2385,
                 .font = Comic(9),
                 .controls = kSetupControls,
                 .commands = kSetupCommands},
};

}  // namespace

std::span<const platform::WindowLayout> Layouts() { return kWindows; }

#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Handles of the controls on a window, given out by Window and valid as long as it is. Copying one is free. Positions
// count from 0. Changing a control from here raises none of its events.
namespace platform {

constexpr int kNoSelection = -1;

struct NativeButton;
struct NativeDropDownList;
struct NativeListBox;
struct NativeTextBox;

class Button {
 public:
  explicit Button(NativeButton& native) : native_(&native) {}

  // A button with the focus hands it, when it is disabled, to the list that its layout names: to no other command.
  void SetEnabled(bool isEnabled) const;

  // What the user presses while the handler runs, outside of the dialogs that it shows, is dropped.
  void OnClick(std::function<void()> handler) const;

  void TakeFocus() const;

 private:
  NativeButton* native_;
};

// A choice among its entries, without typing.
class DropDownList {
 public:
  explicit DropDownList(NativeDropDownList& native) : native_(&native) {}
  void Clear() const;
  void Add(std::string_view entry) const;  // may select the first entry at once
  int Count() const;
  void Select(int position) const;
  std::string Text() const;  // of the selected entry; empty when there is none
  void TakeFocus() const;

  // Called when the keyboard focus leaves the list for another control of its window, before that control acts on the
  // click that took the focus. Not called when the list's entries are shown, nor when the window as a whole loses the
  // focus or is disabled.
  void OnValidate(std::function<void()> handler) const;

  // Asked for the tooltip each time that it is shown; none where the text is empty.
  void OnToolTip(std::function<std::string()> handler) const;

 private:
  NativeDropDownList* native_;
};

// Of one with single selection, the selected entry is asked for; of one with multiple selection, the selected entries.
// Typing into one with single selection finds entries (platform/find_name.h).
class ListBox {
 public:
  explicit ListBox(NativeListBox& native) : native_(&native) {}

  // Puts the entries in the place of those that are there, and selects none. The list stays scrolled to where it was,
  // and an arrow key goes on from where it was, unless the first and the last entry are other ones.
  void Fill(const std::vector<std::string>& entries) const;
  int Count() const;
  void SetMarks(std::vector<bool> marks) const;    // a warning sign for each entry so marked, until the next Fill
  void Select(int position) const;                 // kNoSelection, or a position that is not there, selects none
  void SelectFirst(int number) const;              // of one with multiple selection, as many entries from the top
  int Selected() const;                            // kNoSelection when none is
  std::string Text() const;                        // of the selected entry; empty when none is
  std::string Text(int position) const;            // empty when there is no such position
  std::vector<std::string> Texts() const;          // from the top
  std::vector<std::string> SelectedTexts() const;  // from the top
  bool HasFocus() const;

  // Asked for the tooltip of the entry at a position each time that it is shown; none where the text is empty. An entry
  // whose text is cut has that above it.
  void OnToolTip(std::function<std::string(int position)> handler) const;

  // Called when the user has dragged the entry at `from` to the position `to`. Without it, none can be dragged.
  void OnMove(std::function<void(int from, int to)> handler) const;

  // Greyed text in the place of the entries while there are none; no entry itself.
  void SetEmptyText(std::string_view text) const;

  // Paints what has changed before the command ends. Lets no event in.
  void Repaint() const;

 private:
  NativeListBox* native_;
};

// Takes no character that the code page lacks, and says so beside it.
class TextBox {
 public:
  explicit TextBox(NativeTextBox& native) : native_(&native) {}
  std::string Text() const;
  void SetText(std::string_view text) const;  // and selects it, so that typing replaces it
  void TakeFocus() const;

 private:
  NativeTextBox* native_;
};

}  // namespace platform

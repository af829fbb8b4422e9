#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Handles to a window's controls. Window hands them out, and they are valid as long as it lives. Cheap to copy.
// Positions count from 0. Changing a control from code raises none of its events.
namespace platform {

constexpr int kNoSelection = -1;

struct NativeButton;
struct NativeDropDownList;
struct NativeListBox;
struct NativeTextBox;

class Button {
 public:
  explicit Button(NativeButton& native) : native_(&native) {}

  // Disabling a button that has the focus moves the focus to the list named in its layout, never to another command.
  void SetEnabled(bool isEnabled) const;

  // User input while the handler runs is dropped, except in dialogs that the handler shows.
  void OnClick(std::function<void()> handler) const;

  void TakeFocus() const;

 private:
  NativeButton* native_;
};

// A selector without text entry.
class DropDownList {
 public:
  explicit DropDownList(NativeDropDownList& native) : native_(&native) {}
  void Clear() const;
  void Add(std::string_view entry) const;  // may select the first entry at once
  int Count() const;
  void Select(int position) const;
  std::string Text() const;  // of the selected entry; empty without a selection
  void TakeFocus() const;

  // Called when the keyboard focus moves from the list to another control of its window, before that control handles
  // the click that took the focus. Not called when the list drops down, or when the whole window loses the focus or is
  // disabled.
  void OnValidate(std::function<void()> handler) const;

  // Called each time the tooltip is about to show; an empty text shows none.
  void OnToolTip(std::function<std::string()> handler) const;

 private:
  NativeDropDownList* native_;
};

// Use Selected and Text with single selection, SelectedTexts with multiple selection. In a single-selection list,
// typing finds entries (platform/find_name.h).
class ListBox {
 public:
  explicit ListBox(NativeListBox& native) : native_(&native) {}

  // Replaces all entries and clears the selection. If the first or the last entry stays the same, keeps its scroll
  // position and the row from which an arrow key continues.
  void Fill(const std::vector<std::string>& entries) const;
  int Count() const;
  void SetMarks(std::vector<bool> marks) const;    // true: a warning sign on this entry, until the next Fill
  void Select(int position) const;                 // kNoSelection or an invalid position clears the selection
  void SelectFirst(int number) const;              // with multiple selection: this many entries from the top
  int Selected() const;                            // kNoSelection if none
  std::string Text() const;                        // of the selected entry; empty if none
  std::string Text(int position) const;            // empty for an invalid position
  std::vector<std::string> Texts() const;          // from the top
  std::vector<std::string> SelectedTexts() const;  // from the top
  bool HasFocus() const;

  // Called with an entry's position each time its tooltip is about to show; an empty text shows none. If the entry's
  // text is cut, the tooltip starts with the full text.
  void OnToolTip(std::function<std::string(int position)> handler) const;

  // Called when the user has dragged the entry at `from` to `to`. Without a handler, entries cannot be dragged.
  void OnMove(std::function<void(int from, int to)> handler) const;

  // Grey text shown while the list has no entries.
  void SetEmptyText(std::string_view text) const;

  // Repaints now, before the command ends. Processes no other events.
  void Repaint() const;

 private:
  NativeListBox* native_;
};

// Rejects characters that the code page lacks, with a hint next to the box.
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

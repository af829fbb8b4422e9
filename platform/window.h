#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "platform/controls.h"

namespace platform {

struct NativeWindow;

// A window built from the layout of this name, not shown yet. An unknown window or control name, or a control of
// another kind, is a bug: the program ends at once with a message.
class Window {
 public:
  explicit Window(std::string_view name);
  ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  platform::Button Button(std::string_view name) const;
  platform::DropDownList DropDownList(std::string_view name) const;
  platform::ListBox ListBox(std::string_view name) const;
  platform::TextBox TextBox(std::string_view name) const;

  void Show() const;

  // Shows the window in front of another, disabled window, and raises it again when the user activates that one.
  void ShowInFrontOf(const Window& other) const;

  // Asks the window to close, as a click on its close box does.
  void Close() const;

  void SetCaption(std::string_view caption) const;

  // Handles a layout command that has no button.
  void OnCommand(std::string_view caption, const std::function<void()>& handler) const;

  // Checked each time: while it returns false, the command's menu entry is grey and its key does nothing.
  void OnIsAvailable(std::string_view caption, const std::function<bool()>& handler) const;

  // Shows the tooltip of the focused control; in a list, that of the selected entry.
  void ShowDetails() const;

  // Called before the window closes; set `cancel` to keep it open.
  void OnUnload(std::function<void(bool& cancel)> handler) const;

  // Called after the window has closed and its handlers have returned; the handler may destroy the window.
  void OnClosed(std::function<void()> handler) const;

  // A disabled window stays visible, takes no input and refuses to close. After Enable, no control has the focus until
  // one takes it.
  void Disable() const;
  void Enable() const;

 private:
  std::unique_ptr<NativeWindow> native_;
};

}  // namespace platform

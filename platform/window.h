#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "platform/controls.h"

namespace platform {

struct NativeWindow;

// A window made from the layout of its name, not shown yet. A name that no layout has, of a window or a control, or a
// control of another kind, is an error in the program and ends it at once with a message.
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

  // Shows the window in front of another that is disabled, and lets it come back there when the user goes to that
  // one.
  void ShowInFrontOf(const Window& other) const;

  // Asks the window to close, as the user's click on its close box does.
  void Close() const;

  void SetCaption(std::string_view caption) const;

  // Called for a command of the layout that has no button. It is grey in the menu, and its key does nothing, while it
  // is not available, which is asked each time.
  void OnCommand(std::string_view caption, const std::function<void()>& handler,
                 const std::function<bool()>& isAvailable = {}) const;

  // Shows the tooltip of the control with the focus, in a list that of its selected entry.
  void ShowDetails() const;

  // Called when the window is asked to close; setting `cancel` refuses it.
  void OnUnload(std::function<void(bool& cancel)> handler) const;

  // Called once the window has closed and its handlers have returned, so the window may be destroyed in it.
  void OnClosed(std::function<void()> handler) const;

  // While it is disabled, the window stays visible, takes no input and refuses to be closed. Afterwards none of its
  // controls has the focus until one takes it.
  void Disable() const;
  void Enable() const;

 private:
  std::unique_ptr<NativeWindow> native_;
};

}  // namespace platform

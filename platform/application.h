#pragma once

#include <functional>
#include <memory>
#include <span>

#include "platform/layout.h"

namespace platform {

struct Running;

// The connection to the desktop. Create one for the whole run, before any window. Windows find their layouts here by
// name. Without a display, or when it disconnects, the program ends with a line on stderr and EXIT_FAILURE.
class Application {
 public:
  Application(std::span<const WindowLayout> layouts, int& argumentCount, char** arguments);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Runs until no window is open or the program is asked to quit (by a signal or the end of the desktop session), even
  // if that came before the call. Returns the exit code.
  static int Run();

 private:
  std::unique_ptr<Running> running_;
};

// Shows the busy pointer while it lives. For commands that may take more than a moment; must not live while a dialog
// waits for the user.
class BusyPointer {
 public:
  BusyPointer();
  ~BusyPointer();
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

// Processes pending events once: painting, timers, desktop messages. Clicks and keys stay queued until the running
// command returns, so commands never nest.
void DoEvents();

// Processes events, clicks and keys included, until `isDone` returns true; checks it after each event and sleeps in
// between. Also returns when the program is asked to quit.
void WaitUntil(const std::function<bool()>& isDone);

// A descriptor that becomes readable on a quit request (such as a signal); -1 on systems that ask the windows instead.
// Call once, before any thread starts.
int QuitRequestDescriptor();

}  // namespace platform

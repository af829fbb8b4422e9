#pragma once

#include <functional>
#include <memory>
#include <span>

#include "platform/layout.h"

namespace platform {

struct Running;

// The connection to the desktop; one for the whole run, made before any window. Windows find their layouts here by
// name. Without a display, or when the display goes, the program ends with a line on the error output and EXIT_FAILURE.
class Application {
 public:
  Application(std::span<const WindowLayout> layouts, int& argumentCount, char** arguments);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;

  // Runs until no window is open any more, or the program was asked to quit (a signal, the end of the desktop's
  // session), also when that was before. Returns the exit code.
  static int Run();

 private:
  std::unique_ptr<Running> running_;
};

// While one lives, the pointer says that the program is busy. For commands that may take longer than a moment; it must
// not live while the user is asked something.
class BusyPointer {
 public:
  BusyPointer();
  ~BusyPointer();
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;
};

// Lets what is pending happen, once: painting, timers, messages of the desktop. Clicks and keys wait until the running
// command has ended, so no command starts in the middle of another.
void DoEvents();

// Lets events run until `isDone`, sleeping between them; it is asked after each. Clicks and keys are among the events.
// Ends as well when the program is asked to quit.
void WaitUntil(const std::function<bool()>& isDone);

// A descriptor that becomes readable when the system asks the program to end, by a signal for one; -1 where it tells
// the windows instead. Call once, before any thread is started.
int QuitRequestDescriptor();

}  // namespace platform

#pragma once

#include <span>

#include "platform/layout.h"

namespace platform {

// The connection to the desktop; one for the whole run, made before any window. Windows find their layouts here by
// name.
class Application {
 public:
  Application(std::span<const WindowLayout> layouts, int& argumentCount, char** arguments);
  ~Application();
  Application(const Application&) = delete;
  Application& operator=(const Application&) = delete;
  Application(Application&&) = delete;
  Application& operator=(Application&&) = delete;

  // Runs until no window is open any more, or the program was asked to quit (a signal, the end of the desktop's
  // session), also when that was before. Returns the exit code.
  static int Run();
};

}  // namespace platform

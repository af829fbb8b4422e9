#pragma once

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
  Application(Application&&) = delete;
  Application& operator=(Application&&) = delete;

  // Runs until no window is open any more, or the program was asked to quit (a signal, the end of the desktop's
  // session), also when that was before. Returns the exit code.
  static int Run();

 private:
  std::unique_ptr<Running> running_;
};

}  // namespace platform

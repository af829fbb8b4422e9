#include "platform/application.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace platform {
namespace {

// A signal handler may do little more than write; the event loop reads the other end.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a handler has no argument
volatile std::sig_atomic_t writingEnd = -1;

void PassOn(int /*signal*/) {
  const char anything = 0;
  [[maybe_unused]] const ssize_t written = write(writingEnd, &anything, 1);
}

}  // namespace

int QuitRequestDescriptor() {
  std::array<int, 2> ends = {-1, -1};
  if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) return -1;
  writingEnd = ends[1];
  struct sigaction action = {};
  action.sa_handler = PassOn;  // NOLINT(cppcoreguidelines-pro-type-union-access): the system's own structure
  action.sa_flags = SA_RESTART;
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    // Who started the program may have it ignore a signal: nohup does.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): the system's own structure
    if (before.sa_handler != SIG_IGN) sigaction(signal, &action, nullptr);
  }
  return ends[0];
}

}  // namespace platform

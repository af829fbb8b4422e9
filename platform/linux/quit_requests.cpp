#include "platform/application.h"

#include <sys/signalfd.h>

#include <csignal>

namespace platform {

// Signals that the parent chose to ignore stay ignored (nohup). The others are blocked, so no handler runs; they arrive
// through the descriptor.
int QuitRequestDescriptor() {
  sigset_t requests;
  sigemptyset(&requests);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-union-access): the system's own structure
    if (before.sa_handler != SIG_IGN) sigaddset(&requests, signal);
  }
  if (pthread_sigmask(SIG_BLOCK, &requests, nullptr) != 0) return -1;
  return signalfd(-1, &requests, SFD_CLOEXEC | SFD_NONBLOCK);
}

}  // namespace platform

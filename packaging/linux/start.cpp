// The program of the download for Linux. The tool is a library beside it, with its own Qt. Where the system lacks
// something that these ask for, this says what: the system itself would say so only where a click does not show it.

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

// By the first of the desktops' tools that is there and can. Each is another process, since a window of our own is what
// cannot be shown.
void ShowInWindow(const char* text) {
  const std::array<std::array<const char*, 6>, 4> tools = {{
      {"kdialog", "--title", "Gantrel", "--error", text},
      {"zenity", "--error", "--title=Gantrel", "--no-markup", "--text", text},
      {"xmessage", "-center", text},
      {"notify-send", "Gantrel", text},
  }};
  for (const auto& tool : tools) {
    const pid_t process = fork();
    if (process == 0) {
      execlp(tool[0], tool[0], tool[1], tool[2], tool[3], tool[4], tool[5], nullptr);
      _exit(EXIT_FAILURE);
    }
    int result = EXIT_FAILURE;
    if (process > 0 && waitpid(process, &result, 0) == process && result == EXIT_SUCCESS) return;
  }
}

int Fail(const char* reason) {
  std::array<char, 1024> text{};
  std::snprintf(text.data(), text.size(),
                "Gantrel cannot start, because something is missing:\n\n%s\n\nREADME.txt says what Gantrel needs.",
                reason);
  std::fprintf(stderr, "gantrel: %s\n", reason);
  ShowInWindow(text.data());
  return EXIT_FAILURE;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  // Qt itself would say only that it has found no desktop. On a Wayland one, either of its two connections will do.
  void* desktop = dlopen("$ORIGIN/lib/plugins/platforms/libqxcb.so", RTLD_LAZY);
  if (desktop == nullptr && std::getenv("WAYLAND_DISPLAY") != nullptr) {
    desktop = dlopen("$ORIGIN/lib/plugins/platforms/libqwayland-generic.so", RTLD_LAZY);
  }
  void* const tool = desktop == nullptr ? nullptr : dlopen("$ORIGIN/lib/libgantrel.so", RTLD_NOW);
  if (tool == nullptr) return Fail(dlerror());
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): what the system has for it
  const auto run = reinterpret_cast<int (*)(int, char**)>(dlsym(tool, "main"));
  return run == nullptr ? Fail(dlerror()) : run(argumentCount, arguments);
}

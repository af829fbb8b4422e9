#pragma once

#include <functional>

namespace platform {

// Lets what is pending happen, once: painting, timers, messages of the desktop. Clicks and keys wait until the running
// command has ended, so no command starts in the middle of another.
void DoEvents();

// Lets events run until `isDone`, sleeping between them; it is asked after each. Clicks and keys are among the events.
// Ends as well when the program is asked to quit.
void WaitUntil(const std::function<bool()>& isDone);

}  // namespace platform

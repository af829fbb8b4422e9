#pragma once

#include <string_view>

#include "platform/layout.h"

class QKeyEvent;

// What the windows need of the running application.
namespace platform {

// Ends the program with a message when there is none of that name.
const WindowLayout& FindLayout(std::string_view name);

[[noreturn]] void StopForUnknownName(std::string_view kind, std::string_view name);

// The program runs as long as windows are open.
void NoteWindowOpened();
void NoteWindowClosed();

// Drops what is pending of clicks, keys and requests to close: it was meant for what the screen showed before.
void DropPendingInput();

// The same once the running handler has returned.
void DropInputAfterHandler();

bool IsDroppingInput();

// Whether the key is pressed because it is held down.
bool IsRepeat(const QKeyEvent& press);

// Ends the event loops, the nested ones included, for good.
void Quit();
bool IsQuitting();

}  // namespace platform

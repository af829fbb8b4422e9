#pragma once

#include <string_view>

#include "platform/layout.h"

class QKeyEvent;

// What the windows need from the running application.
namespace platform {

// Ends the program with a message if there is none of that name.
const WindowLayout& FindLayout(std::string_view name);

[[noreturn]] void StopForUnknownName(std::string_view kind, std::string_view name);

// The program runs while windows are open.
void NoteWindowOpened();
void NoteWindowClosed();

// Drops pending clicks, keys and close requests: the user aimed them at an older screen.
void DropPendingInput();

// The same, once the running handler has returned.
void DropInputAfterHandler();

bool IsDroppingInput();

// Whether this is an auto-repeat of a held key.
bool IsRepeat(const QKeyEvent& press);

// Ends all event loops for good, nested ones included.
void Quit();
bool IsQuitting();

}  // namespace platform

#pragma once

// The system's own functions, without what few programs need of them, and without its macros over names that are ours
// as well. Only the files of this folder and the tests' own include it.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#undef ReplaceFile

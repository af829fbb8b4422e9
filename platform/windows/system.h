#pragma once

// <windows.h> without its rarely used parts and without macros that clash with our names. Only the files of this folder
// and the tests' own include it.
#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#undef ReplaceFile

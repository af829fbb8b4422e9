# Builds for 64-bit Windows on Debian, with the packages g++-mingw-w64-x86-64 and qt6-base-dev (for Qt's build
# tools, which run here). GANTREL_WINDOWS_QT is the folder of a static Qt for Windows of the same version.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES GANTREL_WINDOWS_QT)
set(CMAKE_FIND_ROOT_PATH ${GANTREL_WINDOWS_QT})
set(CMAKE_PREFIX_PATH ${GANTREL_WINDOWS_QT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/x86_64-linux-gnu/cmake)

set(CMAKE_CROSSCOMPILING_EMULATOR wine)  # for the tests

# A single file without dependencies, not even on the compiler's libraries.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -s")

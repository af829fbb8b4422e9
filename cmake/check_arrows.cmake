cmake_minimum_required(VERSION 3.25)

# Fails when a folder includes one that it must not know. Usage: cmake -DSOURCE_DIR=... -P check_arrows.cmake
#
#   app -> installations, module_file, mods -> settings -> platform
#
# installations/ and module_file/ define operations of frmMain, so they know mods/; never the other way round.
set(may_include_app "app installations module_file mods settings platform")
set(may_include_installations "installations mods settings platform")
set(may_include_module_file "module_file mods settings platform")
set(may_include_mods "mods settings platform")
set(may_include_settings "settings platform")
set(may_include_platform "platform")

set(wrong "")
foreach(folder app installations module_file mods settings platform)
  separate_arguments(allowed UNIX_COMMAND "${may_include_${folder}}")
  file(GLOB_RECURSE files "${SOURCE_DIR}/${folder}/*.h" "${SOURCE_DIR}/${folder}/*.cpp")
  foreach(file IN LISTS files)
    file(RELATIVE_PATH shown "${SOURCE_DIR}" "${file}")
    file(STRINGS "${file}" includes REGEX "^#include \"")
    foreach(include IN LISTS includes)
      string(REGEX REPLACE "^#include \"([^/\"]+)/.*$" "\\1" target "${include}")
      if(NOT target IN_LIST allowed)
        string(APPEND wrong "  ${shown}: ${include}\n")
      endif()
      # Only platform/qt/ uses Qt's types, and only a system's own folder its headers.
      if(include MATCHES "\"(platform/(qt|linux|windows)/)")
        string(FIND "${shown}" "${CMAKE_MATCH_1}" position)
        if(NOT position EQUAL 0)
          string(APPEND wrong "  ${shown}: ${include}\n")
        endif()
      endif()
    endforeach()
    file(STRINGS "${file}" toolkit REGEX "^#include <Q")
    if(toolkit AND NOT shown MATCHES "^platform/qt/")
      string(APPEND wrong "  ${shown}: ${toolkit}\n")
    endif()
  endforeach()
endforeach()
if(wrong)
  message(FATAL_ERROR "Includes against the arrows of docs/architecture.md:\n${wrong}")
endif()

#pragma once

#include <string>
#include <system_error>

#include "platform/files.h"

// Why one of the tool's files could not be read or written.
struct FileFailure {
  std::string file;  // for display
  const char* what;  // "read" or "written"
  std::error_code reason;

  std::string Sentence() const { return file + " could not be " + what + ": " + platform::Reason(reason) + "."; }
};

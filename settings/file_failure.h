#pragma once

#include <string>
#include <system_error>

#include "platform/files.h"

// What kept one of the tool's files from being read or written.
struct FileFailure {
  std::string file;  // as it is shown
  const char* what;  // "read" or "written"
  std::error_code reason;

  std::string Sentence() const { return file + " could not be " + what + ": " + platform::Reason(reason) + "."; }
};

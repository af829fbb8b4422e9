#pragma once

#include <string>
#include <system_error>

// What kept one of the tool's files from being read or written.
struct FileFailure {
  std::string file;  // as it is shown
  const char* what;  // "read" or "written"
  std::error_code reason;
  const char* outcome = "Nothing was changed.";

  std::string Sentence() const { return file + " could not be " + what + ": " + reason.message() + "."; }
};

#pragma once

#include <optional>
#include <string_view>

#include "settings/file_failure.h"

// Tells the user what went wrong with a file, and what that means; nothing when all went well. `title` is the
// command's.
void ShowFailure(std::string_view title, const std::optional<FileFailure>& failure);

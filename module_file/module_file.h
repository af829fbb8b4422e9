#pragma once

#include <optional>
#include <string>

#include "settings/Module1.h"
#include "settings/file_failure.h"

// Replaces a game's module file, and returns what kept it from that. The caller has the lock, so that the file belongs
// to the settings that are there. Does nothing for a game that is not registered.
std::optional<FileFailure> WriteModule(const Module1::Settings& settings, const std::string& game);

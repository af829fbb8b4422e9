#pragma once

#include <optional>
#include <string>

#include "settings/Module1.h"
#include "settings/file_failure.h"

// Replaces a game's module file; returns why it failed. The caller holds the lock, so that the file matches the saved
// settings. Does nothing if the game is not registered.
std::optional<FileFailure> WriteModule(const Module1::Settings& settings, const std::string& game);

#pragma once

// Runs the program; returns its exit code.
int RunTool(int argumentCount, char** arguments);

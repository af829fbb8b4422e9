#pragma once

// The whole program. Returns its exit code.
int RunTool(int argumentCount, char** arguments);

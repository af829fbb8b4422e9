#include "app/tool.h"

int main(int argumentCount, char** arguments) { return RunTool(argumentCount, arguments); }

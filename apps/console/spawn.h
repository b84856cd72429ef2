#pragma once
// Runs a second oxdm-console, the program's own executable, with `args`,
// and waits for it. Its output is printed as it comes, each line indented
// with "  | " so that it stands apart from this process's own.

#include <string>
#include <vector>

// The child's exit status (128 + the signal when a signal ended it), or -1
// with a sentence in `error` when it could not be started.
int RunChildConsole(const std::vector<std::string>& args, std::string& error);

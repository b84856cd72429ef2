#pragma once
// One measured session of one stack, run in a process of its own so that
// its peak resident memory is its own: the screen operations in order, each
// timed, one line per operation on standard output:
//
//   <operation> <milliseconds> <name shown at the top>
//
// and a last line "rss_before_open <KiB>", the process's resident memory
// before the stack opened anything.

#include <string>
#include <vector>

// The operations, in the order a session runs them.
inline const std::vector<std::string> kOperations = {"open", "last", "middle", "find", "save"};

// The stacks this build has, by name.
std::vector<std::string> StackNames();

// Runs the session of stack `stack` on the file at `path`; the city that the
// save writes names `run` and the process. Answers the process's exit code:
// 0, or 1 when the saved row is not shown with its new city.
int RunStackSession(const std::string& stack, const std::string& path, int run);

#pragma once
// The command line of oxdm-soak: how many processes, how many edits each,
// the seed that makes a run reproducible, where the record file and the
// journals go, and the size of the sample data.

#include <string>

// The most processes a run may have.
inline constexpr int kMaxSoakProcesses = 64;

struct SoakOptions {
    int processes = 4;
    int edits = 2000;
    unsigned long long seed = 1;
    std::string dir;  // empty: a fresh folder under the system's temporary folder
    long long customers = 20;
    long long orders = 120;
    long long lines = 480;
    int thinkMicros = 400;  // longest pause between reading a customer and saving it
    int maxRetries = 200;   // saves of one edit refused as "in use" before it is given up
};

// Fills `options` from the arguments; false with a sentence in `error` that
// names the option and what is wrong with it. `options` keeps its defaults
// for every option not given.
bool ParseSoakOptions(int argc, const char* const* argv, SoakOptions& options, std::string& error);

// The usage text.
const char* SoakUsage();

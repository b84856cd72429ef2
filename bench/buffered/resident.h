#pragma once
// The resident memory of this process now, in KiB (VmRSS); 0 when unknown.

#include <cstdlib>
#include <fstream>
#include <string>

inline long ResidentKiB() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("VmRSS:", 0) == 0) return std::atol(line.c_str() + 6);
    return 0;
}

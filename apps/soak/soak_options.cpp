#include "soak_options.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace {

// Reads a whole number in [low, high] from `text`; false with a sentence.
bool ReadNumber(const char* option, const char* text, long long low, long long high, long long& out,
                std::string& error) {
    errno = 0;
    char* end = nullptr;
    const long long value = std::strtoll(text, &end, 10);
    if (end == text || *end != '\0' || errno == ERANGE) {
        error = std::string("The value '") + text + "' of " + option + " is not a whole number.";
        return false;
    }
    if (value < low || value > high) {
        error = std::string("The value ") + text + " of " + option + " is out of range: it must lie between " +
                std::to_string(low) + " and " + std::to_string(high) + ".";
        return false;
    }
    out = value;
    return true;
}

}  // namespace

bool ParseSoakOptions(int argc, const char* const* argv, SoakOptions& options, std::string& error) {
    for (int i = 1; i < argc; ++i) {
        const char* option = argv[i];
        if (std::strncmp(option, "--", 2) != 0) {
            error = std::string("Unknown argument '") + option + "' (argument " + std::to_string(i) + ").";
            return false;
        }
        if (i + 1 >= argc) {
            error = std::string("The option ") + option + " needs a value (argument " + std::to_string(i) + ").";
            return false;
        }
        const char* value = argv[++i];
        long long number = 0;
        auto whole = [&](long long low, long long high) { return ReadNumber(option, value, low, high, number, error); };
        if (std::strcmp(option, "--processes") == 0) {
            if (!whole(1, kMaxSoakProcesses)) return false;
            options.processes = static_cast<int>(number);
        } else if (std::strcmp(option, "--edits") == 0) {
            if (!whole(0, 10000000)) return false;
            options.edits = static_cast<int>(number);
        } else if (std::strcmp(option, "--seed") == 0) {
            if (!whole(0, 1LL << 62)) return false;
            options.seed = static_cast<unsigned long long>(number);
        } else if (std::strcmp(option, "--dir") == 0) {
            if (!*value) {
                error = "The value of --dir is empty; it must name a folder.";
                return false;
            }
            options.dir = value;
        } else if (std::strcmp(option, "--customers") == 0) {
            if (!whole(1, 100000)) return false;
            options.customers = number;
        } else if (std::strcmp(option, "--orders") == 0) {
            if (!whole(1, 1000000)) return false;
            options.orders = number;
        } else if (std::strcmp(option, "--lines") == 0) {
            if (!whole(0, 4000000)) return false;
            options.lines = number;
        } else if (std::strcmp(option, "--think-us") == 0) {
            if (!whole(0, 1000000)) return false;
            options.thinkMicros = static_cast<int>(number);
        } else if (std::strcmp(option, "--max-retries") == 0) {
            if (!whole(0, 1000000)) return false;
            options.maxRetries = static_cast<int>(number);
        } else {
            error = std::string("Unknown option '") + option + "' (argument " + std::to_string(i - 1) + ").";
            return false;
        }
    }
    if (options.orders < options.processes) {
        error = "There are fewer orders (" + std::to_string(options.orders) + ") than processes (" +
                std::to_string(options.processes) + "): every process needs orders of its own.";
        return false;
    }
    return true;
}

const char* SoakUsage() {
    return "usage: oxdm-soak [--processes N] [--edits M] [--seed S] [--dir FOLDER]\n"
           "                 [--customers C] [--orders O] [--lines L] [--think-us U] [--max-retries R]\n";
}

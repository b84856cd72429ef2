#include "sqlite/process_identity.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string>
#include <unistd.h>

namespace oxdm::store {

namespace {

// Reads the state letter and start time (field 22, in clock ticks since
// boot) of /proc/<pid>/stat; false when the process does not exist.
bool ReadStat(std::int64_t pid, char& state, std::int64_t& start) {
    std::string path = "/proc/" + std::to_string(pid) + "/stat";
    FILE* file = std::fopen(path.c_str(), "r");
    if (!file) return false;
    char buffer[1024];
    size_t n = std::fread(buffer, 1, sizeof buffer - 1, file);
    std::fclose(file);
    buffer[n] = '\0';
    // The command name may hold spaces and parentheses: fields resume after
    // the last ')'.
    const char* rest = std::strrchr(buffer, ')');
    if (!rest) return false;
    unsigned long long startTicks = 0;
    // state ppid pgrp session tty tpgid flags minflt cminflt majflt cmajflt
    // utime stime cutime cstime priority nice threads itrealvalue starttime
    if (std::sscanf(rest + 1, " %c %*d %*d %*d %*d %*d %*u %*u %*u %*u %*u %*u %*u %*d %*d %*d %*d %*d %*d %llu",
                    &state, &startTicks) != 2)
        return false;
    start = static_cast<std::int64_t>(startTicks);
    return true;
}

}  // namespace

LockOwner CurrentProcess() {
    static LockOwner cached;
    std::int64_t pid = getpid();
    if (cached.pid != pid) {
        char state = 0;
        std::int64_t start = 0;
        ReadStat(pid, state, start);
        cached = {pid, start};
    }
    return cached;
}

bool IsAlive(const LockOwner& owner) {
    char state = 0;
    std::int64_t start = 0;
    if (ReadStat(owner.pid, state, start)) return state != 'Z' && state != 'X' && start == owner.startTime;
    // Without /proc, fall back to asking the kernel whether the id exists.
    return kill(static_cast<pid_t>(owner.pid), 0) == 0 || errno == EPERM;
}

}  // namespace oxdm::store

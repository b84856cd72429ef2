#include "spawn.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>

namespace {

// The path of the running executable.
std::string SelfPath() {
    char path[PATH_MAX];
    const ssize_t length = readlink("/proc/self/exe", path, sizeof path - 1);
    if (length <= 0) return {};
    return std::string(path, static_cast<size_t>(length));
}

// Copies the child's output to ours, a prefix before each line.
void Relay(int fd) {
    FILE* from = fdopen(fd, "r");
    if (from == nullptr) {
        close(fd);
        return;
    }
    char buffer[4096];
    bool lineStart = true;
    while (std::fgets(buffer, sizeof buffer, from) != nullptr) {
        if (lineStart) std::fputs("  | ", stdout);
        std::fputs(buffer, stdout);
        lineStart = std::strchr(buffer, '\n') != nullptr;
    }
    if (!lineStart) std::fputc('\n', stdout);
    std::fclose(from);
}

}  // namespace

int RunChildConsole(const std::vector<std::string>& args, std::string& error) {
    const std::string self = SelfPath();
    if (self.empty()) {
        error = std::string("can't find the console's own program: ") + std::strerror(errno);
        return -1;
    }
    int pipeFds[2];
    if (pipe(pipeFds) != 0) {
        error = std::string("can't make a pipe for the second console: ") + std::strerror(errno);
        return -1;
    }
    std::fflush(stdout);
    const pid_t pid = fork();
    if (pid < 0) {
        error = std::string("can't start the second console: ") + std::strerror(errno);
        close(pipeFds[0]);
        close(pipeFds[1]);
        return -1;
    }
    if (pid == 0) {
        dup2(pipeFds[1], STDOUT_FILENO);
        dup2(pipeFds[1], STDERR_FILENO);
        close(pipeFds[0]);
        close(pipeFds[1]);
        std::vector<char*> argv;
        argv.push_back(const_cast<char*>(self.c_str()));
        for (const std::string& arg : args) argv.push_back(const_cast<char*>(arg.c_str()));
        argv.push_back(nullptr);
        execv(self.c_str(), argv.data());
        std::printf("can't run %s: %s\n", self.c_str(), std::strerror(errno));
        _exit(127);
    }
    close(pipeFds[1]);
    Relay(pipeFds[0]);
    int status = 0;
    while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status)) return 128 + WTERMSIG(status);
    return WEXITSTATUS(status);
}

#include "stack_child.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <utility>

#include "resident.h"
#include "scale_file.h"
#include "screen_stack.h"

namespace {

using Factory = std::unique_ptr<ScreenStack> (*)();

const std::vector<std::pair<std::string, Factory>>& Stacks() {
    static const std::vector<std::pair<std::string, Factory>> stacks = {
        {"floor", MakeFloorStack},
        {"oxdm", MakeBufferedStack},
#ifdef OXDM_SCALE_QT
        {"QSqlTableModel", MakeQtTableStack},
        {"QSqlQueryModel", MakeQtQueryStack},
#endif
    };
    return stacks;
}

// The second cell of the top row shown: the name.
std::string TopName(const ScreenStack& stack) {
    if (stack.Shown().empty()) return "-";
    const std::string& row = stack.Shown().front();
    const size_t start = row.find('\t') + 1, end = row.find('\t', start);
    return row.substr(start, end - start);
}

}  // namespace

std::vector<std::string> StackNames() {
    std::vector<std::string> names;
    for (const auto& [name, factory] : Stacks()) names.push_back(name);
    return names;
}

int RunStackSession(const std::string& stackName, const std::string& path, int run) {
    std::unique_ptr<ScreenStack> stack;
    for (const auto& [name, factory] : Stacks())
        if (name == stackName) stack = factory();
    if (!stack) {
        std::fprintf(stderr, "no stack named %s\n", stackName.c_str());
        return 2;
    }
    const long before = ResidentKiB();
    // New in every session, so that every save changes the record.
    const std::string city = "City " + std::to_string(run) + "-" + std::to_string(getpid());
    const std::vector<std::function<void()>> steps = {
        [&] { stack->Open(path); },
        [&] { stack->Last(); },
        [&] { stack->Middle(); },
        [&] { stack->Find(NameAt(0.6)); },
        [&] { stack->Save(city); },
    };
    for (size_t i = 0; i < steps.size(); ++i) {
        const auto start = std::chrono::steady_clock::now();
        steps[i]();
        const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
        std::printf("%s %.3f %s\n", kOperations[i].c_str(), ms, TopName(*stack).c_str());
    }
    std::printf("rss_before_open %ld\n", before);
    // The saved row is shown at the top again, with its new city.
    if (stack->Shown().empty() || stack->Shown().front().find("\t" + city + "\t") == std::string::npos) {
        std::fprintf(stderr, "%s: the saved city is not shown\n", stackName.c_str());
        return 1;
    }
    return 0;
}

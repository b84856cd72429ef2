// The open print jobs and their output paths.

#include "job_table.h"

#include <climits>
#include <cstdlib>
#include <ctime>
#include <filesystem>

namespace {

std::string FileNamePart(const std::string& name) {
    std::string part = name.empty() ? std::string("report") : name;
    for (char& ch : part) {
        if (ch == ' ' || ch == '/') ch = '-';
    }
    return part;
}

std::string Stamp(std::time_t when) {
    std::tm local{};
    localtime_r(&when, &local);
    char text[32];
    std::strftime(text, sizeof text, "%Y%m%d-%H%M%S", &local);
    return text;
}

}  // namespace

xpJobTable& xpJobTable::Instance() {
    static xpJobTable table;
    return table;
}

short xpJobTable::Open(const xp_print_def& def, const char* output, const std::string& defaultName,
                       const std::string& title, bool fromHub) {
    if (jobs_.size() >= static_cast<std::size_t>(SHRT_MAX)) return 0;
    while (jobs_.count(next_) != 0) next_ = next_ == SHRT_MAX ? 1 : static_cast<short>(next_ + 1);
    const short handle = next_;
    next_ = next_ == SHRT_MAX ? 1 : static_cast<short>(next_ + 1);
    std::string path = output != nullptr && output[0] != '\0' ? std::string(output) : DefaultOutput(defaultName);
    jobs_[handle] = std::make_unique<xpPrintJob>(xpNormalizeDefinition(def), std::move(path), title, fromHub);
    return handle;
}

xpPrintJob* xpJobTable::Find(short handle) const {
    const auto it = jobs_.find(handle);
    return it == jobs_.end() ? nullptr : it->second.get();
}

void xpJobTable::Close(short handle) { jobs_.erase(handle); }

std::string xpJobTable::DefaultOutput(const std::string& name) const {
    const char* dir = std::getenv("OXDM_PRINT_DIR");
    const std::filesystem::path folder = dir != nullptr && dir[0] != '\0' ? dir : ".";
    const std::string base = (folder / (FileNamePart(name) + "-" + Stamp(std::time(nullptr)))).string();
    std::string path = base;
    for (int n = 2; OutputTaken(path); ++n) path = base + "-" + std::to_string(n);
    return path;
}

bool xpJobTable::OutputTaken(const std::string& path) const {
    std::error_code ignored;
    if (std::filesystem::exists(path + ".txt", ignored) || std::filesystem::exists(path + ".pdf", ignored)) return true;
    for (const auto& [handle, job] : jobs_) {
        if (job->Output() == path) return true;
    }
    return false;
}

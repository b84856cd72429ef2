#pragma once
// Runs the built oxdm-admin in a temporary directory and gives back what it
// printed and its exit status; and small file helpers for the tests.

#include <filesystem>
#include <string>

namespace oxdm::admin::testing {

struct AdminResult {
    int status = -1;   // the exit status
    std::string out;   // standard output
    std::string err;   // standard error
};

// A fresh directory under the system's temporary one, removed with the object.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string operator/(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

// Runs `oxdm-admin <args>` (each argument quoted for the shell) in `dir`,
// with OXDM_DICT_PATH set to `dictPath`.
AdminResult RunAdmin(const TempDir& dir, const std::string& dictPath, const std::string& args);

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& text);

// The sample dictionary's directory.
std::string ExamplesDir();

}  // namespace oxdm::admin::testing

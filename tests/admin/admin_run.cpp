#include "admin_run.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace oxdm::admin::testing {

TempDir::TempDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "oxdm-admin-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
}

TempDir::~TempDir() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

AdminResult RunAdmin(const TempDir& dir, const std::string& dictPath, const std::string& args) {
    std::string out = dir / ".stdout", err = dir / ".stderr";
    std::string command = "cd '" + dir.path().string() + "' && OXDM_DICT_PATH='" + dictPath + "' '" +
                          OXDM_ADMIN_PROGRAM + "' " + args + " >'" + out + "' 2>'" + err + "'";
    int raw = std::system(command.c_str());
    AdminResult result;
    result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    result.out = ReadFile(out);
    result.err = ReadFile(err);
    return result;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void WriteFile(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

std::string ExamplesDir() { return OXDM_EXAMPLES_DIR; }

}  // namespace oxdm::admin::testing

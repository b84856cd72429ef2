#pragma once
// Helpers of the dictionary tests: a scratch directory that is removed at the
// end of a test, an environment variable set for the length of a test, and
// reading a short at a byte offset of a record.

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "oxdm/base/cstring.h"

namespace dicttest {

inline const char* const kOrdPath = OXDM_EXAMPLES_DIR "/ord.toml";

// A fresh directory under the system's temp directory; removed on destruction.
class TempDir {
public:
    TempDir() {
        char pattern[] = "/tmp/oxdm-dict-XXXXXX";
        path_ = ::mkdtemp(pattern);
    }
    ~TempDir() {
        std::error_code ec;
        std::filesystem::remove_all(path_, ec);
    }
    const std::string& Path() const { return path_; }

    // Writes `text` to <dir>/<name> and returns the file's path.
    std::string Write(const std::string& name, const std::string& text) const {
        const std::string file = path_ + "/" + name;
        std::ofstream(file, std::ios::binary) << text;
        return file;
    }

private:
    std::string path_;
};

// Sets (or unsets, with nullopt) an environment variable, restoring it after.
class ScopedEnv {
public:
    ScopedEnv(const char* name, std::optional<std::string> value) : name_(name) {
        if (const char* old = std::getenv(name)) old_ = old;
        if (value) ::setenv(name, value->c_str(), 1);
        else ::unsetenv(name);
    }
    ~ScopedEnv() {
        if (old_) ::setenv(name_.c_str(), old_->c_str(), 1);
        else ::unsetenv(name_.c_str());
    }

private:
    std::string name_;
    std::optional<std::string> old_;
};

// Changes the working directory for the length of a test.
class ScopedCwd {
public:
    explicit ScopedCwd(const std::string& dir) : old_(std::filesystem::current_path()) {
        std::filesystem::current_path(dir);
    }
    ~ScopedCwd() { std::filesystem::current_path(old_); }

private:
    std::filesystem::path old_;
};

// The short stored at `offset` of a record, read as the callers read it.
inline short ShortAt(const void* record, std::size_t offset) {
    short v;
    std::memcpy(&v, static_cast<const char*>(record) + offset, sizeof v);
    return v;
}

inline std::string TextAt(const void* record, std::size_t offset) {
    return std::string(static_cast<const char*>(record) + offset);
}

}  // namespace dicttest

#include "oxdm/common/store/file_spec.h"

#include "oxdm/common/store/data_file.h"

#include <filesystem>

namespace {

// The path as an absolute, normalised name, so that two spellings of one
// file compare equal.
std::string Normal(const CString& path) {
    std::error_code error;
    std::filesystem::path absolute = std::filesystem::weakly_canonical(std::filesystem::path(path.str()), error);
    return error ? path.str() : absolute.string();
}

}  // namespace

oxioFileSpec::oxioFileSpec(const CString& path, RLS_AUTH_POLICY policy) : path_(path), policy_(policy) {}

oxioFileSpec::oxioFileSpec(const CString& path, short fileCode, short group)
    : path_(path), fileCode_(fileCode), group_(group) {}

bool oxioFileSpec::operator==(const oxioFileSpec& other) const {
    return path_ == other.path_ && policy_ == other.policy_ && fileCode_ == other.fileCode_ && group_ == other.group_;
}

CString oxioFileSpec::Dictionary() const {
    std::filesystem::path path(path_.str());
    std::string extension = path.extension().string();
    return extension.empty() ? CString(path.filename().string()) : CString(extension.substr(1));
}

CString oxioFileSpec::FilePath() const {
    std::filesystem::path path(path_.str());
    return path.extension().empty() && !path_.IsEmpty() ? path_ + "." + Dictionary() : path_;
}

bool oxioFileSpec::IsMatchingFile(const oxioDataFile& file) const {
    return !path_.IsEmpty() && Normal(FilePath()) == Normal(file.Spec().FilePath());
}

#include "oxdm/common/dictionary/dictionary_loader.h"

#include <cstdlib>
#include <filesystem>

#include "oxdm/common/dictionary/dictionary_compiler.h"
#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/values/io_status.h"
#include "source_file.h"

namespace {

const char kExtension[] = ".toml";

bool IsPath(const CString& nameOrPath) {
    return nameOrPath.Find('/') >= 0 ||
           (nameOrPath.GetLength() > 5 && nameOrPath.Right(5) == kExtension);
}

bool IsRegularFile(const CString& path) {
    std::error_code ec;
    return std::filesystem::is_regular_file(path.str(), ec);
}

CString& LastErrorText() {
    static CString text;
    return text;
}

short Fail(short status, const CString& message, CString& error) {
    error = message;
    LastErrorText() = message;
    return status;
}

}  // namespace

std::vector<CString> oxDictionaryLoader::SearchPath() {
    std::vector<CString> dirs;
    const char* env = std::getenv("OXDM_DICT_PATH");
    if (!env || !*env) {
        dirs.emplace_back(".");
        return dirs;
    }
    const CString path(env);
    int start = 0;
    while (start <= path.GetLength()) {
        int colon = path.Find(':', start);
        if (colon < 0) colon = path.GetLength();
        const CString dir = path.Mid(start, colon - start);
        dirs.push_back(dir.IsEmpty() ? CString(".") : dir);
        start = colon + 1;
    }
    return dirs;
}

CString oxDictionaryLoader::FindSource(const CString& nameOrPath) {
    if (nameOrPath.IsEmpty()) return CString();
    if (IsPath(nameOrPath)) return IsRegularFile(nameOrPath) ? nameOrPath : CString();
    for (const CString& dir : SearchPath()) {
        const CString candidate = dir + "/" + nameOrPath + kExtension;
        if (IsRegularFile(candidate)) return candidate;
    }
    return CString();
}

short oxDictionaryLoader::Load(const CString& nameOrPath, std::shared_ptr<const oxDictionary>& out,
                               CString& error) {
    out.reset();
    error.Empty();
    const CString path = FindSource(nameOrPath);
    if (path.IsEmpty()) {
        CString where;
        if (!IsPath(nameOrPath)) {
            for (const CString& dir : SearchPath()) where += (where.IsEmpty() ? "" : ":") + dir;
            where = CString(" (searched ") + where + ")";
        }
        return Fail(oxioStatus::FILE_NOT_FOUND,
                    CString("Dictionary '") + nameOrPath + "' was not found" + where + ".", error);
    }
    CString text;
    if (!oxReadSourceFile(path, text)) {
        return Fail(oxioStatus::IO_ERROR, path + ": the file cannot be read.", error);
    }
    const CString name = IsPath(nameOrPath) ? oxDictionaryNameOf(nameOrPath) : nameOrPath;
    oxDictCompileResult result = oxDictionaryCompiler::CompileText(name, text, path);
    if (!result.Ok()) return Fail(oxioStatus::CORRUPT_DATA, result.Message(), error);
    out = result.dictionary;
    oxFieldCodes::Register(*out);
    return oxioStatus::IO_VALID;
}

const CString& oxDictionaryLoader::LastError() {
    return LastErrorText();
}

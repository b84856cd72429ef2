#include "source_file.h"

#include <filesystem>
#include <fstream>
#include <sstream>

bool oxReadSourceFile(const CString& path, CString& text) {
    std::ifstream in(path.str(), std::ios::binary);
    if (!in) return false;
    std::ostringstream bytes;
    bytes << in.rdbuf();
    if (in.bad()) return false;
    const std::string& s = bytes.str();
    text = CString(s.c_str(), static_cast<int>(s.size()));
    return true;
}

CString oxDictionaryNameOf(const CString& path) {
    const std::filesystem::path p(path.str());
    return p.extension() == ".toml" ? CString(p.stem().c_str()) : CString(p.filename().c_str());
}

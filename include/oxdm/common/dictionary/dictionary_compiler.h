#pragma once
// oxDictionaryCompiler: turns a dictionary source (TOML, described in
// docs/dictionary-format.md) into an oxDictionary. It never throws on bad
// input: every fault of the text is reported as an oxDictError naming the
// file, the line and what is wrong, and no dictionary is produced.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/dictionary.h"

// One fault of a dictionary source.
struct oxDictError {
    CString file;     // the source file as it was named to the compiler
    int line = 0;     // 1-based; 0 when the fault has no line (unreadable file)
    CString message;  // what is wrong, a whole sentence

    // "file:line: message", or "file: message" without a line.
    CString Text() const;
};

struct oxDictCompileResult {
    std::shared_ptr<const oxDictionary> dictionary;  // null when errors is not empty
    std::vector<oxDictError> errors;                 // in line order

    bool Ok() const { return errors.empty(); }
    // Every error's Text(), one per line.
    CString Message() const;
};

class oxDictionaryCompiler {
public:
    // Compiles `text` as the source of dictionary `name`; `sourceName` names
    // the text in error messages (usually its path).
    static oxDictCompileResult CompileText(const CString& name, const CString& text,
                                           const CString& sourceName);

    // Reads and compiles the file at `path`; the dictionary's name is the
    // file's name without its directory and its ".toml" extension.
    static oxDictCompileResult CompileFile(const CString& path);
};

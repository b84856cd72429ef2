#pragma once
// oxSourceReader: reads typed attributes out of the tables of a parsed
// dictionary source and collects every fault as an oxDictError with the line
// where it stands. A failed read leaves the destination untouched (zero), so
// the compiler goes on and reports all faults of a file in one pass.

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string_view>
#include <vector>

#include "oxdm/common/dictionary/dictionary_compiler.h"
#include "toml_parser.h"

class oxSourceReader {
public:
    explicit oxSourceReader(const CString& sourceName) : sourceName_(sourceName) {}

    // Records a fault at `line`; `context` ("table 2, field ORDNO") is put in
    // front of the message when it is not empty.
    void Error(int line, const CString& context, const CString& message);

    // Every attribute of `tbl` must be one of `known`.
    void CheckKnown(const toml::table& tbl, std::initializer_list<std::string_view> known,
                    const CString& context);

    // The line where a node starts; `fallback` when the node has none.
    static int Line(const toml::node& node, int fallback);

    // A text attribute: at most width - 1 characters, copied zero-terminated
    // into dest. Returns whether it was present and valid.
    bool Text(const toml::table& tbl, std::string_view key, char* dest, std::size_t width,
              const CString& context);

    // An integer attribute within [low, high], or absent.
    std::optional<long long> Integer(const toml::table& tbl, std::string_view key, long long low,
                                     long long high, const CString& context);

    // A yes/no attribute written as a boolean or as an integer (a short).
    std::optional<short> Flag(const toml::table& tbl, std::string_view key,
                              const CString& context);

    // A sub-table array ([[table.field]]); null and a fault when the key holds
    // something else, null alone when absent.
    const toml::array* TableArray(const toml::table& tbl, std::string_view key,
                                  const CString& context);

    // The line of an attribute, or of its table when absent.
    static int LineOf(const toml::table& tbl, std::string_view key);

    // "a string", "an integer", ... for messages.
    static const char* TypeName(const toml::node& node);

    const CString& SourceName() const { return sourceName_; }
    std::vector<oxDictError> TakeErrors();
    bool HasErrors() const { return !errors_.empty(); }

private:
    // Invariant: every error's file is sourceName_.
    CString sourceName_;
    std::vector<oxDictError> errors_;
};

// Stores a short at a byte offset of a record (the records are packed).
void oxPutShort(void* record, std::size_t offset, long long value);

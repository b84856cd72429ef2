#pragma once
// oxPreferenceFile: one user's preferences, kept in a TOML file and written
// atomically (a temporary file in the same folder, flushed, then renamed over
// the old one), so that a crash never leaves half a file.
//
// The file holds scopes, keys and named values:
//
//   [user."Software\\Quillfen\\Orders\\Name\\"]   # scope 1, one key
//   Width = { data = "2c010000" }                  # bytes, in hexadecimal
//   FrozenCols = "2"                               # text
//   [application.General]                          # scope 2
//   "Audit Trail" = 2                              # a number
//
// A file that cannot be read as such (bad syntax, a value of another kind)
// is reported once through the presenter, renamed aside with the suffix
// ".corrupt" and a time stamp, and replaced by empty preferences: nothing the
// operator does afterwards is lost, and the damaged file stays for a person
// to look at.
//
// Invariants: entries_ mirrors the file as last read or written; loaded_ is
// true once Load ran for path_.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

class oxPreferenceFile {
public:
    using Bytes = std::vector<std::uint8_t>;
    using Value = std::variant<std::int64_t, std::string, Bytes>;

    // The file of the current user: $XDG_CONFIG_HOME/oxdm/preferences.toml,
    // or ~/.config/oxdm/preferences.toml when XDG_CONFIG_HOME is not set.
    static std::string DefaultPath();

    explicit oxPreferenceFile(std::string path) : path_(std::move(path)) {}

    const std::string& Path() const { return path_; }

    std::optional<Value> Get(short scope, const std::string& key, const std::string& name);
    // Stores the value and writes the file; false when the file could not
    // be written (the value is then kept in memory only).
    bool Put(short scope, const std::string& key, const std::string& name, Value value);

    // Reads the file again on the next access (another program may have
    // changed it).
    void Forget() { loaded_ = false; }

private:
    using Entries = std::map<short, std::map<std::string, std::map<std::string, Value>>>;

    void Load();
    void SetAside(const std::string& reason);
    bool Save() const;

    std::string path_;
    Entries entries_;
    bool loaded_ = false;
};

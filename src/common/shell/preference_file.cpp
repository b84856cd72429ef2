#include "preference_file.h"

#include <toml++/toml.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/message_box.h"

namespace fs = std::filesystem;

namespace {

// Scope numbers and the names they have in the file.
const char* ScopeName(short scope) {
    switch (scope) {
    case 1: return "user";
    case 2: return "application";
    default: return nullptr;
    }
}

short ScopeNumber(std::string_view name) {
    if (name == "user") return 1;
    if (name == "application") return 2;
    return 0;
}

std::string ToHex(const oxPreferenceFile::Bytes& bytes) {
    static const char digits[] = "0123456789abcdef";
    std::string out;
    for (std::uint8_t b : bytes) {
        out += digits[b >> 4];
        out += digits[b & 0xF];
    }
    return out;
}

bool FromHex(std::string_view text, oxPreferenceFile::Bytes& out) {
    if (text.size() % 2) return false;
    out.clear();
    for (size_t i = 0; i < text.size(); i += 2) {
        unsigned value = 0;
        for (char ch : text.substr(i, 2)) {
            value <<= 4;
            if (ch >= '0' && ch <= '9') value |= unsigned(ch - '0');
            else if (ch >= 'a' && ch <= 'f') value |= unsigned(ch - 'a' + 10);
            else if (ch >= 'A' && ch <= 'F') value |= unsigned(ch - 'A' + 10);
            else return false;
        }
        out.push_back(static_cast<std::uint8_t>(value));
    }
    return true;
}

// Describes where in the file a node stands, for messages.
std::string Where(const toml::node& node) {
    const auto& src = node.source();
    return "line " + std::to_string(src.begin.line);
}

}  // namespace

std::string oxPreferenceFile::DefaultPath() {
    const char* xdg = std::getenv("XDG_CONFIG_HOME");
    fs::path base;
    if (xdg && *xdg) {
        base = xdg;
    } else {
        const char* home = std::getenv("HOME");
        base = fs::path(home && *home ? home : ".") / ".config";
    }
    return (base / "oxdm" / "preferences.toml").string();
}

void oxPreferenceFile::Load() {
    loaded_ = true;
    entries_.clear();
    std::error_code ec;
    if (!fs::exists(path_, ec)) return;  // the first run: defaults stand

    toml::table root;
    try {
        root = toml::parse_file(path_);
    } catch (const toml::parse_error& err) {
        SetAside("line " + std::to_string(err.source().begin.line) + ": " + std::string(err.description()));
        return;
    }

    Entries read;
    for (auto&& [scopeName, scopeNode] : root) {
        const short scope = ScopeNumber(scopeName.str());
        const toml::table* keys = scopeNode.as_table();
        if (!scope || !keys) {
            SetAside(Where(scopeNode) + ": unknown scope '" + std::string(scopeName.str()) + "'");
            return;
        }
        for (auto&& [key, keyNode] : *keys) {
            const toml::table* names = keyNode.as_table();
            if (!names) {
                SetAside(Where(keyNode) + ": '" + std::string(key.str()) + "' is not a table of values");
                return;
            }
            for (auto&& [name, valueNode] : *names) {
                Value value;
                if (const auto* number = valueNode.as_integer()) {
                    value = number->get();
                } else if (valueNode.is_string()) {
                    value = *valueNode.value<std::string>();
                } else if (const toml::table* data = valueNode.as_table();
                           data && data->size() == 1 && (*data)["data"].is_string()) {
                    Bytes bytes;
                    if (!FromHex(*(*data)["data"].value<std::string>(), bytes)) {
                        SetAside(Where(valueNode) + ": '" + std::string(name.str()) +
                                 "' holds data that is not hexadecimal");
                        return;
                    }
                    value = std::move(bytes);
                } else {
                    SetAside(Where(valueNode) + ": '" + std::string(name.str()) +
                             "' is neither a number, a text nor { data = \"...\" }");
                    return;
                }
                read[scope][std::string(key.str())][std::string(name.str())] = std::move(value);
            }
        }
    }
    entries_ = std::move(read);
}

void oxPreferenceFile::SetAside(const std::string& reason) {
    const auto stamp = std::chrono::duration_cast<std::chrono::seconds>(
                           std::chrono::system_clock::now().time_since_epoch())
                           .count();
    const std::string aside = path_ + ".corrupt-" + std::to_string(stamp);
    std::error_code ec;
    fs::rename(path_, aside, ec);
    CString text;
    text.Format("The preferences file %s is damaged (%s). It was set aside as %s, and your preferences "
                "start again from their defaults.",
                path_.c_str(), reason.c_str(), ec ? "(it could not be renamed)" : aside.c_str());
    oxdmMessageBox(text, "Preferences", oxdmBox::OK | oxdmBox::IconExclamation);
    entries_.clear();
}

std::optional<oxPreferenceFile::Value> oxPreferenceFile::Get(short scope, const std::string& key,
                                                            const std::string& name) {
    if (!loaded_) Load();
    auto s = entries_.find(scope);
    if (s == entries_.end()) return std::nullopt;
    auto k = s->second.find(key);
    if (k == s->second.end()) return std::nullopt;
    auto n = k->second.find(name);
    if (n == k->second.end()) return std::nullopt;
    return n->second;
}

bool oxPreferenceFile::Put(short scope, const std::string& key, const std::string& name, Value value) {
    if (!ScopeName(scope)) return false;
    if (!loaded_) Load();
    entries_[scope][key][name] = std::move(value);
    return Save();
}

bool oxPreferenceFile::Save() const {
    toml::table root;
    for (const auto& [scope, keys] : entries_) {
        toml::table scopeTable;
        for (const auto& [key, names] : keys) {
            toml::table values;
            for (const auto& [name, value] : names) {
                if (auto* number = std::get_if<std::int64_t>(&value)) {
                    values.insert(name, *number);
                } else if (auto* text = std::get_if<std::string>(&value)) {
                    values.insert(name, *text);
                } else {
                    values.insert(name, toml::table{{"data", ToHex(std::get<Bytes>(value))}});
                }
            }
            scopeTable.insert(key, std::move(values));
        }
        root.insert(ScopeName(scope), std::move(scopeTable));
    }

    std::error_code ec;
    fs::create_directories(fs::path(path_).parent_path(), ec);
    const std::string temp = path_ + ".tmp." + std::to_string(::getpid());
    {
        std::ostringstream text;
        text << "# oxdm preferences of this user. Written by the library; edit with care.\n" << root << "\n";
        const std::string bytes = text.str();
        const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (fd < 0) return false;
        bool ok = ::write(fd, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size());
        ok = ::fsync(fd) == 0 && ok;
        ok = ::close(fd) == 0 && ok;
        if (!ok) {
            ::unlink(temp.c_str());
            return false;
        }
    }
    if (std::rename(temp.c_str(), path_.c_str()) != 0) {
        ::unlink(temp.c_str());
        return false;
    }
    return true;
}

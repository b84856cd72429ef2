#include "oxdm/common/shell/preferences.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "oxdm/common/values/xval.h"
#include "preference_file.h"

namespace {

// The preferences of the current user; made at first use and again after
// xpref_reload, so that a changed XDG_CONFIG_HOME takes effect.
std::unique_ptr<oxPreferenceFile>& Current() {
    static std::unique_ptr<oxPreferenceFile> file;
    return file;
}

oxPreferenceFile& File() {
    auto& file = Current();
    if (!file) file = std::make_unique<oxPreferenceFile>(oxPreferenceFile::DefaultPath());
    return *file;
}

std::string Text(const char* text) { return text ? text : ""; }

short PutResult(bool written) { return written ? 0 : 1; }

}  // namespace

long xpref_get_value(short scope, const char* key, const char* name, short, x_value_def* value) {
    auto stored = File().Get(scope, Text(key), Text(name));
    if (!stored) return 0;
    const auto* number = std::get_if<std::int64_t>(&*stored);
    if (!number) return 0;
    if (value) {
        // The caller's record is overwritten, like any read into it.
        x_value_init(value);
        const std::string text = std::to_string(*number);
        x_value_set_text(value, text.c_str(), text.size());
        value->kind = XV_DOUBLE;
        value->number = static_cast<double>(*number);
        value->whole = *number;
    }
    return static_cast<long>(*number);
}

long xpref_get_data(short scope, const char* key, const char* name, unsigned char* buffer, short size) {
    if (!buffer || size <= 0) return 0;
    auto value = File().Get(scope, Text(key), Text(name));
    if (!value) return 0;
    if (auto* bytes = std::get_if<oxPreferenceFile::Bytes>(&*value)) {
        const size_t n = std::min(bytes->size(), static_cast<size_t>(size));
        std::memcpy(buffer, bytes->data(), n);
        return static_cast<long>(n);
    }
    if (auto* text = std::get_if<std::string>(&*value)) {
        const size_t n = std::min(text->size(), static_cast<size_t>(size));
        std::memcpy(buffer, text->data(), n);
        if (n < static_cast<size_t>(size)) buffer[n] = '\0';
        return static_cast<long>(n);
    }
    const auto number = std::get<std::int64_t>(*value);
    const size_t n = std::min(sizeof number, static_cast<size_t>(size));
    std::memcpy(buffer, &number, n);
    return static_cast<long>(n);
}

short xpref_put_data(short scope, const char* key, const char* name, const unsigned char* data, short size) {
    oxPreferenceFile::Bytes bytes;
    if (data && size > 0) bytes.assign(data, data + size);
    return PutResult(File().Put(scope, Text(key), Text(name), std::move(bytes)));
}

short xpref_put_string(short scope, const char* key, const char* name, const char* text) {
    return PutResult(File().Put(scope, Text(key), Text(name), Text(text)));
}

short xpref_put_value(short scope, const char* key, const char* name, long value) {
    return PutResult(File().Put(scope, Text(key), Text(name), static_cast<std::int64_t>(value)));
}

void xpref_reload() { Current().reset(); }

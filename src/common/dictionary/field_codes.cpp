// The field-code functions over the process-wide set of loaded codes.

#include "oxdm/common/dictionary/field_codes.h"

#include <algorithm>
#include <cassert>
#include <cctype>
#include <cstring>
#include <map>
#include <string>

#include "oxdm/common/values/io_status.h"

namespace {

// Invariant: every entry's key equals its record's code.
std::map<short, tsfield_def>& Codes() {
    static std::map<short, tsfield_def> codes;
    return codes;
}

// The section record of `section` (1 to 5) when it has a width; else null.
const xc_section_def* Section(const tsfield_def* code, short section) {
    if (!code || section < 1 || section > XK_MAX_SECTIONS) return nullptr;
    const xc_section_def& s = code->section[section - 1];
    return s.width > 0 ? &s : nullptr;
}

short SectionCount(const tsfield_def* code) {
    short n = 0;
    while (n < XK_MAX_SECTIONS && code->section[n].width > 0) ++n;
    return n;
}

bool IsPunctuation(const tsfield_def* code, char ch) {
    for (short i = 0; i < SectionCount(code); ++i) {
        if (code->section[i].punctuation != 0 && code->section[i].punctuation == ch) return true;
    }
    return false;
}

// Where section `section` starts in the formatted text of the whole code.
std::size_t SectionOffset(const tsfield_def* code, short section) {
    std::size_t offset = 0;
    for (short i = 0; i + 1 < section; ++i) {
        offset += static_cast<std::size_t>(code->section[i].width);
        if (code->section[i].punctuation) ++offset;
    }
    return offset;
}

void CopyOut(char* dest, const std::string& text, std::size_t size) {
    const std::size_t n = std::min(text.size(), size - 1);
    std::memcpy(dest, text.data(), n);
    dest[n] = '\0';
}

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

std::string Unformatted(const tsfield_def* code, const char* text) {
    std::string out;
    for (const char* p = text; *p; ++p) {
        if (!IsPunctuation(code, *p)) out += *p;
    }
    while (!out.empty() && out.back() == ' ') out.pop_back();
    return out;
}

constexpr std::size_t kFieldTextSize = 255;

// Code 9 holds free-form references (accounts, numbers with decimals): its
// sections give widths and flags for the checks, not a layout.
constexpr short kFreeFormCode = 9;

// A right-justified section shorter than its width is filled in front: with
// '0' when it takes digits only and holds digits only, else with blanks.
std::string Justified(const xc_section_def& s, std::string chunk) {
    const std::size_t width = static_cast<std::size_t>(s.width);
    if (!s.right_justify || chunk.empty() || chunk.size() >= width) return chunk;
    const bool digits = std::all_of(chunk.begin(), chunk.end(),
                                    [](char c) { return std::isdigit(static_cast<unsigned char>(c)); });
    return std::string(width - chunk.size(), s.digits_only && digits ? '0' : ' ') + chunk;
}

}  // namespace

void oxFieldCodes::Register(const oxDictionary& dict) {
    for (const tsfield_def& code : dict.FieldCodes()) Codes()[code.code] = code;
}

const tsfield_def* oxFieldCodes::Find(short code) {
    const auto it = Codes().find(code);
    return it == Codes().end() ? nullptr : &it->second;
}

short xk_width(short code, short section) {
    const tsfield_def* def = oxFieldCodes::Find(code);
    if (!def) return 0;
    if (section != 0) {
        const xc_section_def* s = Section(def, section);
        return s ? s->width : 0;
    }
    const short n = SectionCount(def);
    return n == 0 ? 0 : static_cast<short>(SectionOffset(def, n) + def->section[n - 1].width);
}

short xk_num_sections(short code) {
    const tsfield_def* def = oxFieldCodes::Find(code);
    return def ? SectionCount(def) : 0;
}

short xk_multi_section(short code) {
    return xk_num_sections(code) > 1 ? 1 : 0;
}

short xk_punctuation(short code, short section) {
    const xc_section_def* s = Section(oxFieldCodes::Find(code), section == 0 ? 1 : section);
    return s ? s->punctuation : 0;
}

namespace {

// A yes/no of one section, or of any section for section 0.
short SectionFlag(short code, short section, short xc_section_def::*flag) {
    const tsfield_def* def = oxFieldCodes::Find(code);
    if (!def) return 0;
    if (section != 0) {
        const xc_section_def* s = Section(def, section);
        return s && s->*flag ? 1 : 0;
    }
    for (short i = 1; i <= SectionCount(def); ++i) {
        if (def->section[i - 1].*flag) return 1;
    }
    return 0;
}

}  // namespace

short xk_capitals(short code, short section) {
    return SectionFlag(code, section, &xc_section_def::capitals);
}

short xk_right_justify(short code, short section) {
    return SectionFlag(code, section, &xc_section_def::right_justify);
}

short xk_mask(short code, short section, char* mask) {
    assert(mask);
    mask[0] = '\0';
    const tsfield_def* def = oxFieldCodes::Find(code);
    if (!def) return oxioStatus::IO_VOID;
    const xc_section_def* s = Section(def, section);
    if (section != 0 && !s) return oxioStatus::IO_VOID;
    std::string full = def->mask;
    if (full.empty()) {
        for (short i = 0; i < SectionCount(def); ++i) {
            full += std::string(static_cast<std::size_t>(def->section[i].width), 'X');
            if (i + 1 < SectionCount(def) && def->section[i].punctuation) {
                full += def->section[i].punctuation;
            }
        }
    }
    if (section != 0) {
        const std::size_t offset = SectionOffset(def, section);
        full = offset < full.size() ? full.substr(offset, static_cast<std::size_t>(s->width)) : "";
    }
    CopyOut(mask, full, sizeof def->mask);
    return oxioStatus::IO_VALID;
}

short xk_description(short code, short section, char* text, bool initialCaps) {
    assert(text);
    text[0] = '\0';
    const tsfield_def* def = oxFieldCodes::Find(code);
    if (!def) return oxioStatus::IO_VOID;
    const xc_section_def* s = Section(def, section);
    std::string out = s && s->description[0] ? s->description : def->description;
    if (initialCaps && !out.empty()) {
        out[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(out[0])));
    }
    CopyOut(text, out, sizeof def->description);
    return oxioStatus::IO_VALID;
}

short xk_format_field(short code, short section, char* text) {
    assert(text);
    const tsfield_def* def = oxFieldCodes::Find(code);
    if (!def) return oxioStatus::IO_VOID;
    if (code == kFreeFormCode) {
        // Code 9 is free-form: its text is never laid into sections.
        if (SectionFlag(code, 0, &xc_section_def::capitals)) CopyOut(text, Upper(text), kFieldTextSize);
        return oxioStatus::IO_VALID;
    }
    if (section != 0) {
        const xc_section_def* s = Section(def, section);
        if (!s) return oxioStatus::IO_VOID;
        std::string out = s->capitals ? Upper(text) : std::string(text);
        CopyOut(text, Justified(*s, out), kFieldTextSize);
        return oxioStatus::IO_VALID;
    }
    const std::string raw = Unformatted(def, text);
    std::string out;
    std::size_t pos = 0;
    for (short i = 0; i < SectionCount(def) && pos < raw.size(); ++i) {
        const xc_section_def& s = def->section[i];
        std::string chunk = raw.substr(pos, static_cast<std::size_t>(s.width));
        pos += chunk.size();
        if (i > 0 && def->section[i - 1].punctuation) out += def->section[i - 1].punctuation;
        out += Justified(s, s.capitals ? Upper(chunk) : chunk);
    }
    // Characters beyond the last section are kept, so nothing typed is lost.
    if (pos < raw.size()) out += raw.substr(pos);
    CopyOut(text, out, kFieldTextSize);
    return oxioStatus::IO_VALID;
}

short xk_unformat_field(short code, short section, char* text) {
    assert(text);
    const tsfield_def* def = oxFieldCodes::Find(code);
    if (!def) return oxioStatus::IO_VOID;
    if (code == kFreeFormCode) {
        std::string out = text;
        while (!out.empty() && out.back() == ' ') out.pop_back();
        CopyOut(text, out, kFieldTextSize);
        return oxioStatus::IO_VALID;
    }
    if (section != 0 && !Section(def, section)) return oxioStatus::IO_VOID;
    CopyOut(text, Unformatted(def, text), kFieldTextSize);
    return oxioStatus::IO_VALID;
}

short xk_get_custom_list(short code, CString& list) {
    list.Empty();
    const tsfield_def* def = oxFieldCodes::Find(code);
    if (!def) return oxioStatus::IO_VOID;
    list = def->custom_list;
    return oxioStatus::IO_VALID;
}

short xk_get_custom_list_default(short code, CString& item) {
    const short status = xk_get_custom_list(code, item);
    const int comma = item.Find(',');
    if (comma >= 0) item = item.Left(comma);
    item.Trim();
    return status;
}

short xc_get_section_def(short code, short section, xc_section_def* def) {
    assert(def);
    const tsfield_def* found = oxFieldCodes::Find(code);
    if (!found || section < 1 || section > XK_MAX_SECTIONS) return oxioStatus::IO_VOID;
    std::memcpy(def, &found->section[section - 1], sizeof *def);
    return oxioStatus::IO_VALID;
}

short x_get_tsfield(short code, tsfield_def* def) {
    assert(def);
    const tsfield_def* found = oxFieldCodes::Find(code);
    if (!found) return oxioStatus::IO_VOID;
    std::memcpy(def, found, sizeof *def);
    return oxioStatus::IO_VALID;
}

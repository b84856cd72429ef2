// Feeds random field codes, field definitions, texts and keys to the edit
// formatters and checks what every answer must hold: no crash, no hang, a
// refusal leaves the text, a refusal with an info has words, selections
// stay inside the text, the answer does not depend on asking for words, and
// a text that passed passes again (field codes excepted, see Exercise).

#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

#include "oxdm/common/dictionary/dictionary.h"
#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/fieldcode/allocate_formatter.h"
#include "oxdm/common/fieldcode/fld_code_data.h"
#include "oxdm/common/fieldcode/fld_code_edit_formatter.h"

namespace {

// Stops the run with the broken condition and its line.
#define Require(condition)                                                              \
    do {                                                                                \
        if (!(condition)) {                                                             \
            std::fprintf(stderr, "formatter_fuzzer.cpp:%d: %s\n", __LINE__, #condition); \
            std::abort();                                                               \
        }                                                                               \
    } while (false)

// Characters that field codes, numbers, dates and phones care about, mixed
// with any byte.
char PickChar(FuzzedDataProvider& in) {
    static const char kInteresting[] = " -./,:()$0123456789AaZzPpMm\t";
    if (in.ConsumeBool()) return static_cast<char>(in.ConsumeIntegral<uint8_t>());
    return kInteresting[in.ConsumeIntegralInRange<size_t>(0, sizeof kInteresting - 2)];
}

std::string PickText(FuzzedDataProvider& in, size_t most) {
    const size_t length = in.ConsumeIntegralInRange<size_t>(0, most);
    std::string text;
    for (size_t i = 0; i < length && in.remaining_bytes() > 0; ++i) {
        const char ch = PickChar(in);
        if (ch != '\0') text += ch;
    }
    return text;
}

void CopyText(char* dest, size_t size, const std::string& text) {
    std::strncpy(dest, text.c_str(), size - 1);
    dest[size - 1] = '\0';
}

// A random field code, registered for the formatters to find.
short RegisterCode(FuzzedDataProvider& in) {
    oxDictionary::Contents contents;
    contents.name = "fuzz";
    tsfield_def code{};
    code.code = in.ConsumeBool() ? 9 : in.ConsumeIntegralInRange<short>(1, 12);
    CopyText(code.description, sizeof code.description, PickText(in, 12));
    CopyText(code.mask, sizeof code.mask, PickText(in, 16));
    const int sections = in.ConsumeIntegralInRange<int>(0, XK_MAX_SECTIONS);
    for (int i = 0; i < sections; ++i) {
        xc_section_def& s = code.section[i];
        s.width = in.ConsumeBool() ? in.ConsumeIntegralInRange<short>(0, 12)
                                   : in.ConsumeIntegralInRange<short>(-2, 255);
        // A separator is a mark, not a character of the code's text: a
        // digit, letter or blank as punctuation would be dropped from the
        // text it separates.
        static const char kMarks[] = "-./,:()#*_+=&";
        s.punctuation = in.ConsumeBool() ? kMarks[in.ConsumeIntegralInRange<size_t>(0, sizeof kMarks - 2)] : 0;
        s.capitals = in.ConsumeBool();
        s.right_justify = in.ConsumeBool();
        s.digits_only = in.ConsumeBool();
        if (s.width > 0) ++code.sections;
    }
    contents.codes.push_back(code);
    oxFieldCodes::Register(oxDictionary(std::move(contents)));
    return code.code;
}

xio_fld_def PickField(FuzzedDataProvider& in, short code) {
    xio_fld_def field{};
    field.type = in.ConsumeBool() ? in.ConsumeIntegralInRange<short>(0, 10) : in.ConsumeIntegral<short>();
    field.length = in.ConsumeBool() ? in.ConsumeIntegralInRange<unsigned short>(0, 30)
                                    : in.ConsumeIntegral<unsigned short>();
    field.code = in.ConsumeBool() ? code : in.ConsumeIntegral<short>();
    field.formatted = in.ConsumeBool();
    field.section = in.ConsumeBool() ? in.ConsumeIntegralInRange<unsigned short>(0, 12)
                                     : in.ConsumeIntegral<unsigned short>();
    field.capitalize = in.ConsumeIntegral<short>();
    field.decimal = in.ConsumeBool() ? in.ConsumeIntegralInRange<short>(0, 6) : in.ConsumeIntegral<short>();
    field.is_signed = in.ConsumeBool();
    field.commas = in.ConsumeBool();
    field.month_year = in.ConsumeBool();
    field.second_stamp = in.ConsumeBool();
    field.default_width = in.ConsumeIntegralInRange<unsigned short>(0, 20);
    return field;
}

void Exercise(const oxEditFormatter& formatter, FuzzedDataProvider& in) {
    const CString typed = PickText(in, 40);

    CString text = typed;
    oxEditValidateInfo info;
    const bool valid = formatter.IsValid(text, &info);
    if (std::getenv("FUZZ_TRACE")) {
        std::fprintf(stderr, "typed [%s] -> %d [%s] msg [%s]\n", typed.c_str(), valid, text.c_str(),
                     info.message.c_str());
    }
    if (!valid) {
        Require(text == typed);
        Require(!info.message.IsEmpty());
        Require(info.selStart >= 0 && info.selStart <= text.GetLength());
        Require(info.selEnd >= 0 && info.selEnd <= text.GetLength());
    }
    CString quiet = typed;
    Require(formatter.IsValid(quiet, nullptr) == valid);
    Require(quiet == text);
    // What passed stays acceptable. Not so for field codes: their check
    // counts the blanks of a text with letters, and the stored form drops
    // trailing blanks, so " Z  " may pass where " Z" is too short.
    if (valid && dynamic_cast<const oxFldCodeEditFormatter*>(&formatter) == nullptr) {
        CString again = text;
        Require(formatter.IsValid(again, nullptr));
        CString storage;
        Require(formatter.StorageText(text, &storage));
    }
    (void)formatter.Format(typed);
    (void)formatter.Unformat(formatter.Format(typed));

    oxEditState state;
    state.text = PickText(in, 20);
    state.selStart = in.ConsumeIntegralInRange<int>(-2, 25);
    state.selEnd = in.ConsumeIntegralInRange<int>(-2, 25);
    const int keys = in.ConsumeIntegralInRange<int>(0, 30);
    for (int k = 0; k < keys && in.remaining_bytes() > 0; ++k) {
        const oxEditState before = state;
        char key = PickChar(in);
        if (in.ConsumeIntegralInRange<int>(0, 7) == 0) key = in.ConsumeBool() ? OX_KEY_BACKSPACE : OX_KEY_DELETE;
        if (!formatter.KeyPressed(key, state)) {
            Require(state.text == before.text && state.selStart == before.selStart &&
                    state.selEnd == before.selEnd);
        } else {
            Require(state.selStart == state.selEnd);
            Require(state.selStart >= 0 && state.selStart <= state.text.GetLength());
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    FuzzedDataProvider in(data, size);
    const short code = RegisterCode(in);

    const xio_fld_def field = PickField(in, code);
    if (std::unique_ptr<oxEditFormatter> formatter{AllocateFormatter(field)}) Exercise(*formatter, in);

    const oxFldCodeEditFormatter direct(code, in.ConsumeIntegralInRange<unsigned short>(0, 12));
    Exercise(direct, in);

    oxFldCodeData value(code, direct.Section(), in.ConsumeBool());
    const CString typed = PickText(in, 30);
    if (value.SetVal(typed, in.ConsumeBool() ? &direct : nullptr)) (void)value.Format();
    return 0;
}

// The base of the edit formatters: key editing, the storage text for values
// and the refusal message.

#include "oxdm/common/fieldcode/edit_formatter.h"

#include <algorithm>
#include <cassert>
#include <cctype>

oxEditFormatter::~oxEditFormatter() = default;

bool oxEditFormatter::KeyPressed(char key, oxEditState& state) const {
    const int length = state.text.GetLength();
    int start = std::clamp(std::min(state.selStart, state.selEnd), 0, length);
    int end = std::clamp(std::max(state.selStart, state.selEnd), 0, length);

    CString text = state.text;
    if (key == OX_KEY_BACKSPACE || key == OX_KEY_DELETE) {
        // Removing never makes a text unacceptable to type on.
        if (start == end) {
            if (key == OX_KEY_BACKSPACE && start > 0) --start;
            else if (key == OX_KEY_DELETE && end < length) ++end;
            else return false;
        }
        text.Delete(start, end - start);
        state.text = text;
        state.selStart = state.selEnd = start;
        return true;
    }

    text.Delete(start, end - start);
    const char ch = TranslateKey(key, text, start);
    if (ch == 0) return false;
    text.Insert(start, ch);
    if (!AcceptsPartial(text)) return false;
    state.text = text;
    state.selStart = state.selEnd = start + 1;
    return true;
}

CString oxEditFormatter::Format(const CString& text) const { return text; }

CString oxEditFormatter::Unformat(const CString& text) const { return text; }

bool oxEditFormatter::StorageText(const CString& typed, CString* storage) const {
    assert(storage != nullptr);
    CString text = typed;
    if (!IsValid(text, nullptr)) return false;
    *storage = Unformat(text);
    return true;
}

char oxEditFormatter::TranslateKey(char key, const CString&, int) const {
    return std::isprint(static_cast<unsigned char>(key)) ? key : 0;
}

bool oxEditFormatter::AcceptsPartial(const CString&) const { return true; }

void oxEditFormatter::Refuse(oxEditValidateInfo* info, const char* what, const char* fault,
                             const char* mask, int caret) {
    if (info == nullptr) return;
    info->message.Format("Incorrect %s format. %s Correct format is %s.", what, fault, mask);
    info->selStart = info->selEnd = caret;
}

#include "oxdm/common/values/text_values.h"

#include "oxdm/common/values/xval.h"

oxString::~oxString() = default;

bool oxString::IsNull() const {
    for (char ch : value_.view()) {
        if (ch != ' ') return false;
    }
    return true;
}

int oxString::Compare(const oxData& other, bool* comparable) const {
    const auto* text = dynamic_cast<const oxString*>(&other);
    *comparable = text != nullptr;
    if (text == nullptr) return 0;
    return caseSensitive_ ? value_.Compare(text->value_) : value_.CompareNoCase(text->value_);
}

bool oxString::Eq(const oxData& other) const {
    bool comparable = false;
    const int order = Compare(other, &comparable);
    return comparable && order == 0;
}

bool oxString::Lt(const oxData& other) const {
    bool comparable = false;
    const int order = Compare(other, &comparable);
    return comparable && order < 0;
}

bool oxString::Gt(const oxData& other) const {
    bool comparable = false;
    const int order = Compare(other, &comparable);
    return comparable && order > 0;
}

CString oxString::Format() const { return value_; }

oxAlpha::oxAlpha(const char* value) : oxString(CString(value)) {}

oxAlpha::oxAlpha(const CString& value) : oxString(value) {}

void oxAlpha::ConvertToXval(oxioXval& xval) const {
    xval.Reset(XV_TEXT, IsNull());
    xval.SetText(GetVal());
}

oxData* oxAlpha::Clone() const { return new oxAlpha(*this); }

bool oxAlpha::SetVal(const CString& text, const oxcFormatter* formatter) {
    CString plain;
    if (!PlainText(text, formatter, &plain)) return false;
    Assign(plain);
    return true;
}

bool oxAlpha::SetVal(const oxioXval& xval) {
    Assign(xval.Text());
    return true;
}

oxData* oxText::Clone() const { return new oxText(*this); }

oxData* oxPhone::Clone() const { return new oxPhone(*this); }

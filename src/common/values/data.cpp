#include "oxdm/common/values/data.h"

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <ostream>
#include <typeinfo>

#include "oxdm/common/values/formatter.h"
#include "oxdm/common/values/xval.h"

oxData::~oxData() = default;

bool oxData::Gt(const oxData& other) const { return !Lt(other) && !Eq(other); }

void oxData::Print(std::ostream& os) const { os << Format(); }

bool oxData::SetVal(const oxData& other) {
    if (&other == this) return true;
    const oxioXval xval(other);
    return SetVal(xval);
}

bool oxData::PlainText(const CString& text, const oxcFormatter* formatter, CString* plain) {
    if (formatter == nullptr) {
        *plain = text;
        return true;
    }
    return formatter->StorageText(text, plain);
}

std::ostream& operator<<(std::ostream& os, const oxData& value) {
    value.Print(os);
    return os;
}

CString oxDataClassName(const oxData& value) {
    const char* mangled = typeid(value).name();
    int status = 0;
    std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(mangled, nullptr, nullptr, &status), &std::free);
    return CString(status == 0 && name ? name.get() : mangled);
}

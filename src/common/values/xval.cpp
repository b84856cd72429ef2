#include "oxdm/common/values/xval.h"

#include <cassert>
#include <cstring>

#include "oxdm/common/values/data.h"

void x_value_init(x_value_def* value) {
    assert(value != nullptr);
    std::memset(value, 0, sizeof *value);
}

void x_value_free(x_value_def* value) {
    assert(value != nullptr);
    delete[] value->long_text;
    x_value_init(value);
}

void x_value_set_text(x_value_def* value, const char* text, std::size_t length) {
    assert(value != nullptr && text != nullptr);
    delete[] value->long_text;
    value->long_text = nullptr;
    const std::size_t inline_length = length < XV_TEXT_SIZE - 1 ? length : XV_TEXT_SIZE - 1;
    std::memcpy(value->text, text, inline_length);
    std::memset(value->text + inline_length, 0, XV_TEXT_SIZE - inline_length);
    if (length > inline_length) {
        value->long_text = new char[length + 1];
        std::memcpy(value->long_text, text, length);
        value->long_text[length] = '\0';
    }
}

const char* x_value_text(const x_value_def* value) {
    assert(value != nullptr);
    return value->long_text != nullptr ? value->long_text : value->text;
}

void x_value_copy(x_value_def* to, const x_value_def* from) {
    assert(to != nullptr && from != nullptr);
    if (to == from) return;
    x_value_free(to);
    std::memcpy(to, from, sizeof *to);
    to->long_text = nullptr;
    if (from->long_text != nullptr) {
        x_value_set_text(to, from->long_text, std::strlen(from->long_text));
    }
}

oxioXval::oxioXval() { x_value_init(&rec_); }

oxioXval::oxioXval(const oxData& value) {
    x_value_init(&rec_);
    value.ConvertToXval(*this);
}

oxioXval::oxioXval(const x_value_def& value) {
    x_value_init(&rec_);
    x_value_copy(&rec_, &value);
}

oxioXval::oxioXval(const oxioXval& other) : oxioXval(other.rec_) {}

oxioXval& oxioXval::operator=(const oxioXval& other) {
    x_value_copy(&rec_, &other.rec_);
    return *this;
}

oxioXval::~oxioXval() { x_value_free(&rec_); }

void oxioXval::Reset(x_value_kind kind, bool isNull) {
    x_value_free(&rec_);
    rec_.kind = kind;
    rec_.flags = isNull ? XV_NULL : 0;
}

void oxioXval::SetText(const CString& text) {
    x_value_set_text(&rec_, text.c_str(), static_cast<std::size_t>(text.GetLength()));
}

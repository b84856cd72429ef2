#pragma once
// What a memory table does with one cell, for its two kinds of cell: a text
// (CString) and an owned typed value (oxData*, possibly null).
//
// Ownership: a typed cell belongs to the vector that holds it; Copy gives a
// new owned clone and Free deletes and nulls it. Text cells are plain values.

#include <climits>
#include <cstdlib>

#include "oxdm/base/cstring.h"
#include "oxdm/common/values/data.h"
#include "oxdm/common/values/text_values.h"

namespace oxdm_memory {

// atoi of a text, kept within int for texts too long for it.
inline int TextToInt(const CString& text) {
    const long value = std::strtol(text.c_str(), nullptr, 10);
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int>(value);
}

// True when every character is a digit; true for the empty text too.
inline bool AllDigits(const CString& text) {
    for (int i = 0; i < text.GetLength(); ++i) {
        if (text[i] < '0' || text[i] > '9') return false;
    }
    return true;
}

template <class Cell>
struct CellTraits;

template <>
struct CellTraits<CString> {
    static CString Empty() { return CString(); }
    static CString Copy(const CString& cell) { return cell; }
    static void Free(CString& cell) { cell.Empty(); }
    static CString Text(const CString& cell) { return cell; }
    static bool SetText(CString& cell, const CString& text) {
        cell = text;
        return true;
    }
    // A saved text always counts as set, the empty one included.
    static bool IsSet(const CString&) { return true; }
    static bool Less(const CString& a, const CString& b) { return a.Compare(b) < 0; }
    static bool IsNull(const CString& cell) { return cell.IsEmpty(); }
};

template <>
struct CellTraits<oxData*> {
    static oxData* Empty() { return nullptr; }
    static oxData* Copy(const oxData* cell) { return cell ? cell->Clone() : nullptr; }
    static void Free(oxData*& cell) {
        delete cell;
        cell = nullptr;
    }
    static CString Text(const oxData* cell) { return cell ? cell->Format() : CString(); }
    // A cell parses the text as its class does; a null cell has no class and
    // becomes a text value holding it.
    static bool SetText(oxData*& cell, const CString& text) {
        if (!cell) {
            cell = new oxAlpha(text);
            return true;
        }
        return cell->SetVal(text, nullptr);
    }
    static bool IsSet(const oxData* cell) { return cell != nullptr; }
    // A null cell is neither before nor after another.
    static bool Less(const oxData* a, const oxData* b) { return a && b && a->Lt(*b); }
    static bool IsNull(const oxData* cell) { return !cell || cell->IsNull(); }
};

}  // namespace oxdm_memory

#pragma once
// oxPOTypeConverters: between a property's VARIANT and a column's oxData,
// under the store's type number of the property.
//
// The store's type numbers (oxPOPropertyType) follow the VARIANT kinds where
// one fits: a text 8, an integer 3, a double 5, a date 7 (the whole days of
// a VT_DATE), a boolean 11; four more have numbers of their own. An empty
// VARIANT is the null value of every type.

#include "oxdm/cursor/objects/com_variant.h"

class oxData;

enum oxPOPropertyType : int {
    POTypeLong = 3,
    POTypeDouble = 5,
    POTypeDate = 7,
    POTypeText = 8,
    POTypeBool = 11,
    POTypeTime = 0x100,    // VT_DATE, the fraction of the day
    POTypePhone = 0x101,   // VT_BSTR
    POTypeSSNum = 0x102,   // VT_I4, nine digits at most
    POTypeChoice = 0x103,  // VT_I4, the 1-based index of a choice, 0 for none
};

class oxPOTypeConverters {
public:
    // The column type (XIO_ALPHA ... XIO_CHOICE) for a store type; -1 for a
    // number the store doesn't define.
    static short ChooseOXType(int type);
    // `value` as a VARIANT of the store type; false when it can't be.
    static bool OXDataToVariant(int type, const oxData* value, ATL::CComVariant& out);
    // Sets `out` from the VARIANT; false, with `out` unchanged, when the
    // VARIANT isn't a value of the type or `out` won't take it.
    static bool VariantToOXData(int type, const ATL::CComVariant& value, oxData* out);
};

// Whole days since 12/30/1899 for a calendar date, and back.
double PoDateSerial(int year, int month, int day);
void PoSerialDate(double serial, int* year, int* month, int* day);

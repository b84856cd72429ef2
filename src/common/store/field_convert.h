#pragma once
// How the fields of a dictionary are kept in the store, and the conversions
// between a stored field and the values of the value layer.
//
// By field type: alpha and phone are text (key fields fold case); numeric
// is a real number; boolean 0 or 1; date yyyymmdd (0 null); time hhmmss (-1
// null, so null sorts first); social security number and choices whole
// numbers. Stamp fields are marked for the store to fill.

#include "oxdm/common/dictionary/dictionary.h"
#include "oxdm/common/values/xval.h"
#include "record_store.h"

#include <vector>

namespace oxdm::store {

// Every table of the dictionary, numbered as there: columns in field order,
// index 0 the key fields, then each key that serves the table.
std::vector<TableSpec> TablesOf(const oxDictionary& dictionary);

// The blank of a field type as stored.
FieldValue BlankStored(short type);
// Whether a stored value is its type's blank: a key column left out of a
// partial key.
bool IsBlankStored(short type, const FieldValue& value);

// The stored form of a neutral value for a field of `type`.
FieldValue StoredFromXval(short type, const x_value_def& value);
// The stored form of a value.
FieldValue StoredFromData(short type, const oxData& value);
// Fills `out` (zeroed first, not freed) with the stored value as a neutral
// record of kind XV_NONE, which any value class reads from its own member.
// `withText` also writes the display text of a number, for a reader that
// takes text.
void XvalFromStored(short type, short decimals, const FieldValue& stored, x_value_def& out, bool withText = true);
// Loads a stored value into `value`; false when the value cannot take it.
// `text` tells that the value is of the text family, which reads the
// display text of any field.
bool LoadData(short type, short decimals, const FieldValue& stored, oxData& value, bool text);
// Whether a value is of the text family.
bool IsText(const oxData& value);

}  // namespace oxdm::store

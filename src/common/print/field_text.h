#pragma once
// The text a field puts on a line: its value's text, through the edit
// formatter of a field of the field's code, section and decimals when the
// field asks for formatting.

#include <string>

#include "oxdm/common/print/print.h"

std::string xpFieldText(const xp_field_def& field, const x_value_def& value);

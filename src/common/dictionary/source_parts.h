#pragma once
// The parts of the dictionary compiler, one per kind of definition. Each reads
// one table of the parsed source into its record(s), reports every fault to
// the reader, and leaves unwritten bytes zero.

#include <vector>

#include "oxdm/common/dictionary/dictionary.h"
#include "source_reader.h"

// Reads one [[table.field]]. `codes` are the field codes of the dictionary,
// which a field's 'code' must name.
void oxReadFieldDef(oxSourceReader& reader, const toml::table& tbl, const CString& context,
                    const std::vector<tsfield_def>& codes, xio_fld_def& out,
                    std::vector<oxDictItem>& items);

// Reads every [[code]] of the source, in the order written.
std::vector<tsfield_def> oxReadFieldCodes(oxSourceReader& reader, const toml::array* codes);

// Case-insensitive equality of two field names.
bool oxSameFieldName(const char* a, const char* b);

#include "oxdm/record/table_relation.h"

#include <cassert>

#include "oxdm/record/table_def.h"

oxdmTableRelation::~oxdmTableRelation() = default;

void oxdmTableRelation::AddColumn(oxdmColumnDef* source, oxdmColumnDef* dest) {
    source_.push_back(source);
    dest_.push_back(dest);
}

int oxdmTableRelation::ParseString(oxdmTableDef* source, oxdmTableDef* dest, int index, const CString& text) {
    assert(source != nullptr && dest != nullptr);
    CString joins(text);
    joins.Remove(' ');
    joins.Remove('\t');
    size_t matches = 0;
    int start = 0;
    while (true) {
        const int comma = joins.Find(',', start);
        const CString part = comma < 0 ? joins.Mid(start) : joins.Mid(start, comma - start);
        const int equals = part.Find('=');
        if (equals <= 0 || equals == part.GetLength() - 1) return 0;
        oxdmColumnDef* from = source->Column(part.Left(equals));
        oxdmColumnDef* to = dest->Column(part.Mid(equals + 1));
        AddColumn(from, to);
        for (const oxdmColumnDef* keyColumn : dest->Index(static_cast<short>(index)).Columns()) {
            if (to->Name().CompareNoCase(keyColumn->Name()) == 0) {
                ++matches;
                break;
            }
        }
        if (comma < 0) break;
        start = comma + 1;
    }
    return matches == dest->Index(static_cast<short>(index)).Columns().size() ? 1 : 2;
}

#pragma once
// oxdmColumnDef and oxdmChoiceColumnDef: one field of a table of the
// dictionary, as the definition record of the record layer describes it.
//
// A column keeps a copy of its field's whole definition record and answers
// everything from it; RefreshColumns may replace that copy (UpdateFldDef)
// but never moves the object, so pointers to a column stay valid for the
// life of the dictionary manager.

#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/definition_records.h"

class oxData;
class oxdmTableDef;

class oxdmColumnDef {
public:
    // `table` is the owning table (null for a column that belongs to none);
    // `name` overrides the definition's name when not empty.
    oxdmColumnDef(oxdmTableDef* table, const xio_fld_def& def, const CString& name = CString());
    virtual ~oxdmColumnDef();
    oxdmColumnDef(const oxdmColumnDef&) = delete;
    oxdmColumnDef& operator=(const oxdmColumnDef&) = delete;

    // A new value of the class that the field type asks for, with the
    // field's default; owned by the caller. Throws oxdmException
    // ("Column NAME has unknown type.") for a type outside 0 to 9.
    virtual oxData* CreateData() const;

    oxdmTableDef* Table() const { return table_; }
    const xio_fld_def& FldDef() const { return def_; }
    // The override when set, else the definition's name.
    CString Name() const;
    // The description: with expand, plain text of at most 25 characters
    // with %code.section markup replaced by field-code descriptions; without,
    // the tag form (<code.sectionI>) that the label machinery expands.
    CString Desc(bool expand) const;
    bool RightJustify() const;

    unsigned short Length() const { return def_.length; }
    unsigned short DefaultWidth() const { return def_.default_width; }
    unsigned short MinHeadWidth() const { return def_.min_head_width; }
    short Type() const { return def_.type; }
    short Decimal() const { return def_.decimal; }
    short Code() const { return def_.code; }
    bool Capitalize() const { return def_.capitalize > 0; }
    bool Key() const { return def_.key != 0; }

    // Replaces the definition (a field whose format changed since import).
    void UpdateFldDef(const xio_fld_def& def) { def_ = def; }

private:
    // table_ is not owned and outlives the column; def_ is a whole copy of
    // the field's record; name_ is empty for an imported column.
    oxdmTableDef* table_;
    xio_fld_def def_;
    CString name_;
};

// A field of type 7, 8 or 9: its values are 1-based indexes into a list of
// texts, kept in item order.
class oxdmChoiceColumnDef : public oxdmColumnDef {
public:
    using oxdmColumnDef::oxdmColumnDef;

    void AddChoice(const CString& text) { choices_.push_back(text); }
    const std::vector<CString>& Choices() const { return choices_; }
    // Appends every choice to `out`.
    void Choices(std::vector<CString>& out) const;
    // "" for index 0 or below, "<Invalid>" above the count.
    CString ChoiceForIndex(short index) const;
    // The 1-based index of the exact text (case counts); 0 when absent.
    short IndexForChoice(const CString& text) const;

private:
    std::vector<CString> choices_;
};

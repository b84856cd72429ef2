#pragma once
// oxdmTableColumnQueryColumn: a query column over a column of its node's
// table. Built from a definition it knows it at once; built from a name it
// looks the definition up when first needed, through the node it has been
// added to, so a wrong name surfaces then as the dictionary's exception.
//
// Everything that the dictionary knows is answered from the definition.

#include "oxdm/query/query_column_base.h"

class oxdmColumnDef;

class oxdmTableColumnQueryColumn : public oxdmQueryColumnBase {
public:
    oxdmTableColumnQueryColumn(const oxdmColumnDef* column, const CString& id, int style);
    oxdmTableColumnQueryColumn(const oxdmColumnDef* column, int style);
    oxdmTableColumnQueryColumn(const CString& name, int style);
    oxdmTableColumnQueryColumn(const CString& name, const CString& id, int style);

    // The definition, resolved on first need. Throws oxdmException before
    // the column has a node, and the table's exception for a wrong name.
    const oxdmColumnDef* Column() const;
    const CString& ColumnID() const { return columnID_; }
    // Whether this column stands for `def`, without resolving a name.
    bool RefersTo(const oxdmColumnDef* def) const;

    oxEditFormatter* BuildFormatter() const override;
    short Type() const override;
    bool RightJustify() const override;
    CString Name() const override;
    CString Desc() const override;
    unsigned short DefaultWidth() const override;
    bool Key() const override;
    bool Stamp() const override;
    bool Visible() const override;
    bool HasChoices() const override;
    bool MultilineText() const override;
    int DefaultGridColumnWidth() const override;
    const std::vector<CString>& Choices() const override;
    void Choices(std::vector<CString>& out) const override;
    // Throws oxdmException: a table column's choices are its definition's.
    void SetChoices(const std::vector<CString>& choices) override;
    unsigned short MinorHelpID() const override;
    unsigned short LabelBreak() const override;
    unsigned short Length() const override;
    unsigned short MinHeadWidth() const override;
    short Decimal() const override;
    bool Capitalize() const override;
    bool MonthYear() const override;
    bool UnSigned() const override;
    bool Required() const override;
    bool Formatted() const override;
    short Code() const override;
    unsigned short SectionNum() const override;
    bool Commas() const override;

protected:
    // A cursor column, or a void column when the data file lacks the field.
    oxdmDSColumnBase* CreateColumn(oxdmBufferedFileDataSource& source) const override;
    oxData* CreateDefaultValue() const override;
    // The definition's description in tag form.
    CString CreateLabel() const override;

private:
    // column_ is the dictionary's (not owned), null until resolved;
    // columnID_ is the column's name in its table.
    mutable const oxdmColumnDef* column_;
    CString columnID_;
};

#pragma once
// oxdmPOPropertyColumn: the query column of one property of a persistent
// object; everything it tells comes from the property's column definition,
// which the object bridge made from the property's type information.

#include "oxdm/query/column_base.h"

class oxdmColumnDef;

class oxdmPOPropertyColumn : public oxdmColumnBase {
public:
    // REQUIRES: column != nullptr; it outlives this object.
    explicit oxdmPOPropertyColumn(const oxdmColumnDef* column);

    const oxdmColumnDef* Column() const { return column_; }
    const CString& ColumnID() const { return columnId_; }
    int Style() const { return style_; }
    void SetStyle(int style) { style_ = style; }

    oxdmDSColumnBase* BuildColumn(oxdmBufferedFileDataSource& source) const override;
    // From a copy of the definition's field record.
    oxEditFormatter* BuildFormatter() const override;
    CString Name() const override;
    CString Desc() const override;
    short Type() const override;
    unsigned short Length() const;
    short Decimal() const;
    bool Key() const override;
    short Code() const;
    bool Commas() const;
    bool Capitalize() const;
    bool RightJustify() const override;
    bool Formatted() const;
    bool MonthYear() const;
    bool Required() const;
    unsigned short SectionNum() const;
    unsigned short LabelBreak() const;
    unsigned short DefaultWidth() const override;
    unsigned short MinHeadWidth() const;
    bool Stamp() const override;
    int DefaultGridColumnWidth() const override;
    bool MultilineText() const override;
    bool HasChoices() const override;
    const std::vector<CString>& Choices() const override;
    // Accepted and ignored: the choices are the property's.
    void SetChoices(const std::vector<CString>& choices) override;
    unsigned short MinorHelpID() const { return 0; }
    // The definition's description.
    CString CreateLabel() const;

protected:
    // A cursor column on the definition, with this column's style.
    oxdmDSColumnBase* CreateColumn(oxdmBufferedFileDataSource& source) const override;
    // A fresh value of the definition.
    oxData* CreateDefaultValue() const override;

private:
    // column_ is the bridge's (not owned); columnId_ is its name.
    const oxdmColumnDef* column_;
    CString columnId_;
    int style_ = 0;
};

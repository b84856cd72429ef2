#pragma once
// oxdmDSColumnInCursor: a live column over a field of a table of the
// buffer's cursor tree. Its value is the cursor's; writing it writes
// through to the cursor. It reads the field's definition for its label,
// its choices, whether it is required or read only, and how a zero or an
// empty value is shown. The new row of a child buffer inherits the parent's
// value of a joined field (its source column).
//
// Invariants and ownership: columnNode_ is the node of the field's table in
// the buffer's tree, owned by the tree, which outlives the column;
// sourceValue_ is owned, made on first use.

#include <memory>

#include "oxdm/datasource/buffered/ds_column.h"

class oxdmCursorNode;

class oxdmDSColumnInCursor : public oxdmDSColumnBase {
public:
    // Attaches the field to its node. Throws oxdmException when the
    // buffer's tree holds no node of the field's table.
    // REQUIRES: def is not null.
    oxdmDSColumnInCursor(const oxdmColumnDef* def, const CString& id, oxdmBufferedFileDataSource& source, int style,
                         const oxData* defaultValue);
    ~oxdmDSColumnInCursor() override;

    using oxdmDSColumnBase::operator=;
    bool SetValue(const oxdmDSColumnBase& from) override;
    bool SetValue(const CString& text) override;
    bool SetValue(const oxData& value) override;
    bool CopyValue(const oxData& from, oxData& to) const override;
    bool CopyValue(const oxdmDSColumnBase& from, oxData& to) const override;
    // A choice field takes its text by item name.
    bool CopyValue(const CString& from, oxData& to) const override;
    // Choices by name; a numeric zero and an empty social security number
    // show blank unless the field or the style asks otherwise.
    CString ValueAsString(const oxData& value) const override;
    CString ValueAsString() const override;
    void Choices(std::vector<CString>& out) const override;
    const oxData& DefaultValue(bool useSource) const override;
    const oxData& PrefillValue() const override;
    bool Required() const override;
    bool IsReadOnly() const override;
    short Type() const override;

protected:
    oxData* CurrentVal() const override;
    oxData* CreateDefaultValue() const override;
    CString CreateLabel() override;

private:
    // The parent's value of this field's source column, or null when the
    // node has no parent or the field no source column.
    const oxData* SourceValue() const;
    bool WriteThrough();

    oxdmCursorNode* columnNode_;
    mutable std::unique_ptr<oxData> sourceValue_;
};

#pragma once
// oxdmDSCellOnFocusRow: the handle through which controls and callbacks speak
// to one column of a data source's focus row. This is the base class: its
// typed value getters answer null, and its typed setters act only on a null
// value, which they take as the empty text; a family of data sources derives
// its own cell with typed values.
//
// Invariants and ownership: dataSource_ is not owned and must outlive the
// cell; column_ is the column's index in it. valueStatus_ and editMode_ are
// kept for the caller and change nothing here.

#include "oxdm/base/cstring.h"

class oxData;
class oxdmDataSource;
class oxEditFormatter;

class oxdmDSCellOnFocusRow {
public:
    using Mode = int;

    oxdmDSCellOnFocusRow(oxdmDataSource* dataSource, short column) : dataSource_(dataSource), column_(column) {}
    virtual ~oxdmDSCellOnFocusRow() = default;

    virtual bool SetNewValue(const oxData* value, bool markChanged);
    virtual bool SetFindValue(const oxData* value);
    virtual void SetDefaultValue(const oxData* value);
    virtual const oxData* SavedValue() const { return nullptr; }
    virtual const oxData* OldValue() const { return nullptr; }
    virtual const oxData* NewValue() const { return nullptr; }
    virtual const oxData* GetFindValue() const { return nullptr; }
    virtual const oxData* DefaultValue() const { return nullptr; }
    virtual bool CanProvideContextHelpInfo() const { return false; }
    virtual CString FileExt() { return CString(); }
    virtual CString HelpFile() { return CString(); }
    virtual void DoAutoLookup() {}
    virtual oxEditFormatter* AllocateFormatter() const { return nullptr; }

    // Forwards to the data source with this cell's column.
    CString SavedValueAsString() const;
    CString OldValueAsString() const;
    CString NewValueAsString() const;
    // With markChanged the row is first marked changed.
    bool SetNewValue(const CString& text, bool markChanged);
    CString Label() const;
    CString FieldName() const;
    bool IsPrefillOn() const;
    void SetPrefillOn(bool on);
    bool IsReadOnly() const;
    void SetReadOnly(bool readOnly);
    void SetDefaultValue(const CString& text);
    CString DefaultValueAsString() const;
    CString GetFindValueAsString() const;
    bool SetFindValue(const CString& text);
    bool Visible() const { return true; }

    int ValueStatus() const { return valueStatus_; }
    Mode EditMode() const { return editMode_; }
    void SetEditMode(Mode mode) { editMode_ = mode; }
    oxdmDataSource* DataSource() const { return dataSource_; }
    short Column() const { return column_; }

private:
    int valueStatus_ = 0;
    Mode editMode_ = 0;
    oxdmDataSource* dataSource_;
    short column_;
};

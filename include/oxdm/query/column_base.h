#pragma once
// oxdmColumnBase: the declaration of one column that a data source turns
// into a live column: its id, default and prefill values, choices, and the
// answers a grid or a control asks of it (type, widths, label, ...).
//
// The default and prefill values are made on first use through
// CreateDefaultValue and owned here; they are the only state that changes
// behind const, as a cache of what the column's definition says.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"

class oxData;
class oxdmBufferedFileDataSource;
class oxdmDSColumnBase;
class oxEditFormatter;

class oxdmColumnBase {
public:
    explicit oxdmColumnBase(const CString& id);
    virtual ~oxdmColumnBase();
    oxdmColumnBase(const oxdmColumnBase&) = delete;
    oxdmColumnBase& operator=(const oxdmColumnBase&) = delete;

    virtual const CString& ID() const { return id_; }
    virtual void SetID(const CString& id) { id_ = id; }
    virtual const oxData& PrefillValue() const;
    virtual const oxData& DefaultValue() const;
    // A new live column of `source`, owned by the caller.
    virtual oxdmDSColumnBase* BuildColumn(oxdmBufferedFileDataSource& source) const = 0;
    // A new formatter for the column, owned by the caller (null for none).
    virtual oxEditFormatter* BuildFormatter() const = 0;
    virtual short Type() const { return 0; }
    virtual bool RightJustify() const { return false; }
    virtual CString Name() const { return CString(); }
    virtual CString Desc() const { return CString(); }
    virtual unsigned short DefaultWidth() const { return 12; }
    virtual bool Key() const { return false; }
    virtual bool Stamp() const { return false; }
    virtual bool Visible() const { return true; }
    virtual bool HasChoices() const { return false; }
    virtual bool MultilineText() const { return false; }
    virtual int DefaultGridColumnWidth() const { return 0; }
    virtual int DefaultMinGridColumnWidth() const { return 0; }
    virtual bool Hide() const { return false; }
    virtual CString Label() const { return CString(); }
    virtual const std::vector<CString>& Choices() const { return choices_; }
    // Appends each choice to `out`.
    virtual void Choices(std::vector<CString>& out) const;
    virtual void SetChoices(const std::vector<CString>& choices) { choices_ = choices; }

protected:
    virtual oxdmDSColumnBase* CreateColumn(oxdmBufferedFileDataSource& source) const = 0;
    // oxAlpha of the empty text.
    virtual oxData* CreateDefaultValue() const;

    // Replace the values with clones of `value`.
    void ReplaceDefaultValue(const oxData& value);
    void ReplacePrefillValue(const oxData& value);
    // Whether the prefill value has been made or set.
    bool HasPrefillValue() const { return prefillValue_ != nullptr; }

private:
    // id_ names the column in its query; defaultValue_ and prefillValue_ are
    // owned, null until first use; choices_ is the column's own list.
    CString id_;
    mutable std::unique_ptr<oxData> defaultValue_;
    mutable std::unique_ptr<oxData> prefillValue_;
    std::vector<CString> choices_;
};

#pragma once
// oxdmDSColumnBase: the live half of a query column. A buffer holds one per
// column and reaches it by index. The column knows where its value lives
// (this base keeps it in a scratch value; heirs read a cursor, a callback or
// the attachments of a record), how to turn text into values and back,
// whether it is read only, required or hidden at this moment, and which
// default and prefill values a new row takes.
//
// Style bits (those a query column knows, and three that only live columns
// read):
//   0x01 PrefillFromLast  0x02 PrefillOn  0x04 IsReadOnly  0x08 Hide
//   0x10 AutoHide  0x20 ChangeableKey  0x40 Required (comes with the style)
//   0x80 a numeric zero shows as it is  0x200 a protected field may be
//   edited on the new row
//
// Invariants and ownership:
//   - source_ is the buffer that owns this column and outlives it.
//   - value_, defaultValue_, prefillValue_, defaultPrefillValue_ and
//     valueWhenHidden_ are owned; value_ and defaultValue_ are made on first
//     use (behind const: they cache what the column would answer anyway),
//     prefillValue_ and defaultPrefillValue_ are null until set,
//     valueWhenHidden_ is never null.
//   - columnDef_ is never null; it is owned when ownsColumnDef_ is set (the
//     column's own definition, made for a column that is no table column).
//   - label_ is kNoLabel until set or first asked for.

#include <memory>
#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/query/filter.h"
#include "oxdm/query/filter_target.h"

class oxData;
class oxdmBufferedFileDataSource;
class oxdmColumnDef;

class oxdmDSColumnBase : public oxdmFilterColumn {
public:
    enum StyleBits {
        StylePrefillFromLast = 0x01,
        StylePrefillOn = 0x02,
        StyleReadOnly = 0x04,
        StyleHide = 0x08,
        StyleAutoHide = 0x10,
        StyleChangeableKey = 0x20,
        StyleRequired = 0x40,
        StyleShowZero = 0x80,
        StyleNewRowWritable = 0x200,
    };
    // The label of a column whose label was never set.
    static constexpr const char* kNoLabel = "I don't need no stinking label!";

    // defaultValue may be null; the column keeps a clone.
    oxdmDSColumnBase(const CString& id, oxdmBufferedFileDataSource& source, int style, const oxData* defaultValue);
    ~oxdmDSColumnBase() override;
    oxdmDSColumnBase(const oxdmDSColumnBase&) = delete;

    // The value while hidden, else CurrentVal(). Only the hidden test reads
    // the argument.
    virtual const oxData& Value(bool fromFocusRow) const;
    virtual CString ValueAsString(const oxData& value) const;
    // The text of Value(false).
    virtual CString ValueAsString() const;
    virtual bool SetValue(const oxdmDSColumnBase& from);
    virtual bool SetValue(const CString& text);
    virtual bool SetValue(const oxData& value);
    // Converts `from` into `to` by the target's own conversion; false when
    // `to` refuses.
    virtual bool CopyValue(const oxData& from, oxData& to) const;
    virtual bool CopyValue(const oxdmDSColumnBase& from, oxData& to) const;
    virtual bool CopyValue(const CString& from, oxData& to) const;
    bool EQ(const oxData& a, const oxData& b) const override;
    bool NE(const oxData& a, const oxData& b) const override;
    bool GE(const oxData& a, const oxData& b) const override;
    bool LE(const oxData& a, const oxData& b) const override;
    bool GT(const oxData& a, const oxData& b) const override;
    bool LT(const oxData& a, const oxData& b) const override;
    // Appends the stored choices, or the current text when none are stored.
    virtual void Choices(std::vector<CString>& out) const;
    virtual void SetChoices(const std::vector<CString>& choices) { choices_ = choices; }
    virtual const oxData& DefaultValue(bool useSource) const;
    virtual void SetDefaultValue(const oxData& value);
    virtual const oxData& PrefillValue() const;
    virtual const oxData& DefaultPrefillValue() const;
    virtual void SetPrefillValue(const oxData& value, bool alsoDefault);
    virtual const oxdmColumnDef* OXColumn() const { return columnDef_; }
    // oxChoice 9, oxBool 2, anything else 0, from the default value's class.
    virtual short Type() const;
    virtual bool Required() const { return (style_ & StyleRequired) != 0; }
    virtual bool IsReadOnly() const { return (style_ & StyleReadOnly) != 0; }

    // Assignments through SetValue; a refusal throws oxdmException naming
    // the value and the column, and changes nothing.
    virtual oxdmDSColumnBase& operator=(const oxdmDSColumnBase& from);
    virtual oxdmDSColumnBase& operator=(const CString& text);
    virtual oxdmDSColumnBase& operator=(const oxData& value);
    // With a column or a value: the typed comparisons of Value(false); with
    // a text: ValueAsString() against it, case-sensitive.
    virtual bool operator==(const oxdmDSColumnBase& other) const { return EQ(Value(false), other.Value(false)); }
    virtual bool operator==(const CString& text) const { return ValueAsString().Compare(text) == 0; }
    virtual bool operator==(const oxData& value) const { return EQ(Value(false), value); }
    virtual bool operator!=(const oxdmDSColumnBase& other) const { return NE(Value(false), other.Value(false)); }
    virtual bool operator!=(const CString& text) const { return ValueAsString().Compare(text) != 0; }
    virtual bool operator!=(const oxData& value) const { return NE(Value(false), value); }
    virtual bool operator>=(const oxdmDSColumnBase& other) const { return GE(Value(false), other.Value(false)); }
    virtual bool operator>=(const CString& text) const { return ValueAsString().Compare(text) >= 0; }
    virtual bool operator>=(const oxData& value) const { return GE(Value(false), value); }
    virtual bool operator<=(const oxdmDSColumnBase& other) const { return LE(Value(false), other.Value(false)); }
    virtual bool operator<=(const CString& text) const { return ValueAsString().Compare(text) <= 0; }
    virtual bool operator<=(const oxData& value) const { return LE(Value(false), value); }
    virtual bool operator>(const oxdmDSColumnBase& other) const { return GT(Value(false), other.Value(false)); }
    virtual bool operator>(const CString& text) const { return ValueAsString().Compare(text) > 0; }
    virtual bool operator>(const oxData& value) const { return GT(Value(false), value); }
    virtual bool operator<(const oxdmDSColumnBase& other) const { return LT(Value(false), other.Value(false)); }
    virtual bool operator<(const CString& text) const { return ValueAsString().Compare(text) < 0; }
    virtual bool operator<(const oxData& value) const { return LT(Value(false), value); }
    virtual operator const oxData&() const { return Value(false); }
    virtual operator CString() const { return ValueAsString(); }
    virtual operator const oxdmColumnDef*() const { return OXColumn(); }
    // A clone of Value(false), owned by the caller.
    virtual oxData* CreateData() const;

    // The filter face: the cursor's value, or the focus row's new value.
    const oxData& FilterValue(bool fromFocusRow) const override;

    const CString& ID() const { return columnID_; }
    void SetID(const CString& id) { columnID_ = id; }
    // The label; a label never set becomes CreateLabel() when first asked.
    CString Label();
    void SetLabel(const CString& label) { columnLabel_ = label; }
    oxdmBufferedFileDataSource& DataSource() const { return source_; }
    int Style() const { return style_; }
    void SetStyle(int style) { style_ = style; }
    bool PrefillFromLast() const { return (style_ & StylePrefillFromLast) != 0; }
    void SetPrefillFromLast(bool on) { SetBit(StylePrefillFromLast, on); }
    bool PrefillOn() const { return (style_ & StylePrefillOn) != 0; }
    void SetPrefillOn(bool on) { SetBit(StylePrefillOn, on); }
    void SetReadOnly(bool on) { SetBit(StyleReadOnly, on); }
    bool Hide() const { return (style_ & StyleHide) != 0; }
    void SetHide(bool on) { SetBit(StyleHide, on); }
    bool AutoHide() const { return (style_ & StyleAutoHide) != 0; }
    void SetAutoHide(bool on) { SetBit(StyleAutoHide, on); }
    bool ChangeableKey() const { return (style_ & StyleChangeableKey) != 0; }
    void SetChangeableKey(bool on) { SetBit(StyleChangeableKey, on); }
    oxdmFilter AutoHideFilter() const { return autoHideFilter_; }
    // Keeps the filter; with enable also sets AutoHide (it never clears it).
    void SetAutoHideFilter(const oxdmFilter& filter, bool enable);
    const oxData& ValueWhenHidden() const { return *valueWhenHidden_; }
    void SetValueWhenHidden(const oxData& value);
    bool IsHidden(bool fromFocusRow) const;
    bool IsReadOnlyOrHidden(bool fromFocusRow) const { return IsReadOnly() || IsHidden(fromFocusRow); }
    bool CanPrefill() const { return !IsReadOnly(); }
    bool IsPrefill() const { return CanPrefill() && PrefillOn(); }
    // Takes `def` (not owned) in place of the column's definition.
    void SetColDef(const oxdmColumnDef* def);

protected:
    // The value as it stands now; the base answers its scratch value.
    virtual oxData* CurrentVal() const { return Val(); }
    // An oxAlpha of the empty text, owned by the caller.
    virtual oxData* CreateDefaultValue() const;
    virtual CString CreateLabel() { return columnID_; }

    // The scratch value, a clone of PrefillValue() on first use.
    oxData* Val() const;
    // Throws oxdmException when the column is read only.
    void CheckReadOnly() const;
    bool EvaluateAutoHide(bool fromFocusRow) const;

private:
    void SetBit(int bit, bool on) { style_ = on ? (style_ | bit) : (style_ & ~bit); }
    // The text of a value for the message of a refused assignment.
    [[noreturn]] void ThrowAssign(const CString& text) const;

    CString columnID_;
    CString columnLabel_;
    oxdmBufferedFileDataSource& source_;
    mutable std::unique_ptr<oxData> value_;
    mutable std::unique_ptr<oxData> defaultValue_;
    std::unique_ptr<oxData> prefillValue_;
    std::unique_ptr<oxData> defaultPrefillValue_;
    int style_;
    oxdmFilter autoHideFilter_;
    std::unique_ptr<oxData> valueWhenHidden_;
    std::vector<CString> choices_;
    const oxdmColumnDef* columnDef_;
    bool ownsColumnDef_ = true;
};

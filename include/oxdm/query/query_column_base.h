#pragma once
// oxdmQueryColumnBase: a column of a query node, with its style bits, its
// auto-hide filter, its value while hidden and its label.
//
// Style bits, each with an accessor and a setter:
//   0x01 PrefillFromLast   0x02 PrefillOn      0x04 IsReadOnly
//   0x08 Hide              0x10 AutoHide       0x20 ChangeableKey
//   0x100 a date column shows month and day only (read by BuildFormatter)
//
// The label starts as kNoLabel, which tells a label never set from one set
// to the empty text: Label() asks CreateLabel() only while it is kNoLabel.

#include <memory>

#include "oxdm/query/column_base.h"

class oxdmFilter;
class oxdmQueryNode;

class oxdmQueryColumnBase : public oxdmColumnBase {
public:
    enum StyleBits {
        StylePrefillFromLast = 0x01,
        StylePrefillOn = 0x02,
        StyleReadOnly = 0x04,
        StyleHide = 0x08,
        StyleAutoHide = 0x10,
        StyleChangeableKey = 0x20,
        StyleMonthDay = 0x100,
    };
    // The label of a column whose label was never set.
    static constexpr const char* kNoLabel = "I don't need no stinking label!";

    oxdmQueryColumnBase(const CString& id, int style);
    ~oxdmQueryColumnBase() override;

    // From the class of DefaultValue(): oxChoice 9, oxBool 2, else 0.
    short Type() const override;
    bool Hide() const override { return (style_ & StyleHide) != 0; }
    CString Label() const override;
    int DefaultGridColumnWidth() const override;
    int DefaultMinGridColumnWidth() const override;
    // CreateColumn, then the column's choices, a copy of the auto-hide
    // filter and the value when hidden. Needs the live-column factory.
    oxdmDSColumnBase* BuildColumn(oxdmBufferedFileDataSource& source) const override;
    // The formatter that a definition built from this column's answers asks for.
    oxEditFormatter* BuildFormatter() const override;

    virtual void SetNode(oxdmQueryNode* node) { node_ = node; }
    virtual int Style() const { return style_; }
    virtual void SetStyle(int style) { style_ = style; }
    virtual bool PrefillOn() const { return (style_ & StylePrefillOn) != 0; }
    virtual void SetPrefillOn(bool on) { SetBit(StylePrefillOn, on); }
    virtual bool PrefillFromLast() const { return (style_ & StylePrefillFromLast) != 0; }
    virtual void SetPrefillFromLast(bool on) { SetBit(StylePrefillFromLast, on); }
    virtual bool IsReadOnly() const { return (style_ & StyleReadOnly) != 0; }
    virtual void SetReadOnly(bool on) { SetBit(StyleReadOnly, on); }
    virtual bool ChangeableKey() const { return (style_ & StyleChangeableKey) != 0; }
    virtual void SetChangeableKey(bool on) { SetBit(StyleChangeableKey, on); }
    virtual void SetHide(bool on) { SetBit(StyleHide, on); }
    virtual bool AutoHide() const { return (style_ & StyleAutoHide) != 0; }
    virtual void SetAutoHide(bool on) { SetBit(StyleAutoHide, on); }
    virtual const oxdmFilter& AutoHideFilter() const { return *autoHideFilter_; }
    // Keeps a copy; with enable also sets AutoHide (it never clears it).
    virtual void SetAutoHideFilter(const oxdmFilter& filter, bool enable);
    virtual const oxData& ValueWhenHidden() const;
    virtual void SetValueWhenHidden(const oxData& value);
    virtual void SetLabel(const CString& label) { label_ = label; }
    virtual void SetPrefillValue(const oxData& value) { ReplacePrefillValue(value); }
    virtual unsigned short MinorHelpID() const { return 0; }
    virtual unsigned short LabelBreak() const { return 0; }
    virtual unsigned short Length() const { return 12; }
    virtual unsigned short MinHeadWidth() const { return 12; }
    virtual short Decimal() const { return 0; }
    virtual bool Capitalize() const { return false; }
    virtual bool MonthYear() const { return false; }
    virtual bool UnSigned() const { return false; }
    virtual bool Required() const { return false; }
    virtual bool Formatted() const { return false; }
    virtual short Code() const { return 0; }
    virtual unsigned short SectionNum() const { return 0; }
    virtual bool Commas() const { return false; }

    oxdmQueryNode* Node() const { return node_; }

protected:
    // oxdmDSColumnBase(id, source, style, default value).
    oxdmDSColumnBase* CreateColumn(oxdmBufferedFileDataSource& source) const override;
    // A clone of DefaultValue() set to the empty text.
    virtual oxData* CreateValueWhenHidden() const;
    // The id.
    virtual CString CreateLabel() const { return ID(); }
    virtual void SetDefaultValue(const oxData& value) { ReplaceDefaultValue(value); }

    // Grid width in pixels (4 a character): the data width, with the room
    // of a drop arrow when `arrow`, or the label's, whichever is larger,
    // and never below DefaultMinGridColumnWidth().
    int GridWidth(bool arrow) const;

private:
    void SetBit(int bit, bool on) { style_ = on ? (style_ | bit) : (style_ & ~bit); }

    // node_ is the node that owns this column (null until added);
    // autoHideFilter_ is owned and never null; valueWhenHidden_ is owned,
    // null until first use; label_ is kNoLabel until set.
    oxdmQueryNode* node_ = nullptr;
    int style_;
    std::unique_ptr<oxdmFilter> autoHideFilter_;
    mutable std::unique_ptr<oxData> valueWhenHidden_;
    CString label_;
};

// The room, in pixels, that a drop-down arrow takes in a grid cell.
inline constexpr int kOxdmDropArrowWidth = 16;

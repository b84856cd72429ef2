#include "oxdm/datasource/buffered/ds_column.h"

#include <cstring>

#include "oxdm/base/exception.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/record/column_def.h"

namespace {

// The definition of a column that is no table column: alpha, 12 wide.
const oxdmColumnDef* NewOwnDefinition() {
    xio_fld_def def;
    std::memset(&def, 0, sizeof def);
    def.length = 12;
    def.default_width = 12;
    def.min_head_width = 12;
    return new oxdmColumnDef(nullptr, def);
}

}  // namespace

oxdmDSColumnBase::oxdmDSColumnBase(const CString& id, oxdmBufferedFileDataSource& source, int style,
                                   const oxData* defaultValue)
    : columnID_(id),
      columnLabel_(kNoLabel),
      source_(source),
      defaultValue_(defaultValue ? defaultValue->Clone() : nullptr),
      style_(style),
      valueWhenHidden_(std::make_unique<oxAlpha>("")),
      columnDef_(NewOwnDefinition()) {}

oxdmDSColumnBase::~oxdmDSColumnBase() {
    if (ownsColumnDef_) delete columnDef_;
}

void oxdmDSColumnBase::SetColDef(const oxdmColumnDef* def) {
    if (ownsColumnDef_) delete columnDef_;
    ownsColumnDef_ = false;
    columnDef_ = def;
}

CString oxdmDSColumnBase::Label() {
    if (columnLabel_ == kNoLabel) columnLabel_ = CreateLabel();
    return columnLabel_;
}

const oxData& oxdmDSColumnBase::Value(bool fromFocusRow) const {
    if (IsHidden(fromFocusRow)) return *valueWhenHidden_;
    return *CurrentVal();
}

CString oxdmDSColumnBase::ValueAsString(const oxData& value) const { return value.Format(); }

CString oxdmDSColumnBase::ValueAsString() const { return ValueAsString(Value(false)); }

oxData* oxdmDSColumnBase::Val() const {
    if (!value_) value_.reset(PrefillValue().Clone());
    return value_.get();
}

bool oxdmDSColumnBase::SetValue(const oxdmDSColumnBase& from) { return CopyValue(from, *Val()); }
bool oxdmDSColumnBase::SetValue(const CString& text) { return CopyValue(text, *Val()); }
bool oxdmDSColumnBase::SetValue(const oxData& value) { return CopyValue(value, *Val()); }

bool oxdmDSColumnBase::CopyValue(const oxData& from, oxData& to) const {
    if (&from == &to) return true;
    return to.SetVal(from);
}

bool oxdmDSColumnBase::CopyValue(const oxdmDSColumnBase& from, oxData& to) const {
    return CopyValue(from.Value(false), to);
}

bool oxdmDSColumnBase::CopyValue(const CString& from, oxData& to) const { return to.SetVal(from, nullptr); }

bool oxdmDSColumnBase::EQ(const oxData& a, const oxData& b) const { return a.Eq(b); }
bool oxdmDSColumnBase::NE(const oxData& a, const oxData& b) const { return !EQ(a, b); }
bool oxdmDSColumnBase::LT(const oxData& a, const oxData& b) const { return a.Lt(b); }
bool oxdmDSColumnBase::GE(const oxData& a, const oxData& b) const { return !a.Lt(b); }
bool oxdmDSColumnBase::GT(const oxData& a, const oxData& b) const { return !a.Lt(b) && !a.Eq(b); }
bool oxdmDSColumnBase::LE(const oxData& a, const oxData& b) const { return a.Lt(b) || a.Eq(b); }

void oxdmDSColumnBase::Choices(std::vector<CString>& out) const {
    if (choices_.empty()) {
        out.push_back(ValueAsString());
        return;
    }
    out.insert(out.end(), choices_.begin(), choices_.end());
}

const oxData& oxdmDSColumnBase::DefaultValue(bool) const {
    if (!defaultValue_) defaultValue_.reset(CreateDefaultValue());
    return *defaultValue_;
}

void oxdmDSColumnBase::SetDefaultValue(const oxData& value) { defaultValue_.reset(value.Clone()); }

const oxData& oxdmDSColumnBase::PrefillValue() const {
    return prefillValue_ ? *prefillValue_ : DefaultValue(true);
}

const oxData& oxdmDSColumnBase::DefaultPrefillValue() const {
    return defaultPrefillValue_ ? *defaultPrefillValue_ : DefaultValue(true);
}

void oxdmDSColumnBase::SetPrefillValue(const oxData& value, bool alsoDefault) {
    prefillValue_.reset(value.Clone());
    if (alsoDefault) defaultPrefillValue_.reset(value.Clone());
}

short oxdmDSColumnBase::Type() const {
    const oxData& value = DefaultValue(false);
    if (dynamic_cast<const oxChoice*>(&value) != nullptr) return 9;
    if (dynamic_cast<const oxBool*>(&value) != nullptr) return 2;
    return 0;
}

void oxdmDSColumnBase::ThrowAssign(const CString& text) const {
    throw oxdmException("Couldn't assign value '" + text + "' to column " + columnID_);
}

oxdmDSColumnBase& oxdmDSColumnBase::operator=(const oxdmDSColumnBase& from) {
    if (!SetValue(from)) ThrowAssign(from.ValueAsString());
    return *this;
}

oxdmDSColumnBase& oxdmDSColumnBase::operator=(const CString& text) {
    if (!SetValue(text)) ThrowAssign(text);
    return *this;
}

oxdmDSColumnBase& oxdmDSColumnBase::operator=(const oxData& value) {
    if (!SetValue(value)) ThrowAssign(value.Format());
    return *this;
}

oxData* oxdmDSColumnBase::CreateData() const { return Value(false).Clone(); }

const oxData& oxdmDSColumnBase::FilterValue(bool fromFocusRow) const {
    if (!fromFocusRow) return Value(false);
    const oxData* focus = source_.NewValue(source_.IndexForColumn(columnID_));
    return focus ? *focus : Value(false);
}

oxData* oxdmDSColumnBase::CreateDefaultValue() const { return new oxAlpha(""); }

void oxdmDSColumnBase::CheckReadOnly() const {
    if (IsReadOnly()) throw oxdmException(columnID_ + " is a read only column.");
}

void oxdmDSColumnBase::SetAutoHideFilter(const oxdmFilter& filter, bool enable) {
    autoHideFilter_ = filter;
    if (enable) SetAutoHide(true);
}

void oxdmDSColumnBase::SetValueWhenHidden(const oxData& value) { valueWhenHidden_.reset(value.Clone()); }

bool oxdmDSColumnBase::IsHidden(bool fromFocusRow) const {
    return Hide() || (AutoHide() && EvaluateAutoHide(fromFocusRow));
}

bool oxdmDSColumnBase::EvaluateAutoHide(bool fromFocusRow) const {
    return autoHideFilter_.Evaluate(source_, fromFocusRow);
}

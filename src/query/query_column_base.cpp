#include "oxdm/query/query_column_base.h"

#include <algorithm>
#include <cstring>

#include "oxdm/common/fieldcode/allocate_formatter.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/query/filter.h"
#include "oxdm/query/live_columns.h"

oxdmQueryColumnBase::oxdmQueryColumnBase(const CString& id, int style)
    : oxdmColumnBase(id), style_(style), autoHideFilter_(std::make_unique<oxdmFilter>()), label_(kNoLabel) {}

oxdmQueryColumnBase::~oxdmQueryColumnBase() = default;

short oxdmQueryColumnBase::Type() const {
    const oxData& value = DefaultValue();
    if (dynamic_cast<const oxChoice*>(&value) != nullptr) return 9;
    if (dynamic_cast<const oxBool*>(&value) != nullptr) return 2;
    return 0;
}

CString oxdmQueryColumnBase::Label() const { return label_ == kNoLabel ? CreateLabel() : label_; }

int oxdmQueryColumnBase::DefaultMinGridColumnWidth() const {
    return 4 * std::min({Length(), DefaultWidth(), MinHeadWidth()});
}

int oxdmQueryColumnBase::GridWidth(bool arrow) const {
    int data = DefaultWidth() * (4 + (Capitalize() ? 1 : 0)) + 4;
    if (arrow) data += kOxdmDropArrowWidth;
    const int label = Label().GetLength() * 4 + 4;
    return std::max({data, label, DefaultMinGridColumnWidth()});
}

int oxdmQueryColumnBase::DefaultGridColumnWidth() const {
    const short type = Type();
    return GridWidth(type >= 7 && type <= 9);
}

void oxdmQueryColumnBase::SetAutoHideFilter(const oxdmFilter& filter, bool enable) {
    *autoHideFilter_ = filter;
    if (enable) SetAutoHide(true);
}

const oxData& oxdmQueryColumnBase::ValueWhenHidden() const {
    if (!valueWhenHidden_) valueWhenHidden_.reset(CreateValueWhenHidden());
    return *valueWhenHidden_;
}

void oxdmQueryColumnBase::SetValueWhenHidden(const oxData& value) { valueWhenHidden_.reset(value.Clone()); }

oxData* oxdmQueryColumnBase::CreateValueWhenHidden() const {
    oxData* value = DefaultValue().Clone();
    value->SetVal(CString(), nullptr);
    return value;
}

oxdmDSColumnBase* oxdmQueryColumnBase::BuildColumn(oxdmBufferedFileDataSource& source) const {
    oxdmLiveColumnFactory& factory = oxdmLiveColumns();
    oxdmDSColumnBase* column = CreateColumn(source);
    factory.SetChoices(*column, Choices());
    factory.SetAutoHideFilter(*column, AutoHideFilter());
    factory.SetValueWhenHidden(*column, ValueWhenHidden());
    return column;
}

oxdmDSColumnBase* oxdmQueryColumnBase::CreateColumn(oxdmBufferedFileDataSource& source) const {
    return oxdmLiveColumns().NewColumn(ID(), source, Style(), &DefaultValue());
}

oxEditFormatter* oxdmQueryColumnBase::BuildFormatter() const {
    xio_fld_def def;
    std::memset(&def, 0, sizeof def);
    def.type = Type();
    def.month_year = MonthYear() ? 1 : 0;
    def.capitalize = Capitalize() ? 1 : 0;
    def.length = Length();
    def.decimal = Decimal();
    def.commas = Commas() ? 1 : 0;
    def.is_signed = UnSigned() ? 0 : 1;
    def.default_width = DefaultWidth();
    def.formatted = Formatted() ? 1 : 0;
    def.section = SectionNum();
    def.code = Code();
    return AllocateFormatter(def);
}

#include "oxdm/query/column_base.h"

#include "oxdm/common/values/text_values.h"

oxdmColumnBase::oxdmColumnBase(const CString& id) : id_(id) {}

oxdmColumnBase::~oxdmColumnBase() = default;

const oxData& oxdmColumnBase::PrefillValue() const {
    if (!prefillValue_) prefillValue_.reset(CreateDefaultValue());
    return *prefillValue_;
}

const oxData& oxdmColumnBase::DefaultValue() const {
    if (!defaultValue_) defaultValue_.reset(CreateDefaultValue());
    return *defaultValue_;
}

void oxdmColumnBase::Choices(std::vector<CString>& out) const {
    const std::vector<CString>& choices = Choices();
    out.insert(out.end(), choices.begin(), choices.end());
}

oxData* oxdmColumnBase::CreateDefaultValue() const { return new oxAlpha(""); }

void oxdmColumnBase::ReplaceDefaultValue(const oxData& value) { defaultValue_.reset(value.Clone()); }

void oxdmColumnBase::ReplacePrefillValue(const oxData& value) { prefillValue_.reset(value.Clone()); }

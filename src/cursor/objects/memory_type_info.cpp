#include "memory_type_info.h"

#include "oxdm/cursor/objects/po_collections.h"
#include "oxdm/cursor/objects/type_converters.h"

HRESULT oxPOMemoryTypeInfo::Answer(const char* operation, short value, short* out) const {
    if (out == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check(operation)) return hr;
    *out = value;
    return S_OK;
}

HRESULT oxPOMemoryTypeInfo::get_Type(int* type) {
    if (type == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("get_Type")) return hr;
    *type = spec_.type;
    return S_OK;
}

HRESULT oxPOMemoryTypeInfo::get_Length(short* v) { return Answer("get_Length", spec_.length, v); }
HRESULT oxPOMemoryTypeInfo::get_Key(short* v) { return Answer("get_Key", spec_.key ? 1 : 0, v); }
HRESULT oxPOMemoryTypeInfo::get_Code(short* v) { return Answer("get_Code", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_Formatted(short* v) { return Answer("get_Formatted", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_SectionNumber(short* v) { return Answer("get_SectionNumber", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_DescriptionBreak(short* v) { return Answer("get_DescriptionBreak", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_DefaultWidth(short* v) { return Answer("get_DefaultWidth", spec_.defaultWidth, v); }
HRESULT oxPOMemoryTypeInfo::get_MinimumHeadWidth(short* v) { return Answer("get_MinimumHeadWidth", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_AuditRequired(short* v) { return Answer("get_AuditRequired", 1, v); }
HRESULT oxPOMemoryTypeInfo::get_Text(short* v) { return Answer("get_Text", spec_.type == POTypeText ? 1 : 0, v); }
HRESULT oxPOMemoryTypeInfo::get_RightJustify(short* v) { return Answer("get_RightJustify", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_Capitals(short* v) { return Answer("get_Capitals", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_Choice(short* v) {
    return Answer("get_Choice", spec_.type == POTypeChoice ? 1 : 0, v);
}
HRESULT oxPOMemoryTypeInfo::get_Decimal(short* v) { return Answer("get_Decimal", spec_.decimals, v); }
HRESULT oxPOMemoryTypeInfo::get_Signed(short* v) { return Answer("get_Signed", 1, v); }
HRESULT oxPOMemoryTypeInfo::get_Commas(short* v) { return Answer("get_Commas", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_PrintZero(short* v) { return Answer("get_PrintZero", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_MonthYear(short* v) { return Answer("get_MonthYear", 0, v); }
HRESULT oxPOMemoryTypeInfo::get_ElapsedTime(short* v) { return Answer("get_ElapsedTime", 0, v); }

HRESULT oxPOMemoryTypeInfo::get_Choices(IStringCollection** choices) {
    if (choices == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("get_Choices")) return hr;
    *choices = new oxPOStringCollection(spec_.choices);
    (*choices)->AddRef();
    return S_OK;
}

HRESULT oxPOMemoryTypeInfo::get_Name(CString* name) {
    if (name == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("get_Name")) return hr;
    *name = spec_.name;
    return S_OK;
}

HRESULT oxPOMemoryTypeInfoCollection::Count(long* count) {
    if (count == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("TypeInfoCount")) return hr;
    *count = static_cast<long>(infos_.size());
    return S_OK;
}

HRESULT oxPOMemoryTypeInfoCollection::NewEnum(IUnknown**) { return E_NOTIMPL; }

HRESULT oxPOMemoryTypeInfoCollection::Item(long index, IPropertyTypeInfo** info) {
    if (info == nullptr) return E_POINTER;
    if (HRESULT hr = plan_->Check("TypeInfoItem")) return hr;
    if (index < 0 || index >= static_cast<long>(infos_.size())) return E_INVALIDARG;
    *info = infos_[static_cast<size_t>(index)];
    (*info)->AddRef();
    return S_OK;
}

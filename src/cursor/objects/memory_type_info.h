#pragma once
// The memory store's type information: one object per property, answering
// from the property's definition, and the collection of them. Both consult
// the set's fault plan by the name of each operation.

#include <memory>
#include <vector>

#include "oxdm/cursor/objects/com_object.h"
#include "oxdm/cursor/objects/fault_plan.h"
#include "oxdm/cursor/objects/object_storage.h"

class oxPOMemoryTypeInfo : public PoComObject<IPropertyTypeInfo> {
public:
    oxPOMemoryTypeInfo(const oxPOPropertySpec& spec, std::shared_ptr<oxPOFaultPlan> plan)
        : spec_(spec), plan_(std::move(plan)) {}

    HRESULT get_Type(int* type) override;
    HRESULT get_Length(short* value) override;
    HRESULT get_Key(short* value) override;
    HRESULT get_Code(short* value) override;
    HRESULT get_Formatted(short* value) override;
    HRESULT get_SectionNumber(short* value) override;
    HRESULT get_DescriptionBreak(short* value) override;
    HRESULT get_DefaultWidth(short* value) override;
    HRESULT get_MinimumHeadWidth(short* value) override;
    HRESULT get_AuditRequired(short* value) override;
    HRESULT get_Text(short* value) override;
    HRESULT get_RightJustify(short* value) override;
    HRESULT get_Capitals(short* value) override;
    HRESULT get_Choice(short* value) override;
    HRESULT get_Choices(IStringCollection** choices) override;
    HRESULT get_Decimal(short* value) override;
    HRESULT get_Signed(short* value) override;
    HRESULT get_Commas(short* value) override;
    HRESULT get_PrintZero(short* value) override;
    HRESULT get_MonthYear(short* value) override;
    HRESULT get_ElapsedTime(short* value) override;
    HRESULT get_Name(CString* name) override;

private:
    // Answers `value` into *out unless `operation` is made to fail.
    HRESULT Answer(const char* operation, short value, short* out) const;

    oxPOPropertySpec spec_;
    std::shared_ptr<oxPOFaultPlan> plan_;
};

class oxPOMemoryTypeInfoCollection : public PoComObject<IPropertyTypeInfoCollection> {
public:
    explicit oxPOMemoryTypeInfoCollection(std::shared_ptr<oxPOFaultPlan> plan) : plan_(std::move(plan)) {}

    HRESULT Count(long* count) override;
    HRESULT NewEnum(IUnknown** enumerator) override;
    HRESULT Item(long index, IPropertyTypeInfo** info) override;

    void Append(IPropertyTypeInfo* info) { infos_.emplace_back(info); }

private:
    std::shared_ptr<oxPOFaultPlan> plan_;
    std::vector<ATL::CComPtr<IPropertyTypeInfo>> infos_;
};

// Each sentence of the object bridge's start-up, with a store that lacks
// the face in question or whose operation fails; and the abort results.

#include <gtest/gtest.h>

#include "oxdm/common/dictionary/definition_records.h"
#include "oxdm/cursor/objects/po_collections.h"
#include "oxdm/cursor/objects/po_cursor.h"
#include "oxdm/query/column_base.h"
#include "oxdm/cursor/objects/po_factory.h"
#include "po_fixture.h"

using namespace po_test;

namespace {

const std::vector<CString> kAll = {"Name", "City", "Balance", "Kind"};

// The sentence the cursor's construction throws, or "" when it doesn't.
CString StartUp(oxPOMemorySet* set, const std::vector<CString>& properties = kAll) {
    try {
        oxdmPersistentObjectCursor cursor(nullptr, AsUnknown(set), properties, 0);
    } catch (const CString& message) {
        return message;
    }
    return CString();
}

}  // namespace

TEST(BridgeStartUp, AMissingFaceOfTheContainerNamesIt) {
    const struct {
        IID face;
        const char* message;
    } cases[] = {
        {IPersistentObjectSet::kIID, "Object doesn't support IPersistentObjectSet."},
        {IRelativeIteratorFind::kIID, "Object doesn't support IRelativeIteratorFind."},
        {IRelativeIteratorPosition::kIID, "Object doesn't support IRelativeIteratorPosition."},
        {ISupportSorting::kIID, "Container does not support ISupportSorting."},
        {ISupportPropertyTypeInfo::kIID, "Container does not support ISupportPropertyTypeInfo."},
        {ISupportFiltering::kIID, ""},  // filtering is optional
    };
    for (const auto& c : cases) {
        auto set = Open(Customers());
        set->Faults().Hide(c.face);
        EXPECT_EQ(StartUp(set), c.message);
    }
}

TEST(BridgeStartUp, AFailingOperationGivesItsOwnSentence) {
    const struct {
        const char* operation;
        const char* message;
    } cases[] = {
        {"GetSort", "Could not retrieve sort from container."},
        {"GetPropertyTypeInfoCollection", "ISupportPropertyTypeInfo::GetPropertyTypeInfoCollection failure."},
        {"TypeInfoCount", "IPropertyTypeInfoCollection::Count failure."},
        {"TypeInfoItem", "IPropertyTypeInfoCollection::Item failure."},
        {"get_Type", "IPropertyTypeInfo::get_Type failed."},
        {"get_Length", "IPropertyTypeInfo::get_Length failed."},
        {"get_Key", "IPropertyTypeInfo::get_Key failed."},
        {"get_Code", "IPropertyTypeInfo::get_Code failed."},
        {"get_Formatted", "IPropertyTypeInfo::get_Formatted failed."},
        {"get_SectionNumber", "IPropertyTypeInfo::get_SectionNumber failed."},
        {"get_DescriptionBreak", "IPropertyTypeInfo::get_DescriptionBreak failed."},
        {"get_DefaultWidth", "IPropertyTypeInfo::get_DefaultWidth failed."},
        {"get_MinimumHeadWidth", "IPropertyTypeInfo::get_MinimumHeadWidth failed."},
        {"get_AuditRequired", "IPropertyTypeInfo::get_AuditRequired failed."},
        {"get_Text", "IPropertyTypeInfo::get_Text failed."},
        {"get_RightJustify", "IPropertyTypeInfo::get_RightJustify failed."},
        {"get_Capitals", "IPropertyTypeInfo::get_Capitals failed."},
        {"get_Choice", "IPropertyTypeInfo::get_Choice failed."},
        {"get_Choices", "IPropertyTypeInfo::get_Choices failed."},
        {"get_Decimal", "IPropertyTypeInfo::get_Decimal failed."},
        {"get_Signed", "IPropertyTypeInfo::get_Signed failed."},
        {"get_Commas", "IPropertyTypeInfo::get_Commas failed."},
        {"get_PrintZero", "IPropertyTypeInfo::get_PrintZero failed."},
        {"get_MonthYear", "IPropertyTypeInfo::get_MonthYear failed."},
        {"get_ElapsedTime", "IPropertyTypeInfo::get_ElapsedTime failed."},
        {"Begin", "Error occurred retrieving the beginning of the container."},
        {"AdviseSort", "ISupportSorting::Advise failed."},
        {"AdviseFilter", "ISupportFiltering::Advise failed."},
    };
    for (const auto& c : cases) {
        auto set = Open(Customers());
        set->Faults().Fail(c.operation, E_FAIL);
        EXPECT_EQ(StartUp(set), c.message) << c.operation;
    }
}

TEST(BridgeStartUp, ChoicesAreReadOnlyForAChoiceProperty) {
    auto set = Open(Customers());
    set->Faults().Fail("get_Choices", E_FAIL);
    EXPECT_EQ(StartUp(set, {"Name", "City"}), "") << "get_Choice off: get_Choices isn't asked";
    set->Faults().Heal("get_Choices");
    oxdmPersistentObjectCursor cursor(nullptr, AsUnknown(set), kAll, 0);
    oxdmColumnBase* kind = cursor.Column("Kind");
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind->Choices(), (std::vector<CString>{"Retail", "Wholesale"}));
    EXPECT_EQ(kind->Type(), XIO_CHOICE);
}

TEST(BridgeStartUp, SortAndPropertiesMustBeUsable) {
    auto unsorted = Open(Customers(), {});
    EXPECT_EQ(StartUp(unsorted), "Sort contains no properties.");
    auto set = Open(Customers());
    EXPECT_EQ(StartUp(set, {"Name", "Colour"}),
              "Failed to retrieve type information for one or more of the specified properties.");
    PoClassCreator former = PoRegisterClass(CLSID_POStringCollection, nullptr);
    EXPECT_EQ(StartUp(set), "Could not create String Collection object");
    PoRegisterClass(CLSID_POStringCollection, former);
    EXPECT_EQ(StartUp(set), "");
}

TEST(BridgeStartUp, NamesFromTypeInformation) {
    auto set = Open(Customers());
    ATL::CComPtr<IStringCollection> asked(new oxPOStringCollection({"City", "Name"}));
    ATL::CComPtr<IPropertyTypeInfoCollection> infos;
    ASSERT_EQ(set->GetPropertyTypeInfoCollection(asked, &infos), S_OK);
    {
        oxdmPersistentObjectCursor cursor(nullptr, AsUnknown(set), infos, nullptr);
        std::vector<oxdmColumnBase*> columns;
        cursor.Columns(columns);
        ASSERT_EQ(columns.size(), 2u);
        EXPECT_EQ(columns[0]->ID(), "City");
        EXPECT_EQ(columns[1]->ID(), "Name");
    }
    auto fromNothing = [&](IUnknown* owner) -> CString {
        try {
            oxdmPersistentObjectCursor cursor(nullptr, AsUnknown(set), owner, nullptr);
        } catch (const CString& message) {
            return message;
        }
        return CString();
    };
    ATL::CComPtr<IStringCollection> none(new oxPOStringCollection());
    ATL::CComPtr<IPropertyTypeInfoCollection> empty;
    set->GetPropertyTypeInfoCollection(none, &empty);
    EXPECT_EQ(fromNothing(empty), "Data source doesn't have any properties");
    set->Faults().Fail("get_Name", E_FAIL);
    EXPECT_EQ(fromNothing(infos), "Couldn't retrieve property names from property type info.");
    set->Faults().Heal("get_Name");
    set->Faults().Fail("TypeInfoItem", E_FAIL);
    EXPECT_EQ(fromNothing(infos), "Couldn't retrieve property names from property type info.");
}

TEST(BridgeStartUpDeathTest, AnAbortResultEndsTheTaskWithTheStoresWords) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (HRESULT abort : {E_ABORT, PO_E_ABORT_STORE}) {
        auto set = Open(Customers());
        set->Faults().Fail("Begin", abort);
        EXPECT_DEATH(StartUp(set), "Failed: Begin");
    }
}

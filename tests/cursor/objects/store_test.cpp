// The in-memory object store by itself: order, events, filtering,
// validation, cloning, conflicts and deletion by another program, and the
// conversions between properties and column values.

#include <gtest/gtest.h>

#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"
#include "oxdm/cursor/objects/po_collections.h"
#include "po_fixture.h"

using namespace po_test;

namespace {

// The names of the visible objects, walking from Begin.
std::vector<CString> Walk(oxPOMemorySet* set) {
    std::vector<CString> names;
    ATL::CComPtr<IPersistentObject> it;
    set->Begin(&it);
    short moved = VARIANT_TRUE;
    for (ATL::CComPtr<IUnknown> object; moved != VARIANT_FALSE; it->Next(&moved)) {
        object.Release();
        if (it->Current(&object) != S_OK) break;
        ATL::CComVariant value;
        short readOnly = 0;
        PoQuery<IPOProperties>(object)->GetProperty("Name", &readOnly, &value);
        names.push_back(value.Text());
    }
    return names;
}

// The live object of the set with this name.
ATL::CComPtr<oxPOMemoryObject> ObjectNamed(oxPOMemorySet* set, const char* name) {
    for (oxPOMemoryObject* object : set->View())
        if (object->Value("Name") == ATL::CComVariant(name)) return object;
    return {};
}

class CountingSink : public PoComObject<ISortingEvents, IFilteringEvents> {
public:
    HRESULT OnSortChanged(IStringCollection* sort) override {
        told.clear();
        PoReadStrings(sort, told);
        return S_OK;
    }
    HRESULT OnFilterChanged() override { return ++filterEvents, S_OK; }
    std::vector<CString> told;
    int filterEvents = 0;
};

}  // namespace

TEST(MemoryStore, SortsByNamedPropertiesAndTellsTheSinks) {
    auto set = Open(Customers());
    EXPECT_EQ(Walk(set), (std::vector<CString>{"Adams", "Baker", "Clark"}));
    ATL::CComPtr<CountingSink> sink(new CountingSink);
    unsigned long cookie = 0;
    ASSERT_EQ(PoQuery<ISupportSorting>(AsUnknown(set))->Advise(static_cast<ISortingEvents*>(sink.get()), &cookie), S_OK);
    ATL::CComPtr<IStringCollection> byCity(new oxPOStringCollection({"City"}));
    ASSERT_EQ(set->SetSort(byCity), S_OK);
    EXPECT_EQ(Walk(set), (std::vector<CString>{"Baker", "Clark", "Adams"}));
    EXPECT_EQ(sink->told, (std::vector<CString>{"City"}));
    ATL::CComPtr<IStringCollection> unknown(new oxPOStringCollection({"Colour"}));
    EXPECT_EQ(set->SetSort(unknown), E_INVALIDARG);
    EXPECT_EQ(set->Sort(), (std::vector<CString>{"City"}));
}

TEST(MemoryStore, FilterHidesObjectsAndTellsTheSinks) {
    auto set = Open(Customers());
    ATL::CComPtr<CountingSink> sink(new CountingSink);
    unsigned long cookie = 0;
    PoQuery<ISupportFiltering>(AsUnknown(set))->Advise(static_cast<IFilteringEvents*>(sink.get()), &cookie);
    ATL::CComPtr<IPersistentObject> onBaker;
    set->IteratorAt(1, &onBaker);
    set->SetFilter([](const oxPOMemoryObject& o) { return o.Value("Name") != ATL::CComVariant("Baker"); });
    EXPECT_EQ(Walk(set), (std::vector<CString>{"Adams", "Clark"}));
    EXPECT_EQ(sink->filterEvents, 1);
    ATL::CComPtr<IUnknown> hidden;
    EXPECT_EQ(onBaker->Current(&hidden), S_FALSE) << "an iterator on a hidden object stands on none";
    set->ClearFilter();
    EXPECT_EQ(sink->filterEvents, 2);
    EXPECT_EQ(onBaker->Current(&hidden), S_OK);
}

TEST(MemoryStore, FindsByTheSortsValues) {
    auto set = Open(Customers(), {"City", "Name"});
    struct Case {
        int kind;  // 0 Find, 1 FindGE, 2 FindGT
        const char* city;
        const char* expected;  // null: not found
    } cases[] = {{0, "Boston", "Clark"}, {0, "Bost", nullptr}, {1, "Bost", "Clark"},
                 {2, "Boston", "Adams"}, {2, "Denver", nullptr}};
    for (const Case& c : cases) {
        ATL::CComPtr<IPOPairCollection> params(new oxPOPairCollection);
        ATL::CComPtr<IPOPair> pair(new oxPOPair);
        pair->put_Name("City");
        pair->put_Value(ATL::CComVariant(c.city));
        params->Add(pair, nullptr);
        ATL::CComPtr<IPersistentObject> it;
        short found = VARIANT_FALSE;
        HRESULT hr = c.kind == 0 ? set->Find(params, &it, &found)
                     : c.kind == 1 ? set->FindGE(params, &it, &found) : set->FindGT(params, &it, &found);
        ASSERT_EQ(hr, S_OK);
        EXPECT_EQ(found != VARIANT_FALSE, c.expected != nullptr) << c.kind << c.city;
        if (!c.expected) continue;
        ATL::CComPtr<IUnknown> object;
        it->Current(&object);
        EXPECT_EQ(static_cast<oxPOMemoryObject*>(PoQuery<IPOObject>(object).get())->Value("Name"),
                  ATL::CComVariant(c.expected));
    }
}

TEST(MemoryStore, ValidatesEachPropertyByItsRule) {
    auto set = Open(Customers());
    auto adams = ObjectNamed(set, "Adams");
    ATL::CComPtr<IUnknown> errors;
    short ok = VARIANT_TRUE;
    ASSERT_EQ(adams->IsValidValueForProperty("Balance", ATL::CComVariant(-1.0), &errors, &ok), S_OK);
    EXPECT_EQ(ok, VARIANT_FALSE);
    CString reason;
    PoQuery<IPOValidationErrors>(errors)->Message(0, &reason);
    EXPECT_EQ(reason, "The balance can't be negative");
    errors.Release();
    adams->IsValidValueForProperty("Balance", ATL::CComVariant(5.0), &errors, &ok);
    EXPECT_EQ(ok, VARIANT_TRUE);
    EXPECT_FALSE(errors);

    adams->SetProperty("Name", ATL::CComVariant(""));
    adams->Validate(&errors, &ok);
    EXPECT_EQ(ok, VARIANT_FALSE);
    CString property;
    PoQuery<IPOValidationErrors>(errors)->Property(0, &property);
    EXPECT_EQ(property, "Name");
    EXPECT_EQ(adams->Save(), E_FAIL) << "an invalid object is not written";
    adams->ErrorText(&reason);
    EXPECT_EQ(reason, "A name is required");
}

TEST(MemoryStore, ASecondHandleThatWroteFirstMakesTheSaveAConflict) {
    auto db = Customers();
    auto mine = Open(db), theirs = Open(db);
    auto adams = ObjectNamed(mine, "Adams");
    adams->SetProperty("Balance", ATL::CComVariant(99.0));
    auto other = ObjectNamed(theirs, "Adams");
    other->SetProperty("City", ATL::CComVariant("Reno"));
    ASSERT_EQ(other->Save(), S_OK);

    EXPECT_EQ(adams->Save(), PO_E_CONFLICT);
    // Writing over the other version keeps its change where ours made none.
    adams->SetCheck(false);
    adams->Reread();
    ASSERT_EQ(adams->Save(), S_OK);
    adams->SetCheck(true);
    const auto* stored = db->Find(adams->Id());
    EXPECT_EQ(stored->values[1], ATL::CComVariant("Reno"));
    EXPECT_EQ(stored->values[2], ATL::CComVariant(99.0));
    EXPECT_EQ(other->Save(), PO_E_CONFLICT) << "the first writer now holds the stale version";
}

TEST(MemoryStore, AnObjectDeletedByAnotherHandleIsGoneUntilMarkedNew) {
    auto db = Customers();
    auto mine = Open(db), theirs = Open(db);
    auto baker = ObjectNamed(mine, "Baker");
    baker->SetProperty("City", ATL::CComVariant("Omaha"));
    ASSERT_EQ(theirs->Remove(static_cast<IPOObject*>(ObjectNamed(theirs, "Baker").get())), S_OK);
    EXPECT_EQ(Walk(theirs), (std::vector<CString>{"Adams", "Clark"}));

    EXPECT_EQ(baker->Save(), PO_E_GONE);
    EXPECT_EQ(theirs->Remove(static_cast<IPOObject*>(ObjectNamed(mine, "Baker").get())), PO_E_GONE);
    const long formerId = baker->Id();
    baker->MarkNew();
    ASSERT_EQ(baker->Save(), S_OK);
    EXPECT_NE(baker->Id(), formerId);
    EXPECT_EQ(db->Ids().size(), 3u);
    theirs->Reload();
    EXPECT_EQ(Walk(theirs), (std::vector<CString>{"Adams", "Baker", "Clark"}));
}

TEST(MemoryStore, AClonePutBackByAddRestoresTheObject) {
    auto set = Open(Customers());
    auto clark = ObjectNamed(set, "Clark");
    ATL::CComPtr<IUnknown> backup;
    ASSERT_EQ(clark->Clone(&backup), S_OK);
    clark->SetProperty("Name", ATL::CComVariant("Zed"));
    EXPECT_EQ(Walk(set).back(), "Zed") << "edits of the live object show in the set";
    ATL::CComPtr<IUnknown> restored;
    ASSERT_EQ(set->Restore(backup, &restored), S_OK);
    ASSERT_EQ(set->Add(restored, nullptr), S_OK);
    EXPECT_EQ(Walk(set), (std::vector<CString>{"Adams", "Baker", "Clark"}));
    EXPECT_EQ(set->View().size(), 3u);
}

TEST(TypeConverters, RoundTripEachTypeAndRefuseOthers) {
    struct Case {
        int type;
        std::unique_ptr<oxData> value;
        ATL::CComVariant variant;
    };
    Case cases[] = {
        {POTypeText, std::make_unique<oxAlpha>("Reno"), ATL::CComVariant("Reno")},
        {POTypeDouble, std::make_unique<oxDouble>(2.5, 2), ATL::CComVariant(2.5)},
        {POTypeLong, std::make_unique<oxDouble>(7.0, 0), ATL::CComVariant(std::int32_t{7})},
        {POTypeBool, std::make_unique<oxBool>(true), ATL::CComVariant(true)},
        {POTypeDate, std::make_unique<oxDate>(3, 1, 2024), ATL::CComVariant(PoDateSerial(2024, 3, 1), VT_DATE)},
        {POTypeTime, std::make_unique<oxTime>(18, 0, 0), ATL::CComVariant(0.75, VT_DATE)},
        {POTypeSSNum, std::make_unique<oxSSNum>(123456789UL), ATL::CComVariant(std::int32_t{123456789})},
        {POTypeChoice, std::make_unique<oxChoice>(2), ATL::CComVariant(std::int32_t{2})},
        {POTypeDate, std::make_unique<oxDate>(), ATL::CComVariant()},
    };
    for (Case& c : cases) {
        ATL::CComVariant out;
        ASSERT_TRUE(oxPOTypeConverters::OXDataToVariant(c.type, c.value.get(), out)) << c.type;
        EXPECT_TRUE(out == c.variant) << c.type;
        std::unique_ptr<oxData> back(c.value->Clone());
        back->SetVal(CString(), nullptr);
        ASSERT_TRUE(oxPOTypeConverters::VariantToOXData(c.type, c.variant, back.get())) << c.type;
        EXPECT_TRUE(back->Eq(*c.value)) << c.type << ": " << back->Format().c_str();
    }
    EXPECT_EQ(PoDateSerial(1899, 12, 30), 0.0);
    oxDate date(5, 5, 2020);
    EXPECT_FALSE(oxPOTypeConverters::VariantToOXData(POTypeDate, ATL::CComVariant("May"), &date));
    EXPECT_EQ(date.Format(), "05/05/2020") << "a refused value leaves the column value alone";
    ATL::CComVariant out;
    EXPECT_FALSE(oxPOTypeConverters::OXDataToVariant(POTypeBool, &date, out));
    EXPECT_EQ(oxPOTypeConverters::ChooseOXType(999), -1);
}

// A screen over the memory store finding by the sort's properties, and
// following the set when its sort or its filter changes; and what the child
// role adds to a buffer.

#include "oxdm/record/column_def.h"
#include "po_screen_fixture.h"

using namespace po_test;

namespace {

// A find in a given sort: the find values typed, the direction, and the row
// the focus must stand on.
struct FindCase {
    const char* name;
    std::vector<CString> sort;
    std::vector<std::pair<const char*, const char*>> values;
    bool greater;  // FindGT, else FindGE
    bool found;
    const char* focus;
};

class POScreenFind : public POScreen, public ::testing::WithParamInterface<FindCase> {};

TEST_P(POScreenFind, FindsByTheSortsProperties) {
    const FindCase& c = GetParam();
    set->SortBy(c.sort);
    for (const auto& [column, text] : c.values) ASSERT_TRUE(buffer.SetFindValue(Col(column), text)) << column;
    EXPECT_EQ(c.greater ? buffer.FindGT() : buffer.FindGE(), c.found);
    EXPECT_EQ(Shown("Name"), c.focus);
    EXPECT_TRUE(Live("Name") == ATL::CComVariant(c.focus)) << "the focus object follows the find";
}

// Cities: Adams in Denver, Baker in Austin, Clark in Boston.
INSTANTIATE_TEST_SUITE_P(
    Screen, POScreenFind,
    ::testing::Values(FindCase{"NamePrefix", {"Name"}, {{"Name", "B"}}, false, true, "Baker"},
                      FindCase{"NameAfter", {"Name"}, {{"Name", "Baker"}}, true, true, "Clark"},
                      FindCase{"NameExact", {"Name"}, {{"Name", "Clark"}}, false, true, "Clark"},
                      FindCase{"NamePastTheEnd", {"Name"}, {{"Name", "Zed"}}, false, false, "Clark"},
                      FindCase{"CityAfterASortChange", {"City"}, {{"City", "Boston"}}, true, true, "Adams"},
                      FindCase{"TwoProperties", {"Kind", "Name"}, {{"Kind", "Retail"}, {"Name", "Bz"}}, false,
                               true, "Clark"}),
    [](const ::testing::TestParamInfo<FindCase>& info) { return std::string(info.param.name); });

// The window follows the set's sort and filter. The requery forgets the
// focus row's edits, in the row and in its object: the order is the stored
// values'.
TEST_F(POScreen, FollowsTheSetsSortAndFilterDroppingTheFocusRowsEdits) {
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Dallas", 0, true));
    set->SortBy({"City"});
    EXPECT_EQ(Window(), (std::vector<CString>{"Baker", "Clark", "Adams"}));
    ASSERT_EQ(cursor.SortColumns().size(), 1u);
    EXPECT_EQ(cursor.SortColumns()[0]->Name(), "City");
    EXPECT_FALSE(buffer.IsRowChanged());
    EXPECT_EQ(Shown("City"), "Austin");

    // Balances: Clark 10, Adams 20, Baker 30.
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Yuma", 0, true));
    set->SetFilter([](const oxPOMemoryObject& o) { return o.Value("Balance") != ATL::CComVariant(10.0); });
    EXPECT_EQ(Window(), (std::vector<CString>{"Baker", "Adams"}));
    EXPECT_FALSE(buffer.IsRowChanged());
    EXPECT_TRUE(Stored("Baker", 1) == ATL::CComVariant("Austin"));
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    EXPECT_TRUE(Live("Name") == ATL::CComVariant("Adams"));
    ASSERT_EQ(buffer.MoveUp(1, 0, true), 1);
    EXPECT_TRUE(Live("City") == ATL::CComVariant("Austin"));

    set->ClearFilter();
    EXPECT_EQ(Window(), (std::vector<CString>{"Baker", "Clark", "Adams"}));
}

TEST_F(POScreen, AFilterThatHidesEverythingLeavesANewRow) {
    buffer.SetAutoNewRow(true);
    set->SetFilter([](const oxPOMemoryObject&) { return false; });
    EXPECT_EQ(Window(), std::vector<CString>{""});
    EXPECT_TRUE(buffer.IsNewRow());
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("Name"), "Dixon", 0, true));
    EXPECT_TRUE(buffer.ValidateRow(0, true));
    EXPECT_TRUE(Stored("Dixon", 2) == ATL::CComVariant(0.0)) << "stored with the default balance";
}

// The role keeps the row marked changed while its object holds edits, so an
// application that clears the flag can't strand them in the live object.
TEST_F(POScreen, TheRoleKeepsAnEditedRowChanged) {
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Dallas", 0, true));
    buffer.SetRowChanged(false);
    EXPECT_TRUE(buffer.IsRowChanged());
    ASSERT_TRUE(buffer.RevertRow(0, true));
    EXPECT_EQ(Shown("City"), "Austin");
    EXPECT_TRUE(Live("City") == ATL::CComVariant("Austin"));
}

}  // namespace

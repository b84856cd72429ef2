// A buffer over a persistent object cursor on the memory store, used as a
// screen uses it: browsing in sort order, an edit saved into the store, an
// edit the store refuses, and a revert to the object's backup.

#include "po_screen_fixture.h"

using namespace po_test;

namespace {

TEST_F(POScreen, BrowsesEditsSavesRefusesAndReverts) {
    // Browsing: the rows come in the set's order, the focus on the first.
    EXPECT_EQ(Window(), (std::vector<CString>{"Adams", "Baker", "Clark"}));
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    EXPECT_EQ(Shown("City"), "Austin");

    // An accepted edit goes into the object at once and into the store on save.
    EXPECT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Dallas", 0, true));
    EXPECT_TRUE(Live("City") == ATL::CComVariant("Dallas"));
    EXPECT_TRUE(Stored("Baker", 1) == ATL::CComVariant("Austin"));
    EXPECT_TRUE(buffer.ValidateRow(0, true));
    EXPECT_TRUE(Stored("Baker", 1) == ATL::CComVariant("Dallas"));
    EXPECT_FALSE(buffer.IsRowChanged());

    // A value the property's rule refuses never leaves the cell.
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    EXPECT_FALSE(buffer.ObserverSetNewValue(Col("Balance"), "-5", 0, true));
    EXPECT_TRUE(Live("Balance") == Stored("Clark", 2));
    EXPECT_EQ(buffer.NewValueAsString(Col("Balance")), buffer.SavedValueAsString(Col("Balance")));

    // An object made invalid behind the cell: the save refuses it and the
    // store keeps what it had.
    EXPECT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Reno", 0, true));
    PoQuery<IPOProperties>(cursor.FocusRowObject())->SetProperty("Name", ATL::CComVariant(""));
    EXPECT_EQ(Shown("Name"), "") << "the object's change reaches its cell";
    EXPECT_FALSE(buffer.ValidateRow(0, true));
    EXPECT_TRUE(Stored("Clark", 1) == ATL::CComVariant("Boston"));
    EXPECT_TRUE(buffer.IsRowChanged());

    // Reverting puts back the object as it was before the first edit.
    EXPECT_TRUE(buffer.RevertRow(0, true));
    EXPECT_TRUE(Live("Name") == ATL::CComVariant("Clark"));
    EXPECT_TRUE(Live("City") == ATL::CComVariant("Boston"));
    EXPECT_EQ(Shown("Name"), "Clark");
    EXPECT_EQ(Shown("City"), "Boston");
    EXPECT_FALSE(buffer.IsRowChanged());
    EXPECT_EQ(set->View().size(), 3u);
}

}  // namespace

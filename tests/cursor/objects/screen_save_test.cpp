// A screen's saves and deletes over the memory store while another program
// works on the same objects: a conflict answered each way, an object the
// other program deleted before the save or before the delete, and reverts
// after a save.

#include <algorithm>

#include "oxdm/common/shell/box_styles.h"
#include "po_screen_fixture.h"

using namespace po_test;

namespace {

constexpr long kCity = 1;
constexpr long kBalance = 2;

const char kConflictWords[] = "Data Conflict Error\r\rWhile you were entering data";
const char kDeletedWords[] = "This data has been deleted by someone else.\r";

// One answer to the question a save asks, and what the screen and the store
// must show after it.
struct SaveCase {
    const char* name;
    bool theyDelete;  // else they change City to "Houston"
    int answer;
    bool saved;           // the save succeeded
    const char* city;     // what the store holds for Baker; null when gone
    bool rowStays;        // Baker stays in the window
};

class POScreenSave : public POScreen, public ::testing::WithParamInterface<SaveCase> {};

TEST_P(POScreenSave, AnswersTheQuestionOfAChangedOrDeletedObject) {
    const SaveCase& c = GetParam();
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    ASSERT_EQ(Shown("Name"), "Baker");
    if (c.theyDelete) {
        ASSERT_EQ(Theirs("Baker")->Delete(), S_OK);
    } else {
        TheyWrite("Baker", "City", ATL::CComVariant("Houston"));
    }
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Dallas", 0, true));
    oxdmDefaultPresenter().QueueAnswer(c.answer);

    EXPECT_EQ(buffer.ValidateRow(0, true), c.saved);

    ASSERT_EQ(Boxes().size(), 1u) << "one question and no error box";
    const oxdmShownBox& box = Boxes()[0];
    if (c.theyDelete) {
        EXPECT_EQ(box.text.Left(sizeof kDeletedWords - 1), kDeletedWords);
        EXPECT_EQ(box.title, "Data Conflict!");
        EXPECT_EQ(box.style, 49u);
    } else {
        EXPECT_EQ(box.text.Left(sizeof kConflictWords - 1), kConflictWords);
        EXPECT_EQ(box.style, 20u);
    }
    if (c.city == nullptr) {
        EXPECT_TRUE(Stored("Baker", kCity).IsEmpty());
    } else {
        EXPECT_TRUE(Stored("Baker", kCity) == ATL::CComVariant(c.city));
        EXPECT_TRUE(Stored("Baker", kBalance) == ATL::CComVariant(30.0)) << "a property nobody changed";
    }
    const std::vector<CString> window = Window();
    EXPECT_EQ(std::count(window.begin(), window.end(), CString("Baker")), c.rowStays ? 1 : 0);
    EXPECT_FALSE(buffer.IsRowChanged());
    if (c.rowStays) {
        // The row shows what the store holds, also after the focus left it
        // and came back, and nothing is left to save.
        EXPECT_EQ(Shown("Name"), "Baker");
        EXPECT_EQ(Shown("City"), c.city);
        ASSERT_EQ(buffer.MoveUp(1, 0, true), 1);
        ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
        EXPECT_EQ(Shown("Name"), "Baker");
        EXPECT_EQ(Shown("City"), c.city);
        EXPECT_TRUE(Live("City") == ATL::CComVariant(c.city));
        oxdmDefaultPresenter().Clear();
        EXPECT_TRUE(buffer.ValidateRow(0, true, true));
        EXPECT_TRUE(Boxes().empty());
        EXPECT_TRUE(Stored("Baker", kCity) == ATL::CComVariant(c.city));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Screen, POScreenSave,
    ::testing::Values(SaveCase{"KeepTheirs", false, oxdmBox::IdYes, false, "Houston", true},
                      SaveCase{"WriteOurs", false, oxdmBox::IdNo, true, "Dallas", true},
                      SaveCase{"InsertAgain", true, oxdmBox::IdOK, true, "Dallas", true},
                      SaveCase{"LoseChanges", true, oxdmBox::IdCancel, false, nullptr, false}),
    [](const ::testing::TestParamInfo<SaveCase>& info) { return std::string(info.param.name); });

TEST_F(POScreen, DeletesAnObjectEvenOneAnotherProgramDeletedFirst) {
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    ASSERT_TRUE(buffer.DeleteRow(0, true));
    EXPECT_EQ(Boxes().back().text, "Delete this row?");
    EXPECT_EQ(Window(), (std::vector<CString>{"Adams", "Clark"}));
    EXPECT_EQ(Shown("Name"), "Clark");
    EXPECT_FALSE(buffer.IsRowChanged()) << "the row the focus moved to is unedited";
    EXPECT_TRUE(Stored("Baker", kCity).IsEmpty());
    EXPECT_EQ(db->Ids().size(), 2u);

    // Clark is gone already when the screen deletes it: the delete is done.
    ASSERT_EQ(Theirs("Clark")->Delete(), S_OK);
    oxdmDefaultPresenter().Clear();
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    EXPECT_TRUE(buffer.DeleteRow(0, true));
    ASSERT_EQ(Boxes().size(), 1u) << "no error after the question";
    EXPECT_EQ(Window(), (std::vector<CString>{"Adams"}));
    EXPECT_EQ(Shown("Name"), "Adams");
    EXPECT_EQ(db->Ids().size(), 1u);
}

TEST_F(POScreen, RevertAfterASaveGoesBackToWhatWasSaved) {
    ASSERT_EQ(buffer.MoveDown(1, 0, true, true), 1);
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Dallas", 0, true));
    ASSERT_TRUE(buffer.ValidateRow(0, true));
    for (const char* edit : {"Reno", "Tulsa"}) {
        ASSERT_TRUE(buffer.ObserverSetNewValue(Col("City"), edit, 0, true));
        ASSERT_TRUE(buffer.RevertRow(0, true));
        EXPECT_EQ(Shown("City"), "Dallas") << "after reverting " << edit;
        EXPECT_TRUE(Live("City") == ATL::CComVariant("Dallas")) << "after reverting " << edit;
    }
    // The object is the saved one: the next save meets no conflict.
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("Balance"), "45", 0, true));
    EXPECT_TRUE(buffer.ValidateRow(0, true));
    EXPECT_TRUE(Boxes().empty());
    EXPECT_TRUE(Stored("Baker", kCity) == ATL::CComVariant("Dallas"));
    EXPECT_TRUE(Stored("Baker", kBalance) == ATL::CComVariant(45.0));
}

}  // namespace

namespace {

// The new row's object: reverted unsaved, saved, reverted after its save to
// what was saved, then deleted.
TEST_F(POScreen, ANewRowsObjectFromRevertToDelete) {
    buffer.SetAutoNewRow(true);
    buffer.SetFocus(3, 0, true);
    ASSERT_TRUE(buffer.IsNewRow());
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("Name"), "Dixon", 0, true));
    ASSERT_TRUE(buffer.RevertRow(0, true));
    EXPECT_EQ(Shown("Name"), "");
    EXPECT_TRUE(Live("Name").IsEmpty());
    EXPECT_EQ(db->Ids().size(), 3u);

    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("Name"), "Dixon", 0, true));
    ASSERT_TRUE(buffer.ValidateRow(0, true));
    ASSERT_EQ(db->Ids().size(), 4u);
    buffer.SetFocus(3, 0, true);
    ASSERT_EQ(Shown("Name"), "Dixon");
    ASSERT_TRUE(buffer.ObserverSetNewValue(Col("City"), "Fargo", 0, true));
    ASSERT_TRUE(buffer.RevertRow(0, true));
    EXPECT_EQ(Shown("Name"), "Dixon");
    EXPECT_EQ(Shown("City"), "");
    EXPECT_TRUE(Live("City").IsEmpty());

    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    ASSERT_TRUE(buffer.DeleteRow(0, true));
    EXPECT_EQ(Window(), (std::vector<CString>{"Adams", "Baker", "Clark", ""}));
    EXPECT_EQ(db->Ids().size(), 3u);
    EXPECT_TRUE(Stored("Dixon", kCity).IsEmpty());
}

}  // namespace

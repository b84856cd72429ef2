// The string memory table: construction, the new row and prefill, editing,
// saving, reverting and deleting, with the order of callbacks and changes.

#include <gtest/gtest.h>

#include "ds_recorder.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/datasource/data_source_impl_base.h"
#include "oxdm/datasource/string_mem_data_source.h"
#include "oxdm/notify/callback_mgr.h"

namespace {

using Table = std::vector<std::vector<CString>>;

Table People() { return {{"Ann", "30"}, {"Bob", "25"}, {"Cy", "41"}}; }

class MemoryTable : public ::testing::Test {
protected:
    void SetUp() override { oxdmDefaultPresenter().Clear(); }
    void TearDown() override { oxdmDefaultPresenter().Clear(); }
};

TEST_F(MemoryTable, DefaultLabelsPutTheLeastSignificantLetterFirst) {
    std::vector<CString> row(28, "x");
    oxdmStringMemDataSource source({row}, {}, {}, "row", false);
    ASSERT_EQ(source.NumColumns(), 28);
    EXPECT_EQ(source.ColLabel(0), "A");
    EXPECT_EQ(source.ColLabel(25), "Z");
    EXPECT_EQ(source.ColLabel(26), "AB");
    EXPECT_EQ(source.ColLabel(27), "BB");
    EXPECT_EQ(source.IndexForColumn("ab"), 26);
}

TEST_F(MemoryTable, ConstructionFocusesTheFirstRowAndAppendsTheNewRow) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {"?", "0"}, "person", true);
    EXPECT_EQ(source.TotalRows(), 4);
    EXPECT_EQ(source.FocusRowAbsolute(), 0);
    EXPECT_EQ(source.NewValueAsString(0), "Ann");
    // A saved text always counts as set: the new row's stored cells are empty.
    EXPECT_EQ(source.GetCellValueAbsolute(3, 0), "");
    // Below other rows the new row is prefilled: a column without the prefill
    // flag is left empty in the edit buffer.
    source.SetFocusAbsolute(3, 0, true);
    EXPECT_TRUE(source.IsNewRow());
    EXPECT_EQ(source.NewValueAsString(0), "");

    // Alone in the table the new row takes the defaults into its buffer.
    oxdmStringMemDataSource fresh({}, {"Name", "Age"}, {"?", "0"}, "person", true);
    EXPECT_FALSE(fresh.HasFocusRow());
    fresh.ReQuery();
    EXPECT_TRUE(fresh.IsNewRow());
    EXPECT_EQ(fresh.NewValueAsString(0), "?");
    EXPECT_EQ(fresh.NewValueAsString(1), "0");

    oxdmStringMemDataSource empty({}, {"Name"}, {""}, "person", false);
    EXPECT_FALSE(empty.HasFocusRow());
    EXPECT_EQ(empty.FocusRow(), -1);
}

TEST_F(MemoryTable, SetNewValueNeverDirtiesButObserverSetNewValueDoes) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSRecorder rec(source);
    EXPECT_TRUE(source.SetNewValue(0, "Ann"));  // same text: nothing sent
    EXPECT_TRUE(rec.log.empty());
    EXPECT_TRUE(source.SetNewValue(0, "Anna"));
    EXPECT_FALSE(source.IsRowChanged());
    EXPECT_EQ(source.OldValueAsString(0), "Anna");
    EXPECT_EQ(rec.log, std::vector<std::string>{"change 1 col=0"});

    rec.Clear();
    EXPECT_TRUE(source.ObserverSetNewValue(1, "31", 0, true));
    EXPECT_TRUE(source.IsRowChanged());
    EXPECT_EQ(source.OldValueAsString(1), "30");
    EXPECT_EQ(rec.log, (std::vector<std::string>{"change 6 dirty=1 cause=4", "change 1 col=1"}));
    EXPECT_FALSE(source.SetNewValue(2, "x"));
    EXPECT_FALSE(source.SetNewValue(-1, "x"));
}

TEST_F(MemoryTable, ColBeforeChangeVetoRestoresTheValueAfterTheRowWentDirty) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSRecorder rec(source);
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetColCallback("Age", oxdmColCallbacks::cbColBeforeChange, rec.Callback("ColBeforeChange", 1));
    mgr.SetColCallback("Age", oxdmColCallbacks::cbColAfterChange, rec.Callback("ColAfterChange"));
    source.SetCallbacks(mgr, nullptr);
    EXPECT_FALSE(source.ObserverSetNewValue(1, "99", 0, true));
    EXPECT_EQ(source.NewValueAsString(1), "30");
    EXPECT_TRUE(source.IsRowChanged());
    EXPECT_EQ(rec.log, (std::vector<std::string>{"change 6 dirty=1 cause=4", "callback ColBeforeChange"}));
    source.SetReadOnly(0, true, 0, true);
    EXPECT_FALSE(source.ObserverSetNewValue(0, "Zed", 0, true));
}

TEST_F(MemoryTable, ValidateRowAsksTheCallbacksThenStoresThenTellsThemThenTheObservers) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSRecorder rec(source);
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbRowValidate, rec.Callback("RowValidate"));
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbRowAfterWrite, rec.Callback("RowAfterWrite"));
    mgr.SetColCallback("Age", oxdmColCallbacks::cbColValidate, rec.Callback("ColValidate"));
    source.SetCallbacks(mgr, nullptr);
    ASSERT_TRUE(source.ObserverSetNewValue(1, "31", 0, true));
    rec.Clear();
    ASSERT_TRUE(source.ValidateRow(0, true));
    EXPECT_EQ(rec.log, (std::vector<std::string>{"callback RowValidate", "callback ColValidate",
                                                 "callback RowAfterWrite", "change 6 dirty=0 cause=3"}));
    EXPECT_EQ(source.GetCellValueAbsolute(0, 1), "31");
    EXPECT_FALSE(source.IsRowChanged());
    rec.Clear();
    EXPECT_TRUE(source.ValidateRow(0, true));  // unchanged: nothing to do
    EXPECT_EQ(rec.log, std::vector<std::string>{});
}

TEST_F(MemoryTable, RowValidateVetoesOrRevertsInstead) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    oxdmCallbackMgr mgr(nullptr);
    int answer = 5;
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbRowValidate,
                       CBFunctor1wRet<oxdmCallbackInfo*, int>([&answer](oxdmCallbackInfo*) { return answer; }));
    source.SetCallbacks(mgr, nullptr);
    source.ObserverSetNewValue(0, "Anne", 0, true);
    EXPECT_FALSE(source.ValidateRow(0, true));
    EXPECT_TRUE(source.IsRowChanged());
    EXPECT_EQ(source.GetCellValueAbsolute(0, 0), "Ann");

    answer = oxdmDataSource::RevertInstead;
    EXPECT_TRUE(source.ValidateRow(0, true));
    EXPECT_FALSE(source.IsRowChanged());
    EXPECT_EQ(source.NewValueAsString(0), "Ann");
    EXPECT_EQ(source.GetCellValueAbsolute(0, 0), "Ann");
}

TEST_F(MemoryTable, SavingTheNewRowKeepsPrefillsAndMakesAFreshNewRow) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {"", "18"}, "person", true);
    DSChecker checker(source);
    source.SetPrefillOn(1, true, 0, true);
    source.MoveToBottom(0, true, false);
    ASSERT_TRUE(source.IsNewRow());
    source.ObserverSetNewValue(0, "Dee", 0, true);
    source.ObserverSetNewValue(1, "50", 0, true);
    ASSERT_TRUE(source.ValidateRow(0, true));
    EXPECT_EQ(source.TotalRows(), 5);
    EXPECT_EQ(source.FocusRowAbsolute(), 3);
    EXPECT_FALSE(source.IsNewRow());
    EXPECT_EQ(source.SavedValueAsString(1), "50");
    // The new row below takes the saved prefill; moving onto it copies the
    // cell above into the row itself.
    EXPECT_EQ(source.GetCellValueAbsolute(4, 1), "50");
    source.SetCellValueAbsolute(3, 1, "77");
    DSRecorder rec(source);
    source.MoveDown(1, 0, true, false);
    EXPECT_TRUE(source.IsNewRow());
    EXPECT_EQ(source.NewValueAsString(1), "77");
    EXPECT_EQ(source.GetCellValueAbsolute(4, 1), "77");
    EXPECT_EQ(source.NewValueAsString(0), "");  // a column without prefill is skipped
    EXPECT_EQ(rec.log.front(), "change 1 col=1");
    EXPECT_EQ(checker.Failure(), "");
}

TEST_F(MemoryTable, RevertRowIgnoresRowBeforeRevertAndReloadsTheRow) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSRecorder rec(source);
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbRowBeforeRevert, rec.Callback("RowBeforeRevert", 1));
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbRowAfterRevert, rec.Callback("RowAfterRevert"));
    source.SetCallbacks(mgr, nullptr);
    source.SetWindowSize(3);
    source.MoveDown(1, 0, true, false);
    source.ObserverSetNewValue(0, "Robert", 0, true);
    rec.Clear();
    EXPECT_TRUE(source.RevertRow(7, true));
    EXPECT_EQ(source.NewValueAsString(0), "Bob");
    EXPECT_FALSE(source.IsRowChanged());
    EXPECT_EQ(rec.log, (std::vector<std::string>{"callback RowBeforeRevert", "change 5 row=1",
                                                 "change 6 dirty=0 cause=1", "callback RowAfterRevert"}));
}

TEST_F(MemoryTable, DeleteAsksTheExactQuestionAndKeepsTheRowOnNo) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSRecorder rec(source);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdNo);
    EXPECT_FALSE(source.DeleteRow(0, true));
    ASSERT_EQ(oxdmDefaultPresenter().Boxes().size(), 1u);
    const oxdmShownBox& box = oxdmDefaultPresenter().Boxes()[0];
    EXPECT_EQ(box.text, "Delete this person?");
    EXPECT_EQ(box.title, "Warning");
    EXPECT_EQ(box.style, 0x24u);
    EXPECT_EQ(source.TotalRows(), 3);
    EXPECT_TRUE(rec.log.empty());

    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    EXPECT_TRUE(source.DeleteRow(0, true));
    EXPECT_EQ(source.TotalRows(), 2);
    EXPECT_EQ(source.NewValueAsString(0), "Bob");
    EXPECT_EQ(rec.log, (std::vector<std::string>{"change 7", "change 0"}));
}

TEST_F(MemoryTable, RowBeforeDeleteAnswersDecideWithoutAQuestion) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    oxdmCallbackMgr mgr(nullptr);
    int answer = oxdmDataSource::DeleteNoPrompt;
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbRowBeforeDelete,
                       CBFunctor1wRet<oxdmCallbackInfo*, int>([&answer](oxdmCallbackInfo*) { return answer; }));
    source.SetCallbacks(mgr, nullptr);
    EXPECT_TRUE(source.DeleteRow(0, true));
    EXPECT_EQ(source.TotalRows(), 2);
    answer = 3;
    EXPECT_FALSE(source.DeleteRow(0, true));
    EXPECT_EQ(source.TotalRows(), 2);
    EXPECT_TRUE(oxdmDefaultPresenter().Boxes().empty());

    answer = 0;
    auto* impl = source.GetImpl();
    EXPECT_FALSE(impl->SilentDelete(true));
    EXPECT_TRUE(source.DeleteRow(0, true));
    EXPECT_TRUE(impl->SilentDelete(false));
    EXPECT_TRUE(oxdmDefaultPresenter().Boxes().empty());
}

TEST_F(MemoryTable, DeletingTheLastRowMovesTheFocusUpAndTheWindowBack) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSChecker checker(source);
    source.SetWindowSize(2);
    source.MoveToBottom(0, true, false);
    source.SetWindowScroll(oxdmDataSource::ScrollBottom, 0);
    ASSERT_EQ(source.ScrolledRows(), 1);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    ASSERT_TRUE(source.DeleteRow(0, true));
    EXPECT_EQ(source.ScrolledRows(), 0);
    EXPECT_EQ(source.FocusRowAbsolute(), 1);
    EXPECT_EQ(source.NewValueAsString(0), "Bob");
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    EXPECT_TRUE(source.DeleteRow(0, true));
    EXPECT_TRUE(source.DeleteRow(0, true));
    EXPECT_FALSE(source.HasFocusRow());
    EXPECT_FALSE(source.DeleteRow(0, true));  // nothing left
    EXPECT_EQ(checker.Failure(), "");
    EXPECT_GT(checker.Checks(), 0);
}

TEST_F(MemoryTable, DeletingTheNewRowRevertsItAndStillSaysDeleted) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {"", ""}, "person", true);
    source.MoveToBottom(0, true, false);
    source.ObserverSetNewValue(0, "Eve", 0, true);
    DSRecorder rec(source);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    EXPECT_TRUE(source.DeleteRow(0, true));
    EXPECT_EQ(source.TotalRows(), 4);
    EXPECT_TRUE(source.IsNewRow());
    EXPECT_EQ(source.NewValueAsString(0), "");
    EXPECT_EQ(rec.log, (std::vector<std::string>{"change 7", "change 0"}));
}

TEST_F(MemoryTable, AppendReplaceAndDeleteAll) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {"", ""}, "person", true);
    DSChecker checker(source);
    source.SetPrefillOn(0, true, 0, true);
    std::vector<CString> row{"Dee", "19"};
    EXPECT_TRUE(source.AppendNewRow(row));
    EXPECT_EQ(source.TotalRows(), 5);
    EXPECT_EQ(source.FocusRowAbsolute(), 3);
    EXPECT_EQ(source.GetCellValueAbsolute(3, 0), "Dee");
    EXPECT_TRUE(source.IsNewRow(4));

    EXPECT_TRUE(source.ReplaceAllRows({{"X", "1"}, {"Y", "2"}}));
    EXPECT_EQ(source.TotalRows(), 3);
    EXPECT_EQ(source.FocusRowAbsolute(), 0);
    EXPECT_EQ(source.GetCellValueAbsolute(2, 0), "Y");  // prefill from the last row

    DSRecorder rec(source);
    EXPECT_TRUE(source.DeleteAllRows(rec.id, false));
    EXPECT_EQ(source.TotalRows(), 1);
    EXPECT_FALSE(source.HasFocusRow());
    EXPECT_TRUE(rec.log.empty());  // the initiator asked not to be told
    EXPECT_EQ(checker.Failure(), "");
}

TEST_F(MemoryTable, SetAutoNewRowTwiceAppendsTwoRows) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    source.SetAutoNewRow(true);
    source.SetAutoNewRow(true);
    EXPECT_EQ(source.TotalRows(), 5);
}

TEST_F(MemoryTable, SuppressionDropsChangesAndEndsWithOneSweep) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSRecorder rec(source);
    source.SupressNotification(true);
    source.SetNewValue(0, "Zed");
    source.SetFocusAbsolute(2, 0, true);
    EXPECT_TRUE(rec.log.empty());
    source.SupressNotification(false);
    EXPECT_EQ(rec.log, (std::vector<std::string>{"change 3 col=0", "change 3 col=1", "change 0"}));
    rec.Clear();
    source.SupressNotification(false);  // already on: nothing
    EXPECT_TRUE(rec.log.empty());
}

TEST_F(MemoryTable, SetCallbacksBindsInItsOrderAndCopiesTheChains) {
    oxdmStringMemDataSource source(People(), {"Name", "Age"}, {}, "person", false);
    DSRecorder rec(source);
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbFocusRowMoved, rec.Callback("FocusRowMoved"));
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbRowDirtyChanged, rec.Callback("RowDirtyChanged"));
    source.SetCallbacks(mgr, nullptr);
    mgr.SetRowCallback("person", oxdmRowCallbacks::cbBeforeReQuery, rec.Callback("BeforeReQuery", 1));
    source.MoveDown(1, 0, true, false);
    source.ObserverSetRowChanged(0, true);
    source.ReQuery();  // registered after binding: not seen, the focus goes to the top
    EXPECT_EQ(source.FocusRowAbsolute(), 0);
    EXPECT_EQ(rec.log, (std::vector<std::string>{"change 4", "callback FocusRowMoved", "callback RowDirtyChanged",
                                                 "change 6 dirty=1 cause=4", "change 0"}));
}

}  // namespace

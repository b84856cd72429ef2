// The focus row: its moves, the three sets of values, writes with their
// events, and the stack of focus row states.

#include "buffer_fixture.h"
#include "oxdm/datasource/cell_on_focus_row.h"

TEST_F(BufferTest, MoveDownPastTheEnd) {
    Seed(5);
    struct Case {
        bool noNewRow;
        short answer;
        const char* lands;  // "*" for the new row
    };
    for (const Case& c : {Case{false, 3, "*"}, Case{true, 2, "C0005"}}) {
        oxdmBufferedFileDataSource& buffer = Open(10);
        buffer.SetFocus(2, 0, true);
        DSRecorder recorder(buffer);
        SCOPED_TRACE(c.lands);
        EXPECT_EQ(buffer.MoveDown(5, 0, true, c.noNewRow), c.answer);
        EXPECT_EQ(buffer.IsNewRow() ? "*" : Focus(), std::string(c.lands));
        EXPECT_EQ(recorder.Count(oxdmDataSource::DSFocusChanged), 1);
        EXPECT_EQ(buffer.CanMoveDown(false), c.noNewRow);  // only a record can step onto the new row
        EXPECT_FALSE(buffer.CanMoveDown(true));
    }
    // From the new row one step up is the last record.
    EXPECT_EQ(buffer_->MoveDown(1, 0, true, false), 1);
    EXPECT_TRUE(buffer_->IsNewRow());
    EXPECT_EQ(buffer_->FocusRow(), 5);
    EXPECT_FALSE(buffer_->CanMoveDown(false));
    EXPECT_TRUE(buffer_->CanMoveUp());
    EXPECT_EQ(buffer_->MoveUp(1, 0, true), 1);
    EXPECT_EQ(Focus(), "C0005");
    EXPECT_TRUE(buffer_->CanMoveToTop(false));
    EXPECT_TRUE(buffer_->MoveToTop(0, true, false));
    EXPECT_EQ(Focus(), "C0001");
    EXPECT_FALSE(buffer_->CanMoveUp());
    EXPECT_FALSE(buffer_->CanMoveToTop(false));
}

TEST_F(BufferTest, NewRowTakesPrefillsFromTheLastRow) {
    Seed(3, {"Oslo", "Rome", "Lima"});
    oxdmBufferedFileDataSource& buffer = Open(10);
    const short city = buffer.IndexForColumn("CITY");
    buffer.ColumnForIndex(city)->SetPrefillFromLast(true);
    buffer.SetPrefillOn(city, true, 0, true);
    buffer.SetNeedNewRowPrefills(true);
    ASSERT_TRUE(buffer.MoveToBottom(0, true, false));
    EXPECT_TRUE(buffer.IsNewRow());
    EXPECT_EQ(Focus("CITY"), "Lima");
    EXPECT_EQ(Focus("CUSTNO"), "");
    EXPECT_EQ(buffer.SavedValueAsString(city).str(), "Lima");
}

// A control's write: the row is marked changed first; a veto of
// ColBeforeChange puts the former value back and leaves the row changed.
TEST_F(BufferTest, ColumnChangeAndItsVeto) {
    Seed(3);
    oxdmBufferedFileDataSource& buffer = Open(5);
    const short name = buffer.IndexForColumn("NAME");
    for (const int veto : {1, 0}) {
        buffer.ReQuery();
        std::vector<std::string> events;
        oxdmCallbackMgr mgr(nullptr);
        mgr.SetColCallback("NAME", oxdmColCallbacks::cbColBeforeChange, oxdmCallbackMgr::Functor([&](oxdmCallbackInfo* info) {
                               events.push_back("before " + info->CurrentColumn()->NewValueAsString().str());
                               return veto;
                           }));
        mgr.SetColCallback("NAME", oxdmColCallbacks::cbColAfterChange, oxdmCallbackMgr::Functor([&](oxdmCallbackInfo*) {
                               events.push_back("after");
                               return 0;
                           }));
        buffer.RemoveCallbacks(this);
        buffer.SetCallbacks(this, mgr, nullptr);
        DSRecorder recorder(buffer);
        SCOPED_TRACE(veto ? "vetoed" : "accepted");
        EXPECT_EQ(buffer.ObserverSetNewValue(name, "Zed", 7, false), veto == 0);
        EXPECT_TRUE(buffer.IsRowChanged());
        EXPECT_EQ(recorder.Count(oxdmDataSource::DSRowStateChanged), 1);
        EXPECT_EQ(Focus("NAME"), veto ? "Name 1" : "Zed");
        EXPECT_EQ(buffer.IsColumnChanged(name), veto == 0);
        EXPECT_EQ(buffer.SavedValueAsString(name).str(), "Name 1");
        EXPECT_EQ(buffer.OldValueAsString(name).str(), veto ? "Name 1" : "Zed");
        EXPECT_EQ(recorder.Count(oxdmDataSource::DSColChanged), veto ? 0 : 1);
        const std::vector<std::string> expected =
            veto ? std::vector<std::string>{"before Zed"} : std::vector<std::string>{"before Zed", "after"};
        EXPECT_EQ(events, expected);
        // The same value again changes nothing and sends nothing.
        recorder.Clear();
        EXPECT_TRUE(buffer.ObserverSetNewValue(name, Focus("NAME").c_str(), 0, true));
        EXPECT_TRUE(recorder.log.empty());
    }
    // The focus row is what the window shows for it; other rows are as read.
    EXPECT_EQ(Window("NAME"), "Zed Name 2 Name 3 *");
    // A move discards the edit.
    buffer.MoveDown(1, 0, true, false);
    buffer.MoveUp(1, 0, true);
    EXPECT_EQ(Focus("NAME"), "Name 1");
    EXPECT_FALSE(buffer.IsRowChanged());
}

TEST_F(BufferTest, ReadOnlyColumnRefusesAControlsWrite) {
    Seed(2);
    oxdmBufferedFileDataSource& buffer = Open(5);
    const short balance = buffer.IndexForColumn("BALANCE");
    EXPECT_TRUE(buffer.IsReadOnly(balance));  // a protected field on an existing row
    DSRecorder recorder(buffer);
    EXPECT_FALSE(buffer.ObserverSetNewValue(balance, "12.50", 0, true));
    EXPECT_TRUE(recorder.log.empty());
    EXPECT_FALSE(buffer.IsRowChanged());
    // A program's write has no events and does not mark the row.
    EXPECT_TRUE(buffer.SetNewValue(balance, CString("12.50")));
    EXPECT_FALSE(buffer.IsRowChanged());
    EXPECT_TRUE(buffer.IsColumnChanged(balance));
    EXPECT_EQ(recorder.Count(oxdmDataSource::DSColChanged), 1);
}

TEST_F(BufferTest, FocusRowStatesComeBackAndDoNotSurviveAMove) {
    Seed(3);
    oxdmBufferedFileDataSource& buffer = Open(5);
    const short city = buffer.IndexForColumn("CITY");
    DSRecorder recorder(buffer);
    buffer.PopFocusRowState();  // an empty stack: nothing happens
    EXPECT_TRUE(recorder.log.empty());

    buffer.PushFocusRowState();
    buffer.ObserverSetNewValue(city, "Rome", 0, true);
    buffer.PushFocusRowState();
    buffer.ObserverSetNewValue(city, "Lima", 0, true);
    recorder.Clear();
    buffer.PopFocusRowState();
    EXPECT_EQ(Focus("CITY"), "Rome");
    EXPECT_TRUE(buffer.IsRowChanged());
    EXPECT_EQ(recorder.log, std::vector<std::string>{"change 5 row=0"});
    recorder.Clear();
    buffer.PopFocusRowState();
    EXPECT_EQ(Focus("CITY"), "Oslo");
    EXPECT_FALSE(buffer.IsRowChanged());
    EXPECT_FALSE(buffer.IsColumnChanged(city));
    EXPECT_EQ(recorder.log, (std::vector<std::string>{"change 5 row=0", "change 6 dirty=0 cause=0"}));

    buffer.PushFocusRowState();
    buffer.MoveDown(1, 0, true, false);
    recorder.Clear();
    buffer.PopFocusRowState();
    EXPECT_TRUE(recorder.log.empty());
}

// During RowFilter the values are those of the row under the cursor, and a
// program's write goes straight to the cursor.
TEST_F(BufferTest, ValuesWhileTheRowFilterRuns) {
    Seed(4);
    oxdmBufferedFileDataSource& buffer = Open(5);
    const short city = buffer.IndexForColumn("CITY");
    std::vector<std::string> seen;
    BindRow(oxdmRowCallbacks::cbRowFilter, oxdmCallbackMgr::Functor([&](oxdmCallbackInfo*) {
                seen.push_back(Focus() + "/" + buffer.SavedValueAsString(0).str());
                buffer.SetNewValue(city, CString("Bonn"));
                return 0;
            }));
    buffer.SetWindowScroll(oxdmDataSource::ScrollTop, 0);
    EXPECT_EQ(seen, (std::vector<std::string>{"C0001/C0001", "C0002/C0002", "C0003/C0003", "C0004/C0004"}));
    EXPECT_EQ(Window("CITY"), "Oslo Bonn Bonn Bonn *");  // the focus row keeps its own values
    EXPECT_EQ(Focus("CITY"), "Oslo");
    EXPECT_FALSE(buffer.IsRowChanged());
}

TEST_F(BufferTest, SuppressedDuplicatesAreSkippedByMoves) {
    Seed(5, {"Oslo", "Oslo", "Rome", "Rome", "Lima"});
    oxdmBufferedFileDataSource& buffer = Open(5, kReadOnly | oxdmQueryNode::StyleSuppressDups, "CITY");
    EXPECT_EQ(Window("CITY"), "Oslo Rome Lima");
    EXPECT_EQ(buffer.MoveDown(1, 0, true, false), 1);
    EXPECT_EQ(Focus("CITY"), "Rome");
    EXPECT_EQ(buffer.MoveDown(5, 0, true, false), 1);
    EXPECT_EQ(Focus("CITY"), "Lima");
    EXPECT_EQ(buffer.MoveUp(1, 0, true), 1);
    EXPECT_EQ(Focus("CITY"), "Rome");
}

// Saving, reverting and deleting the focus row, checked against the record
// file after each step.

#include "buffer_fixture.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/role.h"

namespace {
// A role that logs the row events it is asked about and answers RowValidate.
class LoggingRole : public oxdmBufferedDataSourceRole {
public:
    LoggingRole(std::string* log, int validateAnswer) : log_(log), validateAnswer_(validateAnswer) {}
    int DoHandleRowEvent(oxdmDataSource::Event event, oxdmEvent*) override {
        if (event == oxdmDataSource::RowBeforeValidate || event == oxdmDataSource::RowValidate ||
            event == oxdmDataSource::RowBeforeWrite || event == oxdmDataSource::RowAfterWrite) {
            *log_ += (log_->empty() ? "" : " ") + std::to_string(event);
        }
        return event == oxdmDataSource::RowValidate ? validateAnswer_ : 0;
    }

private:
    std::string* log_;
    int validateAnswer_;
};

std::string BoxText(size_t index) { return oxdmDefaultPresenter().Boxes().at(index).text.str(); }
}  // namespace

TEST_F(BufferTest, SaveOfAnEditedRowWritesOnlyThatRecord) {
    Seed(3);
    oxdmBufferedFileDataSource& buffer = Open(5);
    buffer.SetFocus(1, 0, true);
    ASSERT_TRUE(buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "Edited", 0, true));
    DSRecorder recorder(buffer);
    EXPECT_TRUE(buffer.ValidateRow(0, true));
    EXPECT_FALSE(buffer.IsRowChanged());
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Edited C0003:Name 3");
    EXPECT_EQ(buffer.SavedValueAsString(buffer.IndexForColumn("NAME")).str(), "Edited");
    EXPECT_EQ(Window("NAME"), "Name 1 Edited Name 3 *");
    EXPECT_EQ(recorder.Count(oxdmDataSource::DSRowStateChanged), 1);
    EXPECT_EQ(recorder.Count(oxdmDataSource::DSNeedsRefetch), 0);
}

// An unchanged row fires RowBeforeValidate only; force writes it anyway and
// RowValidate cannot stop that; 778 from RowValidate reverts instead.
TEST_F(BufferTest, ValidateRowAnswersOfRowValidate) {
    struct Case {
        bool edit;
        bool force;
        int validateAnswer;
        bool result;
        const char* file;
        const char* events;  // RowBeforeValidate 8, RowValidate 0, RowBeforeWrite 1, RowAfterWrite 2
    };
    const Case cases[] = {
        {false, false, 1, true, "C0001:Name 1", "8"},
        {true, false, 1, false, "C0001:Name 1", "8 0"},
        {true, false, oxdmDataSource::RevertInstead, true, "C0001:Name 1", "8 0"},
        {true, true, 1, true, "C0001:X", "8 0 1 2"},
        {false, true, 1, true, "C0001:Name 1", "8 0 1 2"},
    };
    Seed(1);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.events);
        oxdmBufferedFileDataSource& buffer = Open(5);
        std::string events;
        buffer.SetRole(new LoggingRole(&events, c.validateAnswer));
        if (c.edit) buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "X", 0, true);
        events.clear();
        EXPECT_EQ(buffer.ValidateRow(0, true, c.force), c.result);
        EXPECT_EQ(events, c.events);
        EXPECT_EQ(FileRecords(), c.file);
        EXPECT_EQ(Focus("NAME"), c.result ? c.file + 6 : "X");
        if (c.force && c.edit) {
            buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "Name 1", 0, true);
            ASSERT_TRUE(buffer.ValidateRow(0, true, true));
        }
    }
}

// "SM" is the one application whose RowBeforeWrite can stop a save.
TEST_F(BufferTest, RowBeforeWriteStopsOnlyUnderSM) {
    Seed(1);
    for (const char* code : {"OX", "SM"}) {
        SCOPED_TRACE(code);
        oxApp app(code);
        OXSetMainApp(&app);
        oxdmBufferedFileDataSource& buffer = Open(5);
        BindRow(oxdmRowCallbacks::cbRowBeforeWrite, oxdmCallbackMgr::Functor([](oxdmCallbackInfo*) { return 1; }));
        buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), code, 0, true);
        const bool saved = buffer.ValidateRow(0, true);
        OXSetMainApp(nullptr);
        EXPECT_EQ(saved, std::string(code) == "OX");
        EXPECT_EQ(FileRecords(), "C0001:OX");
    }
}

TEST_F(BufferTest, NewRowSavedWithANewRowBelow) {
    Seed(2);
    oxdmBufferedFileDataSource& buffer = Open(5);
    ASSERT_TRUE(buffer.MoveToBottom(0, true, false));
    ASSERT_TRUE(buffer.IsNewRow());
    buffer.ObserverSetNewValue(buffer.IndexForColumn("CUSTNO"), "C0009", 0, true);
    buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "New", 0, true);
    DSRecorder recorder(buffer);
    ASSERT_TRUE(buffer.ValidateRow(0, true));
    EXPECT_FALSE(buffer.IsNewRow());
    EXPECT_EQ(Focus(), "C0009");
    EXPECT_EQ(Window(), "C0001 C0002 C0009 *");
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Name 2 C0009:New");
    EXPECT_EQ(recorder.Count(oxdmDataSource::DSNeedsRefetch), 1);
    EXPECT_NE(std::find(recorder.log.begin(), recorder.log.end(), "change 6 dirty=0 cause=2"), recorder.log.end());
}

// A changed key deletes the old record and inserts the new one; when the
// insert fails the rollback brings the old record back and the row is read
// again.
TEST_F(BufferTest, KeyChangeIsDeleteThenInsert) {
    Seed(3);
    oxdmBufferedFileDataSource& buffer = Open(5);
    const short key = buffer.IndexForColumn("CUSTNO");
    buffer.SetFocus(1, 0, true);
    ASSERT_TRUE(buffer.ObserverSetNewValue(key, "C0050", 0, true));
    EXPECT_TRUE(buffer.ValidateRow(0, true));
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0003:Name 3 C0050:Name 2");

    buffer.ReQuery();
    buffer.SetFocus(0, 0, true);
    ASSERT_TRUE(buffer.ObserverSetNewValue(key, "C0003", 0, true));
    const size_t boxes = Boxes().size();
    EXPECT_FALSE(buffer.ValidateRow(0, true));
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0003:Name 3 C0050:Name 2");
    EXPECT_EQ(Boxes().size(), boxes + 1);
    EXPECT_EQ(Boxes().back().title.str(), "Sales");
    EXPECT_EQ(Focus(), "C0001");
    EXPECT_FALSE(buffer.IsRowChanged());
}

TEST_F(BufferTest, RequiredColumnRefusesTheSave) {
    Seed(1);
    oxdmBufferedFileDataSource& buffer = Open(5);
    const short name = buffer.IndexForColumn("NAME");
    buffer.ColumnForIndex(name)->SetStyle(buffer.ColumnForIndex(name)->Style() | oxdmDSColumnBase::StyleRequired);
    buffer.ColumnForIndex(name)->SetLabel("Name");
    ASSERT_TRUE(buffer.ObserverSetNewValue(name, "", 0, true));
    DSRecorder recorder(buffer);
    oxdmDefaultPresenter().Clear();
    EXPECT_FALSE(buffer.ValidateRow(0, true));
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(BoxText(0), "'Name' on the " + std::string(buffer.Cursor()->RowName().str()) + " is required.");
    EXPECT_EQ(Boxes()[0].style, 0x40u);
    EXPECT_EQ(recorder.Count(oxdmDataSource::DSColInvalid), 1);
    EXPECT_EQ(FileRecords(), "C0001:Name 1");
}

TEST_F(BufferTest, RevertRowPutsTheSavedValuesBack) {
    Seed(2);
    oxdmBufferedFileDataSource& buffer = Open(5);
    DSRecorder recorder(buffer);
    EXPECT_TRUE(buffer.RevertRow(0, true));
    EXPECT_TRUE(recorder.codes.empty());
    buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "X", 0, true);
    recorder.Clear();
    EXPECT_TRUE(buffer.RevertRow(0, true));
    EXPECT_EQ(Focus("NAME"), "Name 1");
    EXPECT_FALSE(buffer.IsRowChanged());
    EXPECT_NE(std::find(recorder.log.begin(), recorder.log.end(), "change 6 dirty=0 cause=1"), recorder.log.end());
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Name 2");
}

// The question, its answers, a silent delete and the focus afterwards.
TEST_F(BufferTest, DeleteRowAsksAndMovesOn) {
    Seed(4);
    oxdmBufferedFileDataSource& buffer = Open(10);
    buffer.SetFocus(1, 0, true);
    oxdmDefaultPresenter().Clear();
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdNo);
    EXPECT_FALSE(buffer.DeleteRow(0, true));
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(BoxText(0), "Delete this " + std::string(buffer.RowDescription().str()) + "?");
    EXPECT_EQ(Boxes()[0].style, 0x24u);
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Name 2 C0003:Name 3 C0004:Name 4");

    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    EXPECT_TRUE(buffer.DeleteRow(0, true));
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0003:Name 3 C0004:Name 4");
    EXPECT_EQ(Window(), "C0001 C0003 C0004 *");
    EXPECT_EQ(Focus(), "C0003");

    BindRow(oxdmRowCallbacks::cbRowBeforeDelete,
            oxdmCallbackMgr::Functor([](oxdmCallbackInfo*) { return int{oxdmDataSource::DeleteNoPrompt}; }));
    const size_t boxes = Boxes().size();
    EXPECT_TRUE(buffer.DeleteRow(0, true));
    EXPECT_EQ(Boxes().size(), boxes);
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0004:Name 4");
    // The new row with nothing typed can't be deleted.
    ASSERT_TRUE(buffer.MoveToBottom(0, true, false));
    EXPECT_FALSE(buffer.CanDeleteRow());
    EXPECT_FALSE(buffer.DeleteRow(0, true));
}

TEST_F(BufferTest, DeletingTheLastRowOfAOneRowWindowEndsOnTheNewRow) {
    Seed(1);
    oxdmBufferedFileDataSource& buffer = Open(1);
    buffer.GetImpl()->SilentDelete(true);
    ASSERT_TRUE(buffer.DeleteRow(0, true));
    EXPECT_TRUE(buffer.IsNewRow());
    EXPECT_EQ(FileRecords(), "");
}

// A reserved key puts the row on file; reverting takes the stub away.
TEST_F(BufferTest, ReserveAndUnreserveKey) {
    Seed(1);
    oxdmBufferedFileDataSource& buffer = Open(5);
    ASSERT_TRUE(buffer.MoveToBottom(0, true, false));
    buffer.ObserverSetNewValue(buffer.IndexForColumn("CUSTNO"), "C0007", 0, true);
    ASSERT_TRUE(buffer.ReserveKey());
    EXPECT_TRUE(buffer.IsKeyReserved());
    EXPECT_TRUE(buffer.IsNewRow());
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0007:");
    EXPECT_TRUE(buffer.RevertRow(0, true));
    EXPECT_FALSE(buffer.IsKeyReserved());
    EXPECT_EQ(FileRecords(), "C0001:Name 1");

    buffer.ObserverSetNewValue(buffer.IndexForColumn("CUSTNO"), "C0008", 0, true);
    ASSERT_TRUE(buffer.ReserveKey());
    buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "Kept", 0, true);
    EXPECT_TRUE(buffer.ValidateRow(0, true));
    EXPECT_FALSE(buffer.IsKeyReserved());
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0008:Kept");
    EXPECT_EQ(buffer.FocusKeyValues().at("CUSTNO").str(), "C0008");
}

TEST_F(BufferTest, DeleteAllRowsEmptiesTheFile) {
    Seed(5);
    oxdmBufferedFileDataSource& buffer = Open(2);
    EXPECT_TRUE(buffer.DeleteAllRows(0, true));
    EXPECT_EQ(FileRecords(), "");
    EXPECT_TRUE(buffer.IsNewRow());
}

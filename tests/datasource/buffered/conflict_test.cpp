// A save that meets another program's deletion, or change, of its record,
// answered each way.

#include <sys/wait.h>
#include <unistd.h>

#include "buffer_fixture.h"
#include "oxdm/common/shell/box_styles.h"

namespace {
class ConflictTest : public BufferTest {
protected:
    // Deletes customer n from a process of its own; true when it did.
    bool DeleteElsewhere(int n) const {
        const pid_t pid = fork();
        if (pid == 0) {
            std::unique_ptr<oxioDataFile> file = OpenFile();
            oxioCursor cursor(*file, 1, 0);
            std::unique_ptr<oxData> key(Customers()->Column("CUSTNO")->CreateData());
            key->SetVal(CString(Key(n).c_str()), nullptr);
            cursor.AttachColumn("CUSTNO", *key);
            if (cursor.FetchEQ(false) != oxioStatus::Success) _exit(1);
            _exit(cursor.Delete() == oxioStatus::Success ? 0 : 2);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
    // Renames customer n from a process of its own, run by another operator;
    // true when it did.
    bool RenameElsewhere(int n, const char* name) const {
        const pid_t pid = fork();
        if (pid == 0) {
            ::setenv("OXDM_OPERATOR", "other", 1);
            std::unique_ptr<oxioDataFile> file = OpenFile();
            oxioCursor cursor(*file, 1, 0);
            std::unique_ptr<oxData> key(Customers()->Column("CUSTNO")->CreateData());
            std::unique_ptr<oxData> theirs(Customers()->Column("NAME")->CreateData());
            key->SetVal(CString(Key(n).c_str()), nullptr);
            cursor.AttachColumn("CUSTNO", *key);
            cursor.AttachColumn("NAME", *theirs);
            if (cursor.FetchEQ(false) != oxioStatus::Success) _exit(1);
            theirs->SetVal(CString(name), nullptr);
            _exit(cursor.Update(nullptr, oxioCursor::CheckConflict) == oxioStatus::Success ? 0 : 2);
        }
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) && WEXITSTATUS(status) == 0;
    }
};
}  // namespace

// The buffer re-reads the record before it writes; the stamps it read with
// the row still tell that another program wrote it in between. Yes keeps
// the other program's data and the row shows it; No writes the user's.
TEST_F(ConflictTest, RecordChangedElsewhere) {
    struct Case {
        int answer;
        bool saved;
        const char* file;
    };
    for (const Case& c : {Case{oxdmBox::IdYes, false, "C0001:Name 1 C0002:Theirs C0003:Name 3"},
                          Case{oxdmBox::IdNo, true, "C0001:Name 1 C0002:Mine C0003:Name 3"}}) {
        SCOPED_TRACE(c.answer);
        Seed(3);
        oxdmBufferedFileDataSource& buffer = Open(5);
        buffer.SetFocus(1, 0, true);
        ASSERT_TRUE(buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "Mine", 0, true));
        ASSERT_TRUE(RenameElsewhere(2, "Theirs"));
        oxdmDefaultPresenter().Clear();
        oxdmDefaultPresenter().QueueAnswer(c.answer);
        EXPECT_EQ(buffer.ValidateRow(0, true), c.saved);
        ASSERT_EQ(Boxes().size(), 1u);
        EXPECT_NE(Boxes()[0].text.Find("Data Conflict Error"), -1) << Boxes()[0].text;
        EXPECT_EQ(FileRecords(), c.file);
        EXPECT_EQ(buffer.NewValueAsString(buffer.IndexForColumn("NAME")), c.saved ? "Mine" : "Theirs");
        buffer_.reset();
        for (int n : {1, 2, 3}) DeleteRecord(n);
    }
}

// Declined, the row is taken out of the window and the focus moves on;
// accepted, the user's row is written again. No record is doubled.
TEST_F(ConflictTest, RecordDeletedElsewhere) {
    struct Case {
        int answer;
        bool saved;
        const char* file;
        const char* window;
        const char* focus;
    };
    for (const Case& c : {Case{oxdmBox::IdCancel, false, "C0001:Name 1 C0003:Name 3", "C0001 C0003 *", "C0003"},
                          Case{oxdmBox::IdOK, true, "C0001:Name 1 C0002:Mine C0003:Name 3", "C0001 C0002 C0003 *",
                               "C0002"}}) {
        SCOPED_TRACE(c.answer);
        Seed(3);
        oxdmBufferedFileDataSource& buffer = Open(5);
        buffer.SetFocus(1, 0, true);
        ASSERT_TRUE(buffer.ObserverSetNewValue(buffer.IndexForColumn("NAME"), "Mine", 0, true));
        ASSERT_TRUE(DeleteElsewhere(2));
        oxdmDefaultPresenter().Clear();
        oxdmDefaultPresenter().QueueAnswer(c.answer);
        EXPECT_EQ(buffer.ValidateRow(0, true), c.saved);
        EXPECT_EQ(Boxes().size(), 1u);
        EXPECT_EQ(FileRecords(), c.file);
        EXPECT_EQ(Window(), c.window);
        EXPECT_EQ(Focus(), c.focus);
        buffer_.reset();
        for (int n : {1, 2, 3}) {
            if (c.saved || n != 2) DeleteRecord(n);
        }
    }
}

// Deleting with cascades and notifications, rollback stacks of nodes and of
// callers, and a cascade that fails part way because another program holds
// a record.

#include <csignal>

#include "cursor_fixture.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/cursor/rollback_stack.h"
#include "oxdm/notify/change.h"
#include "oxdm/notify/change_mgr.h"
#include "oxdm/notify/subject.h"

namespace {

constexpr int kCascade = 0x0f | oxdmQueryNode::StyleCascadedDelete;

class RollbackTest : public CursorTest {
protected:
    void SetUp() override {
        CursorTest::SetUp();
        SeedSales();
    }
    // Customers, orders and lines as counted on the disk.
    std::vector<long> Counts() const { return {Count(1), Count(2), Count(3)}; }
};

TEST_F(RollbackTest, RollbackAfterAnInsertDeletesTheRow) {
    BuildQuery(0x0f | oxdmQueryNode::StyleUseRollbackStack);
    extra_->SetUseRollbackStack(false);
    Tree();
    Set(*tree_, "CUSTNO", "C7");
    Set(*tree_, "NAME", "Temp");
    CString error;
    ASSERT_EQ(tree_->Insert(error, true), oxioStatus::Success);
    EXPECT_EQ(Stored(1, "C7", "NAME"), "Temp");
    EXPECT_EQ(tree_->Rollback(), 0);
    EXPECT_EQ(Stored(1, "C7", "NAME"), "<none>");
    EXPECT_EQ(Count(1), 3);
}

TEST_F(RollbackTest, TwoEntriesForOneRecordRollBackNewestFirst) {
    BuildQuery(0x0f | oxdmQueryNode::StyleUseRollbackStack);
    Tree();
    ASSERT_TRUE(tree_->First(false));
    CString error;
    Set(*tree_, "NAME", "Second");
    ASSERT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success) << error;
    Set(*tree_, "NAME", "Third");
    ASSERT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success) << error;
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Third");
    EXPECT_EQ(tree_->Rollback(), 0);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Ann");
    // The rollback wrote behind the cursor's read: read the row again.
    tree_->Refresh(true, false);
    EXPECT_EQ(Get(*tree_, "NAME"), "Ann");
    // Committed changes stand: a later rollback has nothing to undo.
    Set(*tree_, "NAME", "Kept");
    ASSERT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success);
    tree_->CommitRollbackStack();
    EXPECT_EQ(tree_->Rollback(), 0);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Kept");
}

TEST_F(RollbackTest, CascadedDeleteTellsEveryRowAndAStackUndoesIt) {
    BuildQuery(kCascade, kCascade, kCascade);
    Tree();
    mvcSubject subject;
    unsigned long observer = 0;
    std::vector<oxdmCursorNode*> told;
    subject.AddObserver(7, observer, CBFunctor1<mvcChange*>([&](mvcChange* change) {
                            told.push_back(static_cast<oxdmMVCCursorNodeChange*>(change)->Cursor());
                        }));
    ASSERT_TRUE(tree_->First(false));
    oxdmRollbackStack stack;
    CString error;
    ASSERT_TRUE(tree_->Delete(error, &stack, &subject, false)) << error;
    // C1, its custom fields, orders O1 and O2, O1's two lines.
    EXPECT_EQ(told.size(), 6u);
    EXPECT_EQ(std::count(told.begin(), told.end(), Lines()), 2);
    EXPECT_EQ(Counts(), (std::vector<long>{2, 1, 1}));
    EXPECT_EQ(stack.rollback(), 0);
    EXPECT_EQ(Counts(), (std::vector<long>{3, 3, 3}));
    EXPECT_EQ(Stored(2, "O2", "CUSTNO"), "C1");
    mvcChangeMgr::Instance()->UnregisterAll(observer);
}

TEST_F(RollbackTest, ACascadeThatFailsPartWayLeavesNothingHalfDeletedWithAStack) {
    BuildQuery(kCascade, kCascade, kCascade);
    Tree();
    // Another program holds O1's second line.
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    pid_t holder = fork();
    if (holder == 0) {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, 3, 0);
        oxAlpha ordno("O1");
        oxDouble lineno(2.0, 0);
        cursor.AttachColumn("ORDNO", ordno);
        cursor.AttachColumn("LINENO", lineno);
        char ok = cursor.FetchEQ(true) == oxioStatus::Success ? 'y' : 'n';
        if (write(ready[1], &ok, 1) != 1) _exit(1);
        pause();
        _exit(0);
    }
    char ok = 0;
    ASSERT_EQ(read(ready[0], &ok, 1), 1);
    ASSERT_EQ(ok, 'y');

    ASSERT_TRUE(tree_->First(false));
    oxdmRollbackStack stack;
    CString error;
    EXPECT_FALSE(tree_->Delete(error, &stack, nullptr, false));
    EXPECT_EQ(error, "Could not delete from 'Line' because it is in use by another user");
    EXPECT_EQ(stack.rollback(), 0);
    kill(holder, SIGKILL);
    waitpid(holder, nullptr, 0);
    EXPECT_EQ(Counts(), (std::vector<long>{3, 3, 3}));
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Ann");
    EXPECT_EQ(Stored(4, "C1", "REGION"), "North");
}

TEST_F(RollbackTest, DeletingWhatHasGoneIsNoFailureAndKeepPositionStays) {
    BuildQuery(kCascade);
    Tree();
    ASSERT_TRUE(tree_->Last(false));  // C3
    CString error;
    ASSERT_TRUE(tree_->Delete(error, nullptr, nullptr, false));
    EXPECT_TRUE(tree_->Delete(error, nullptr, nullptr, false));  // gone already
    EXPECT_TRUE(error.IsEmpty());
    ASSERT_TRUE(tree_->First(false));
    ASSERT_TRUE(tree_->Delete(error, nullptr, nullptr, true));
    EXPECT_EQ(Count(1), 1);
    ASSERT_TRUE(tree_->Next(false));
    EXPECT_EQ(Get(*tree_, "CUSTNO"), "C2");
}

TEST_F(RollbackTest, DeleteAllOfAChildDeletesOnlyItsParentsRows) {
    BuildQuery(0x0f, 0x0f, kCascade);
    Tree();
    ASSERT_TRUE(tree_->First(true));  // C1, O1
    CString error;
    ASSERT_TRUE(Orders()->DeleteAll(error, nullptr, nullptr));
    // C1's orders and, cascading, O1's lines; C3's order and line stay.
    EXPECT_EQ(Counts(), (std::vector<long>{3, 1, 1}));
    EXPECT_EQ(Stored(2, "O3", "CUSTNO"), "C3");
}

TEST_F(RollbackTest, RollbackStackDropsItsImagesOnCommitAndUndoesEachKind) {
    std::unique_ptr<oxioDataFile> file = OpenFile();
    oxioCursor cursor(*file, 1, 0);
    oxAlpha custno("C2"), name;
    cursor.AttachColumn("CUSTNO", custno);
    cursor.AttachColumn("NAME", name);
    ASSERT_EQ(cursor.FetchEQ(false), oxioStatus::Success);
    oxdmRollbackStack stack;
    EXPECT_EQ(stack.isEmpty(), 1);
    stack.pushRecord(file->FileNum(), 1, oxdmRollbackStack::Deleted, 0);
    ASSERT_EQ(cursor.Delete(), oxioStatus::Success);
    custno.SetVal(CString("C5"));
    name.SetVal(CString("Eve"));
    ASSERT_EQ(cursor.Insert(nullptr), oxioStatus::Success);
    stack.pushRecord(file->FileNum(), 1, oxdmRollbackStack::Inserted, 0);
    EXPECT_EQ(stack.isEmpty(), 0);
    EXPECT_EQ(stack.rollback(), 0);
    EXPECT_EQ(stack.isEmpty(), 1);
    EXPECT_EQ(Stored(1, "C2", "NAME"), "Bob");
    EXPECT_EQ(Stored(1, "C5", "NAME"), "<none>");

    stack.pushRecord(file->FileNum(), 1, oxdmRollbackStack::Inserted, 0);
    stack.commit();
    EXPECT_EQ(stack.isEmpty(), 1);
    EXPECT_EQ(stack.rollback(), 0);
    EXPECT_EQ(Count(1), 3);
}

}  // namespace

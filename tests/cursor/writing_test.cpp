// Saving rows: inserts and their sentences, updates with their flags and
// rights, custom fields, and the questions asked when another program
// changed or deleted the row since it was read (played by a forked process).

#include "cursor_fixture.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/values/text_values.h"

namespace {

const char kOverwriteQuestion[] =
    "Data Conflict Error\r\rWhile you were entering data, the same data was being modified by another program. "
    "Only one instance of the data can be saved. Do you want to save the other program's changes?\r\r"
    "Recommended: click [Yes], and then reenter your changes.\r\r"
    "Click [No] to save your changes but permanently lose the changes made by the other program.";
const char kNotSaved[] =
    "Error. Data Conflict!\rAnother process has updated this data and your changes were not saved. You will need "
    "to reenter your changes. Click [Help] for more information about why this occurred. Click [OK] to continue.";
const char kDeletedReinsert[] =
    "This data has been deleted by someone else.\rPress OK to attempt to insert it again. Otherwise,\r"
    "press Cancel to lose your changes.";
const char kDeletedLose[] = "This data has been deleted by someone else.\rPress OK to lose your changes.";

// Reaches the node's own lookup of the last writer.
class OperatorProbe : public oxdmOXIOCursorNode {
public:
    using oxdmOXIOCursorNode::oxdmOXIOCursorNode;
    using oxdmOXIOCursorNode::_GetOperatorID;
};

class WritingTest : public CursorTest {
protected:
    void SetUp() override {
        CursorTest::SetUp();
        SeedSales();
        BuildQuery();
        Tree();
        ASSERT_TRUE(tree_->First(false));  // on C1, Ann
    }
    // Another program changes C1's name (or deletes C1) behind our back.
    int OtherProgram(const char* name) {
        return InChild([&] {
            std::unique_ptr<oxioDataFile> file = OpenFile();
            oxioCursor cursor(*file, 1, 0);
            oxAlpha custno("C1"), theirs(name ? name : "");
            cursor.AttachColumn("CUSTNO", custno);
            cursor.AttachColumn("NAME", theirs);
            if (cursor.FetchEQ(false) != oxioStatus::Success) return 1;
            if (name == nullptr) return cursor.Delete() == oxioStatus::Success ? 0 : 2;
            theirs.SetVal(CString(name));
            return cursor.Update(nullptr, oxioCursor::CheckConflict) == oxioStatus::Success ? 0 : 3;
        });
    }
};

TEST_F(WritingTest, InsertWritesAndADuplicateGetsItsSentence) {
    Set(*tree_, "CUSTNO", "C9");
    Set(*tree_, "NAME", "New");
    CString error;
    EXPECT_EQ(tree_->Insert(error, true), oxioStatus::Success);
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_FALSE(tree_->Changed());
    EXPECT_EQ(Stored(1, "C9", "NAME"), "New");
    EXPECT_EQ(Stored(1, "C9", "OPERID"), "tester");

    Set(*tree_, "NAME", "Again");
    EXPECT_EQ(tree_->Insert(error, true), oxioStatus::InvalidKey);
    EXPECT_EQ(error, "The Customer already exists.");
}

TEST_F(WritingTest, WithoutRightsNothingIsWrittenAndTheFlagDrops) {
    customers_->SetCanInsert(false);
    customers_->SetCanUpdate(false);
    Set(*tree_, "CUSTNO", "C8");
    CString error;
    EXPECT_EQ(tree_->Insert(error, true), oxioStatus::Success);
    EXPECT_FALSE(tree_->Changed());
    EXPECT_EQ(Stored(1, "C8", "NAME"), "<none>");
    Set(*tree_, "CUSTNO", "C1");
    Set(*tree_, "NAME", "Nope");
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Ann");
    // Rights are the caller's to check: without the check it writes.
    Set(*tree_, "NAME", "Yes");
    EXPECT_EQ(tree_->Update(error, 0, false, false), oxioStatus::Success);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Yes");
}

TEST_F(WritingTest, UpdateWritesOnlyChangedRowsUnlessForced) {
    CString error;
    ::setenv("OXDM_OPERATOR", "other", 1);
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success);
    EXPECT_EQ(Stored(1, "C1", "OPERID"), "tester");  // nothing written
    EXPECT_EQ(tree_->Update(error, 0, true, true), oxioStatus::Success);
    EXPECT_EQ(Stored(1, "C1", "OPERID"), "other");
    // The operator who wrote last, as the node finds it for its questions.
    OperatorProbe probe(*customers_, &task_, nullptr);
    ASSERT_TRUE(probe.First(false));
    EXPECT_EQ(probe._GetOperatorID(), "other");
    OperatorProbe extra(*extra_, &task_, nullptr);  // a table without an operator field
    ASSERT_TRUE(extra.First(false));
    EXPECT_EQ(extra._GetOperatorID(), "someone else");
}

TEST_F(WritingTest, AChangedCustomFieldWritesTheMainRecordToo) {
    ::setenv("OXDM_OPERATOR", "custom", 1);
    ASSERT_TRUE(Set(*Extra(), "REGION", "South"));
    EXPECT_FALSE(tree_->Changed());
    CString error;
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success) << error;
    EXPECT_EQ(Stored(1, "C1", "OPERID"), "custom");
    EXPECT_FALSE(Extra()->Changed());
    // The custom fields' table keeps no record of its own: nothing written there.
    EXPECT_EQ(Stored(4, "C1", "REGION"), "North");
}

TEST_F(WritingTest, InsertOrUpdateOfAnExistingRowUpdatesSilently) {
    Set(*tree_, "NAME", "Annie");
    CString error;
    EXPECT_EQ(tree_->InsertOrUpdate(error, true), oxioStatus::Success);
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Annie");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(WritingTest, UpdateOrInsertOfARowDeletedElsewhereInsertsWithoutAsking) {
    ASSERT_EQ(OtherProgram(nullptr), 0);
    Set(*tree_, "NAME", "Back");
    CString error;
    EXPECT_EQ(tree_->UpdateOrInsert(error, true), oxioStatus::Success) << error;
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Back");
}

TEST_F(WritingTest, ChangedByAnotherProgramAnsweringNoOverwritesTheirs) {
    ASSERT_EQ(OtherProgram("Theirs"), 0);
    Set(*tree_, "NAME", "Mine");
    Answer(oxdmBox::IdNo);
    CString error;
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, kOverwriteQuestion);
    EXPECT_EQ(Boxes()[0].title, "OX");
    EXPECT_EQ(Boxes()[0].style, 20u);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Mine");
    EXPECT_FALSE(tree_->Changed());
}

TEST_F(WritingTest, ChangedByAnotherProgramAnsweringYesKeepsTheirs) {
    ASSERT_EQ(OtherProgram("Theirs"), 0);
    Set(*tree_, "NAME", "Mine");
    Answer(oxdmBox::IdYes);
    CString error("stale");
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::DataConflict);
    EXPECT_TRUE(error.IsEmpty());  // the user was told
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Theirs");
    // The lock was given back: the other program can write again.
    EXPECT_EQ(OtherProgram("Later"), 0);
}

TEST_F(WritingTest, ChangedByAnotherProgramWithoutOverwriteIsRefused) {
    tree_->SetAllowDataConflictOverwrite(false);
    ASSERT_EQ(OtherProgram("Theirs"), 0);
    Set(*tree_, "NAME", "Mine");
    CString error;
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::DataConflict);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, kNotSaved);
    EXPECT_EQ(Boxes()[0].style, 16400u);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Theirs");
}

TEST_F(WritingTest, DeletedByAnotherProgramAsksAndReinserts) {
    ASSERT_EQ(OtherProgram(nullptr), 0);
    Set(*tree_, "NAME", "Mine");
    CString error;
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::Success) << error;
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, kDeletedReinsert);
    EXPECT_EQ(Boxes()[0].title, "Data Conflict!");
    EXPECT_EQ(Boxes()[0].style, 0x31u);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "Mine");
}

TEST_F(WritingTest, DeletedByAnotherProgramCancelledLosesTheChanges) {
    ASSERT_EQ(OtherProgram(nullptr), 0);
    Set(*tree_, "NAME", "Mine");
    Answer(oxdmBox::IdCancel);
    CString error;
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::InvalidKey);
    EXPECT_TRUE(error.IsEmpty());
    EXPECT_EQ(Stored(1, "C1", "NAME"), "<none>");
}

TEST_F(WritingTest, DeletedByAnotherProgramWithoutOverwriteOnlyTells) {
    tree_->SetAllowDataConflictOverwrite(false);
    ASSERT_EQ(OtherProgram(nullptr), 0);
    Set(*tree_, "NAME", "Mine");
    CString error;
    EXPECT_EQ(tree_->Update(error, 0, true, false), oxioStatus::InvalidKey);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, kDeletedLose);
    EXPECT_EQ(Boxes()[0].style, 0x30u);
    EXPECT_EQ(Stored(1, "C1", "NAME"), "<none>");
}

TEST_F(WritingTest, DeletedRowWithFlagTwoIsReportedNotAsked) {
    ASSERT_EQ(OtherProgram(nullptr), 0);
    Set(*tree_, "NAME", "Mine");
    CString error;
    EXPECT_EQ(tree_->Update(error, 2, true, false), oxioStatus::InvalidKey);
    EXPECT_TRUE(Boxes().empty());
    EXPECT_EQ(error, "Could not update 'Customer' because the key is invalid or a duplicate");
}

}  // namespace

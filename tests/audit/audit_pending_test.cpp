// Entries that stay pending. Pending changes are kept by table and column,
// not by row, and leave only when a row of their buffer is written, deleted
// or, while printing, reverted with its row-state news; so entries that
// outlive their row join the next save that reaches their table.

#include <algorithm>

#include "audit_fixture.h"

namespace {

std::vector<std::string> Sorted(std::vector<std::string> lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

class PendingTest : public AuditTest {
protected:
    // Renames customer n through a connection of its own, as another
    // program would; the version check of the write still applies.
    void RenameElsewhere(int n, const char* name) const {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, 1, 0);
        std::unique_ptr<oxData> key(Customers()->Column("CUSTNO")->CreateData());
        std::unique_ptr<oxData> theirs(Customers()->Column("NAME")->CreateData());
        key->SetVal(CString(Key(n).c_str()), nullptr);
        cursor.AttachColumn("CUSTNO", *key);
        cursor.AttachColumn("NAME", *theirs);
        ASSERT_EQ(cursor.FetchEQ(false), oxioStatus::Success);
        theirs->SetVal(CString(name), nullptr);
        ASSERT_EQ(cursor.Update(nullptr, oxioCursor::CheckConflict), oxioStatus::Success);
    }
};

// A data conflict answered yes re-reads the row, which is news of a refetch,
// not of a revert: the edit that lost stays pending and is logged with the
// row's next save, though the file kept the other program's name.
TEST_F(PendingTest, AnEditLostToAConflictJoinsTheNextSave) {
    Settings(true, false);
    Seed(2);
    Open(5);
    StartAudit();
    buffer_->SetFocus(1, 0, true);
    Edit("NAME", "Mine");
    RenameElsewhere(2, "Theirs");
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    EXPECT_FALSE(buffer_->ValidateRow(0, true));
    EXPECT_EQ(Focus("NAME"), "Theirs");
    EXPECT_TRUE(Log().empty()) << "nothing was written";

    Edit("CITY", "Porto");
    Save();
    EXPECT_EQ(Sorted(LogLines()), Sorted({"Changed C0002 NAME:Name 2>Mine", "Changed C0002 CITY:Oslo>Porto"}));
    EXPECT_EQ(FileRecords(), "C0001:Name 1 C0002:Theirs");
}

// A new row's revert sends no row-state news, so even while printing no
// "Addition cancelled" line is printed and its entries stay for the next
// save of the table.
TEST_F(PendingTest, ARevertedNewRowsEntriesJoinTheNextSaveEvenWhilePrinting) {
    Settings(true, true);
    Seed(2);
    Open(5);
    EXPECT_TRUE(StartAudit());
    buffer_->MoveToBottom(0, true, false);
    ASSERT_TRUE(buffer_->IsNewRow());
    Edit("CUSTNO", "C0009");
    EXPECT_TRUE(buffer_->RevertRow(0, true));
    buffer_->SetFocus(0, 0, true);
    Edit("CITY", "Bergen");
    Save();
    EXPECT_EQ(Sorted(LogLines()), Sorted({"Changed C0001 CITY:Oslo>Bergen", "Changed C0001 CUSTNO:>C0009"}));
    EndAudit();
    for (const std::string& line : Body(Pages().at(0))) EXPECT_EQ(line.find("cancelled"), std::string::npos) << line;
}

// A parent's save writes every pending table that its cursor tree reaches,
// the lines of an order included, under the record the lines' cursor
// stands on; the line's entries stay until the line itself is saved.
TEST_F(AuditTreeTest, AParentsSaveAlsoLogsItsChildrensPendingEntries) {
    Settings(true, false);
    SeedSales();
    BuildCustomerTree();
    oxdmBufferedFileDataSource& customers = OpenTree(5);
    oxdmBufferedFileDataSource& lines = *customers.Children().at(0)->Children().at(0);
    StartAudit();
    lines.MoveToBottom(0, true, false);
    ASSERT_TRUE(lines.IsNewRow());
    Type(lines, "LINENO", "3");
    Type(lines, "ITEM", "ABCD-000009");
    Edit("CITY", "Bergen");
    Save();
    EXPECT_EQ(Sorted(LogLines()),
              Sorted({"Changed C0001 CITY:Oslo>Bergen", "Changed O1, 2 LINENO:>3", "Changed O1, 2 ITEM:>ABCD-000009",
                      "Added O1, 3 LINENO:>3", "Added O1, 3 ITEM:>ABCD-000009"}));
    EXPECT_EQ(LineRecords(), "O1/1 O1/2 O1/3 O3/1");
}

}  // namespace

// The printed report, read back page by page from the text the print
// service writes: headings, one block per row with its key and label, the
// column lines at their columns and widths, and where a block may begin.

#include <algorithm>
#include <map>

#include "audit_fixture.h"

namespace {

bool Has(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

TEST_F(AuditTest, TheReportShowsEachSavedAddedAndDeletedRowUnderTheHeadings) {
    Settings(true, true);
    Seed(3);
    Open(10);
    EXPECT_TRUE(StartAudit());
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].title.str(), "Audit Report");

    buffer_->SetFocus(0, 0, true);
    Edit("CITY", "Bergen");
    Edit("CITY", "Molde");
    Save();
    ASSERT_TRUE(buffer_->MoveToBottom(0, true, false));
    Edit("CUSTNO", "C0009");
    Edit("NAME", "New");
    Save();
    buffer_->SetFocus(1, 0, true);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    ASSERT_TRUE(buffer_->DeleteRow(0, true));
    EndAudit();

    const std::vector<std::vector<std::string>> pages = Pages();
    ASSERT_EQ(pages.size(), 1u);
    const std::vector<std::string>& page = pages[0];
    ASSERT_GE(page.size(), 5u);
    EXPECT_NE(page[0].find("Sales"), std::string::npos) << page[0];
    EXPECT_NE(page[1].find("Audit Report"), std::string::npos) << page[1];
    EXPECT_EQ(page[3], "");
    EXPECT_EQ(page[4], Line({{4, "Field Name"}, {33, "Old Value"}, {62, "New Value"}}));

    const std::vector<std::string> body = Body(page);
    ASSERT_GE(body.size(), 9u);
    EXPECT_EQ(body[0], "");
    EXPECT_EQ(body[1], Line({{1, "Customer number C0001 Changed"}}));
    EXPECT_EQ(body[2], Line({{4, "City"}, {33, "Oslo"}, {62, "Molde"}}));
    EXPECT_EQ(body[3], "");
    EXPECT_EQ(body[4], Line({{1, "Customer number C0009 Added"}}));
    const std::vector<std::string> added(body.begin() + 5, body.begin() + 7);
    EXPECT_TRUE(Has(added, Line({{4, "Customer number"}, {62, "C0009"}}))) << added[0];
    EXPECT_TRUE(Has(added, Line({{4, "Name"}, {62, "New"}}))) << added[1];
    EXPECT_EQ(body[7], "");
    EXPECT_EQ(body[8], Line({{1, "Customer number C0002 Deleted"}}));
    const std::vector<std::string> deleted(body.begin() + 9, body.end());
    EXPECT_TRUE(Has(deleted, Line({{4, "Customer number"}, {33, "C0002"}})));
    EXPECT_TRUE(Has(deleted, Line({{4, "Name"}, {33, "Name 2"}})));
    EXPECT_TRUE(Has(deleted, Line({{4, "City"}, {33, "Oslo"}})));

    // The log holds the same rows: a new row's old values are empty, a
    // deleted row's new ones.
    const std::vector<std::string> log = LogLines();
    for (const char* line : {"Changed C0001 CITY:Oslo>Molde", "Added C0009 CUSTNO:>C0009", "Added C0009 NAME:>New",
                             "deleted C0002 NAME:Name 2>", "deleted C0002 CITY:Oslo>"})
        EXPECT_TRUE(Has(log, line)) << line;
}

// Answers fewer than three lines left once asked to, so that the next block
// would begin in the last two lines of a page; records what is written.
class LowOnPaper : public oxdmAuditImpl {
public:
    using oxdmAuditImpl::oxdmAuditImpl;
    short xpLinesLeft(short handle) override { return low ? short{2} : oxdmAuditImpl::xpLinesLeft(handle); }
    short xpWriteLine(short handle, short count, short skip, short newPage) override {
        newPages.push_back(newPage);
        return oxdmAuditImpl::xpWriteLine(handle, count, skip, newPage);
    }
    bool low = false;
    std::vector<short> newPages;  // the last argument of every line written
};

TEST_F(AuditTest, ABlockThatWouldBeginInTheLastTwoLinesBeginsANewPage) {
    Settings(true, true);
    Seed(2);
    Open(5);
    auto* impl = new LowOnPaper(&task_);
    EXPECT_TRUE(StartAudit(0, impl));
    buffer_->SetFocus(0, 0, true);
    Edit("CITY", "Bergen");
    Save();
    impl->low = true;
    impl->newPages.clear();
    buffer_->SetFocus(1, 0, true);
    Edit("CITY", "Molde");
    Save();
    // No blank line: the block's first line goes out with a page break.
    EXPECT_EQ(impl->newPages, (std::vector<short>{1, 0}));
    EndAudit();

    const std::vector<std::vector<std::string>> pages = Pages();
    ASSERT_EQ(pages.size(), 2u);
    EXPECT_EQ(Body(pages[0]),
              (std::vector<std::string>{"", Line({{1, "Customer number C0001 Changed"}}),
                                        Line({{4, "City"}, {33, "Oslo"}, {62, "Bergen"}})}));
    EXPECT_NE(pages[1][1].find("Page 2"), std::string::npos) << pages[1][1];
    EXPECT_EQ(Body(pages[1]), (std::vector<std::string>{Line({{1, "Customer number C0002 Changed"}}),
                                                          Line({{4, "City"}, {33, "Oslo"}, {62, "Molde"}})}));
}

// A table with no key column, a Boolean column, and values longer than
// their width: a dictionary of its own.
class NotesTest : public AuditTest {
protected:
    void OpenNotes() {
        WriteDict("aud", R"(
[file]
abbreviation = "au"
letter = "d"
code = 2

[[table]]
number = 1
description = "Note"
audit = 1

  [[table.field]]
  name = "TEXT"
  description = "Note text"
  type = "alpha"
  length = 40
  default_width = 40

  [[table.field]]
  name = "DONE"
  description = "Done"
  type = "boolean"
  length = 1

  [[table.field]]
  name = "QTY"
  description = "Quantity"
  type = "numeric"
  length = 18
  default_width = 18
)");
        buffer_.reset();
        query_ = std::make_unique<oxdmQuery>("notes");
        oxdmQueryNode* node = query_->SetRoot(oxioFileSpec((Scratch() / "notes.aud").c_str()), 1, 0, "note",
                                              kAllRights | oxdmQueryNode::StyleCreateFile);
        node->AddAllColumns(true, true, false);
        buffer_ = std::make_unique<oxdmBufferedFileDataSource>(query_.get(), &task_,
                                                               static_cast<oxdmFileManager*>(nullptr));
        buffer_->SetWindowSize(5);
        buffer_->ReQuery();
    }
    std::vector<oxAuditLogEntry> NotesLog() const {
        std::vector<oxAuditLogEntry> entries;
        CString error;
        EXPECT_TRUE(oxReadAuditLog((Scratch() / "notes.aud").c_str(), {}, entries, error)) << error;
        return entries;
    }
};

TEST_F(NotesTest, WithoutKeyColumnsTheColumnsFollowWithoutAHeadAndLongValuesAreCut) {
    Settings(true, true);
    OpenNotes();
    EXPECT_TRUE(StartAudit());
    ASSERT_TRUE(buffer_->MoveToBottom(0, true, false));
    const std::string text = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789abcd";
    Edit("TEXT", text.c_str());
    Edit("DONE", "Y");
    Edit("QTY", "123456789012345678");
    Save();
    Edit("DONE", "N");
    Edit("TEXT", "Short");
    Save();

    std::map<std::string, oxAuditLogEntry> added, changed;
    for (const oxAuditLogEntry& entry : NotesLog())
        (entry.label == "Added" ? added : changed)[entry.column.str()] = entry;
    ASSERT_EQ(added.size(), 3u);
    EXPECT_EQ(added["TEXT"].newValue.str(), text) << "the log keeps the whole value";
    EXPECT_EQ(added["DONE"].newValue.str(), "Checked");
    EXPECT_EQ(added["TEXT"].recordKey.str(), "#1") << "a record without a key is named by its number";
    const std::string quantity = added["QTY"].newValue.str();
    ASSERT_GT(quantity.size(), 16u);
    ASSERT_EQ(changed.size(), 2u);
    EXPECT_EQ(changed["DONE"].oldValue.str(), "Checked");
    EXPECT_EQ(changed["DONE"].newValue.str(), "Not Checked");
    EndAudit();

    const std::vector<std::vector<std::string>> pages = Pages();
    ASSERT_EQ(pages.size(), 1u);
    const std::vector<std::string> body = Body(pages[0]);
    ASSERT_EQ(body.size(), 7u);
    EXPECT_EQ(body[0], "");
    const std::vector<std::string> addedLines(body.begin() + 1, body.begin() + 4);
    // An unformatted number is cut at 17 - 1 characters.
    EXPECT_TRUE(Has(addedLines, Line({{4, "Quantity"}, {62, quantity.substr(0, 16)}})));
    EXPECT_TRUE(Has(addedLines, Line({{4, "Done"}, {62, "Checked"}})));
    EXPECT_EQ(body[4], "");
    const std::vector<std::string> changedLines(body.begin() + 5, body.end());
    EXPECT_TRUE(Has(changedLines, Line({{4, "Done"}, {33, "Checked"}, {62, "Not Checked"}})));
    // A text is cut at 27 - 1 characters.
    EXPECT_TRUE(Has(changedLines, Line({{4, "Note text"}, {33, text.substr(0, 26)}, {62, "Short"}})))
        << changedLines[0] << "\n" << changedLines[1];
}

}  // namespace

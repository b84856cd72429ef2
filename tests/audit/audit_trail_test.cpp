// The audit trail's settings and its electronic log, over a buffer of the
// sample customers: what is observed, what each row's save, revert and
// delete leaves in the record file's log.

#include <algorithm>

#include "audit_fixture.h"

namespace {

std::vector<std::string> Sorted(std::vector<std::string> lines) {
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST_F(AuditTest, WithAuditingOffNothingIsObservedLoggedOrPrinted) {
    Settings(false, true);
    Seed(2);
    Open(5);
    EXPECT_TRUE(StartAudit());
    EXPECT_TRUE(Boxes().empty()) << "no print job is offered";
    buffer_->SetFocus(0, 0, true);
    Edit("CITY", "Bergen");
    Save();
    EXPECT_TRUE(Log().empty());
    EXPECT_TRUE(Reports().empty());

    oxdmAudit empty;
    EXPECT_TRUE(empty.Prompt(query_.get()));
    EXPECT_FALSE(empty.InitAuditWithoutHub(query_.get(), 1));
    EXPECT_EQ(empty.Impl(), nullptr);
}

TEST_F(AuditTest, WithoutPrintingACellEditedTwiceIsLoggedOnceFromTheFirstOldToTheLastNewValue) {
    Settings(true, false);
    Seed(1);
    Open(5);
    EXPECT_FALSE(StartAudit()) << "auditing runs, but without a report";
    EXPECT_TRUE(Boxes().empty());
    buffer_->SetFocus(0, 0, true);
    Edit("CITY", "Bergen");
    Edit("CITY", "Molde");
    Save();
    EXPECT_EQ(LogLines(), std::vector<std::string>{"Changed C0001 CITY:Oslo>Molde"});
    EXPECT_EQ(Log().at(0).task, task_.ID());
    EXPECT_TRUE(Boxes().empty()) << Boxes().at(0).text;
    EndAudit();
    EXPECT_TRUE(Reports().empty());
}

TEST_F(AuditTest, ACancelledPrintJobLeavesTheLogWorking) {
    Settings(true, true);
    Seed(1);
    Open(5);
    EXPECT_FALSE(StartAudit(oxdmBox::IdCancel));
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].title.str(), "Audit Report");
    buffer_->SetFocus(0, 0, true);
    Edit("NAME", "Renamed");
    Save();
    EndAudit();
    EXPECT_EQ(LogLines(), std::vector<std::string>{"Changed C0001 NAME:Name 1>Renamed"});
    EXPECT_TRUE(Reports().empty());
}

// Edits CITY, reverts, edits NAME and saves: the log lines that leaves.
class RevertTest : public AuditTest {
protected:
    std::vector<std::string> RevertThenSave(bool print) {
        Settings(true, print);
        Seed(1);
        Open(5);
        EXPECT_EQ(StartAudit(), print);
        buffer_->SetFocus(0, 0, true);
        Edit("CITY", "Bergen");
        EXPECT_TRUE(buffer_->RevertRow(0, true));
        Edit("NAME", "Renamed");
        Save();
        return Sorted(LogLines());
    }
};

// Without a report a reverted row's entries stay and join the next save of
// the table.
TEST_F(RevertTest, WithoutPrintingTheRevertedEntriesJoinTheNextSave) {
    EXPECT_EQ(RevertThenSave(false), Sorted({"Changed C0001 NAME:Name 1>Renamed", "Changed C0001 CITY:Oslo>Bergen"}));
}

// With a report the revert is printed and its entries go.
TEST_F(RevertTest, WhilePrintingTheRevertIsReportedAndItsEntriesDropped) {
    EXPECT_EQ(RevertThenSave(true), std::vector<std::string>{"Changed C0001 NAME:Name 1>Renamed"});
    EndAudit();
    const std::vector<std::vector<std::string>> pages = Pages();
    ASSERT_EQ(pages.size(), 1u);
    const std::vector<std::string> body = Body(pages[0]);
    ASSERT_GE(body.size(), 1u);
    EXPECT_EQ(body[0], Line({{2, "  *** Changes cancelled by operator ***"}}));
}

}  // namespace

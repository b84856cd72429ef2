// The texts the audit gives values from a field definition, and what the
// audit does for a compound key, a table that is not audited and a log that
// cannot be written.

#include <sqlite3.h>

#include "audit_fixture.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"

namespace {

TEST(AuditValues, AFieldDefinitionGivesChoiceTextsAndCheckBoxWords) {
    ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 1);
    const oxdmTableDef* customers = oxdmDictionaryManager::Instance().Table("ord", 1);
    const oxdmColumnDef* status = customers->Column("STATUS");
    const oxdmColumnDef* name = customers->Column("NAME");
    struct Case {
        const oxdmColumnDef* column;
        std::unique_ptr<oxData> value;
        const char* text;
    };
    Case cases[] = {
        {status, std::make_unique<oxChoice>(2), "On hold"},
        {status, std::make_unique<oxChoice>(0), ""},
        {name, std::make_unique<oxBool>(true), "Checked"},
        {name, std::make_unique<oxBool>(false), "Not Checked"},
        {name, std::make_unique<oxAlpha>("Ann"), "Ann"},
    };
    for (const Case& c : cases) EXPECT_EQ(oxdmAuditImpl::ValForAudit(c.column, c.value.get()).str(), c.text);
}

// A root buffer over the order lines: a key of two columns, and a table
// whose definition has no audit mode.
class LinesTest : public AuditTest {
protected:
    void OpenLines() {
        buffer_.reset();
        query_ = std::make_unique<oxdmQuery>("lines");
        oxdmQueryNode* node = query_->SetRoot(Spec(), 3, 0, "line", kAllRights | oxdmQueryNode::StyleCreateFile);
        node->AddAllColumns(true, true, false);
        buffer_ = std::make_unique<oxdmBufferedFileDataSource>(query_.get(), &task_,
                                                               static_cast<oxdmFileManager*>(nullptr));
        buffer_->SetWindowSize(5);
        buffer_->ReQuery();
    }
};

TEST_F(LinesTest, ACompoundKeyHeadsItsBlockWithTheTableAndOneLinePerKeyColumn) {
    Settings(true, true);
    OpenLines();
    EXPECT_TRUE(StartAudit());
    ASSERT_TRUE(buffer_->MoveToBottom(0, true, false));
    Edit("ORDNO", "A17");
    Edit("LINENO", "3");
    Edit("ITEM", "BOLT-000001");
    Save();
    const std::string key = Log().at(0).recordKey.str();
    EXPECT_EQ(key.substr(0, 5), "A17, ");
    // Not audited: the delete leaves neither a log entry nor a block.
    const size_t entries = Log().size();
    buffer_->SetFocus(0, 0, true);
    oxdmDefaultPresenter().QueueAnswer(oxdmBox::IdYes);
    ASSERT_TRUE(buffer_->DeleteRow(0, true));
    EXPECT_EQ(Log().size(), entries);
    EndAudit();

    const std::vector<std::vector<std::string>> pages = Pages();
    ASSERT_EQ(pages.size(), 1u);
    const std::vector<std::string> body = Body(pages[0]);
    ASSERT_EQ(body.size(), 4u + entries);
    EXPECT_EQ(body[0], "");
    EXPECT_EQ(body[1], Line({{1, "Line Added:"}}));
    EXPECT_EQ(body[2], Line({{3, "Order number A17"}}));
    EXPECT_EQ(body[3], Line({{3, "Line " + key.substr(5)}}));
}

TEST_F(AuditTest, ALogThatCannotBeWrittenIsToldAndTheSaveStands) {
    Settings(true, false);
    Seed(1);
    Open(5);
    sqlite3* db = nullptr;
    ASSERT_EQ(sqlite3_open(Path().c_str(), &db), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(db, "CREATE TABLE _oxdm_audit_log(x INTEGER)", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(db);
    StartAudit();
    buffer_->SetFocus(0, 0, true);
    Edit("NAME", "Renamed");
    Save();
    EXPECT_EQ(FileRecords(), "C0001:Renamed");
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_NE(Boxes()[0].text.Find(("The audit log of '" + Path() + "' could not be written").c_str()), -1)
        << Boxes()[0].text;
}

}  // namespace

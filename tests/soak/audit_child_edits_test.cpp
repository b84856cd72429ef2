// A new line typed under an order whose total is changed too, saved as the
// data manager saves: the order first, then its lines. The audit log must
// show the line once, as added under its own key, and no change to any
// other line.

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "oxdm/audit/audit.h"
#include "oxdm/common/auditlog/audit_log.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/data_manager.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"
#include "soak_run.h"

TEST(AuditOfChildEdits, ParentSaveLogsOnlyTheParentAndTheLineUnderItsOwnKey) {
    ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 1);
    const std::string dir = std::string(OXDM_SOAK_TEST_DIR) + "/audit-" + std::to_string(::getpid());
    SoakOptions options;
    options.processes = 1;
    options.customers = 2;
    options.orders = 2;
    options.lines = 4;
    FileImage initial;
    std::string error;
    ASSERT_TRUE(PrepareSoak(options, dir, initial, error)) << error;
    const std::string second = std::next(initial.orders.begin())->first;

    oxApp app("OX");
    OXSetApp(&app);
    oxdmGlobalData::Instance()->OverrideAuditing(true);
    oxTask task(1, "Soak");
    const oxioFileSpec spec(SoakFilePath(dir).c_str());
    oxdmQuery query("orders");
    oxdmQueryNode* orders = query.SetRoot(spec, 2, 0, "orders", 0x0f);
    orders->AddAllColumns(true, true, false);
    orders->AddChildNode(spec, 3, "ORDNO=ORDNO", 0, "lines", 0x0f)->AddAllColumns(true, true, false);
    {
        oxdmDataManager manager(&query, &task, nullptr);
        oxdmBufferedFileDataSource& buffer = *manager.RootBuffer();
        oxdmBufferedFileDataSource& lines = *buffer.BufferForNode(CString("lines"));
        buffer.SetWindowSize(5);
        lines.SetWindowSize(5);
        buffer.ReQuery();
        oxdmAudit audit(&task);
        audit.Prompt(&query);
        audit.Observe(&buffer);
        audit.Start();

        // The second order's lines are read into the window; a new line is
        // typed below them, and the order's total changes with it.
        buffer.SetFindValue(buffer.IndexForColumn("ORDNO"), CString(second.c_str()));
        ASSERT_TRUE(buffer.FindGE());
        lines.MoveToBottom(0, true, false);
        ASSERT_TRUE(lines.IsNewRow());
        for (const auto& [column, text] : {std::pair{"LINENO", "99"}, {"ITEM", "SOAK-000001"}, {"QTY", "1"}, {"PRICE", "2.00"}})
            ASSERT_TRUE(lines.ObserverSetNewValue(lines.IndexForColumn(column), CString(text), 0, true)) << column;
        ASSERT_TRUE(buffer.ObserverSetNewValue(buffer.IndexForColumn("TOTAL"), CString("1.00"), 0, true));
        ASSERT_TRUE(manager.CommitData());
    }
    OXSetApp(nullptr);
    oxdmGlobalData::Instance()->StopAuditOverride();

    std::vector<oxAuditLogEntry> entries;
    CString text;
    ASSERT_TRUE(oxReadAuditLog(CString(SoakFilePath(dir).c_str()), oxAuditLogFilter{"3", "", "", ""}, entries, text))
        << text;
    for (const oxAuditLogEntry& entry : entries) {
        EXPECT_EQ(entry.recordKey.str(), second + ", 99") << entry.label << " " << entry.column;
        EXPECT_EQ(entry.label.str(), "Added") << entry.recordKey << " " << entry.column;
    }
    EXPECT_EQ(entries.size(), 4u) << "one row for each field of the added line";
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
}

#pragma once
// The audit trail over buffers of the sample customers (see
// buffer_fixture.h), or over the tree of customers, orders and lines (see
// tree_fixture.h): the audit settings in a scratch preferences file, the
// report in a scratch print folder, and readers of both the report's pages
// and the log's entries.

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "tree_fixture.h"
#include "oxdm/audit/audit.h"
#include "oxdm/common/auditlog/audit_log.h"
#include "oxdm/common/shell/box_styles.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/shell/preferences.h"

// `Buffers` is the fixture that makes the audited buffers: BufferTest or TreeTest.
template <class Buffers>
class AuditFixture : public Buffers {
protected:
    void SetUp() override {
        Buffers::SetUp();
        ::setenv("XDG_CONFIG_HOME", (this->Scratch() / "config").c_str(), 1);
        xpref_reload();
        std::filesystem::create_directories(PrintDir());
        ::setenv("OXDM_PRINT_DIR", PrintDir().c_str(), 1);
    }
    void TearDown() override {
        audit_ = oxdmAudit();
        Buffers::TearDown();
        xpref_reload();
    }

    std::filesystem::path PrintDir() const { return this->Scratch() / "print"; }

    // The two preferences, as the operator sets them (2 is on).
    static void Settings(bool audit, bool print) {
        ASSERT_EQ(xpref_put_value(2, "General", "Audit Trail", audit ? 2 : 0), 0);
        ASSERT_EQ(xpref_put_value(2, "General", "Print Audit Trail", print ? 2 : 0), 0);
    }

    // Audits the root buffer made last; a print box, if any, is answered with
    // `answer` (0: its default button, OK). Answers what Prompt answered.
    bool StartAudit(int answer = 0, oxdmAuditImpl* impl = nullptr) {
        audit_ = impl ? oxdmAudit(impl) : oxdmAudit(&this->task_);
        if (answer != 0) oxdmDefaultPresenter().QueueAnswer(answer);
        const bool answered = audit_.Prompt(this->query_.get());
        audit_.Observe(this->buffer_.get());
        return answered;
    }
    // Ends the audit, which ends its report.
    void EndAudit() { audit_ = oxdmAudit(); }

    // Sets a column of the focus row.
    void Edit(const char* column, const char* text) {
        ASSERT_TRUE(this->buffer_->ObserverSetNewValue(this->buffer_->IndexForColumn(column), text, 0, true))
            << column;
    }
    void Save() { ASSERT_TRUE(this->buffer_->ValidateRow(0, true)); }

    // The report's text files in the print folder.
    std::vector<std::filesystem::path> Reports() const {
        std::vector<std::filesystem::path> found;
        for (const auto& entry : std::filesystem::directory_iterator(PrintDir()))
            if (entry.path().extension() == ".txt") found.push_back(entry.path());
        return found;
    }
    // The pages of the one report, each a list of lines.
    std::vector<std::vector<std::string>> Pages() const {
        const std::vector<std::filesystem::path> reports = Reports();
        EXPECT_EQ(reports.size(), 1u);
        std::vector<std::vector<std::string>> pages(1);
        std::ifstream in(reports.empty() ? std::filesystem::path() : reports[0]);
        for (std::string line; std::getline(in, line);) {
            for (size_t feed; (feed = line.find('\f')) != std::string::npos; line.erase(0, feed + 1))
                pages.emplace_back();
            pages.back().push_back(line);
        }
        return pages;
    }
    // The lines of a page below its titles, blank line and two headings.
    static std::vector<std::string> Body(const std::vector<std::string>& page) {
        constexpr size_t kHeadLines = 5;
        return page.size() > kHeadLines ? std::vector<std::string>(page.begin() + kHeadLines, page.end())
                                        : std::vector<std::string>();
    }
    // A report line from its parts: each text at its column.
    static std::string Line(const std::vector<std::pair<size_t, std::string>>& parts) {
        std::string line;
        for (const auto& [column, text] : parts) {
            if (line.size() < column) line.resize(column, ' ');
            line.replace(column, text.size(), text);
        }
        return line;
    }

    std::vector<oxAuditLogEntry> Log(const oxAuditLogFilter& filter = {}) const {
        std::vector<oxAuditLogEntry> entries;
        CString error;
        EXPECT_TRUE(oxReadAuditLog(this->Path().c_str(), filter, entries, error)) << error;
        return entries;
    }
    // The log's entries as "label key column:old>new", one per entry.
    std::vector<std::string> LogLines() const {
        std::vector<std::string> lines;
        for (const oxAuditLogEntry& e : Log())
            lines.push_back((e.label + " " + e.recordKey + " " + e.column + ":" + e.oldValue + ">" + e.newValue).str());
        return lines;
    }

    oxdmAudit audit_;
};

using AuditTest = AuditFixture<BufferTest>;
using AuditTreeTest = AuditFixture<TreeTest>;

#include "console_audit.h"

#include <cstdio>
#include <cstring>
#include <utility>

#include "oxdm/common/auditlog/audit_log.h"
#include "oxdm/common/print/print.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/shell/preferences.h"
#include "oxdm/common/shell/task.h"

namespace {

// Where the audit settings live: scope, key and the value meaning "on".
constexpr short kSettingsScope = 2;
constexpr const char* kSettingsKey = "General";
constexpr long kOn = 2;
// The report's line is as wide as the audit's last column (62) and a value.
constexpr short kReportWidth = 87;

void CopyText(const std::string& text, char* to, size_t size) {
    std::strncpy(to, text.c_str(), size - 1);
    to[size - 1] = '\0';
}

// Opens the print job of the report; 0 when it could not be opened.
short OpenReport(const oxTask& task, const std::string& path) {
    xp_print_def report;
    std::memset(&report, 0, sizeof report);
    CopyText(task.Caption().str(), report.title1, sizeof report.title1);
    CopyText("Audit Report", report.title2, sizeof report.title2);
    report.orientation = XP_PORTRAIT;
    report.width = kReportWidth;
    return xp_open(&report, path.c_str());
}

}  // namespace

ConsoleAudit::ConsoleAudit(oxTask& task, const oxdmQuery& query, oxdmBufferedFileDataSource& root,
                           std::string reportPath)
    : reportPath_(std::move(reportPath)), audit_(&task) {
    oxdmGlobalData* settings = oxdmGlobalData::Instance();
    if (!reportPath_.empty()) {
        // Printing follows the settings; auditing is held on below either way.
        xpref_put_value(kSettingsScope, kSettingsKey, "Audit Trail", kOn);
        xpref_put_value(kSettingsScope, kSettingsKey, "Print Audit Trail", kOn);
        settings->RefreshAuditing();
        printHandle_ = OpenReport(task, reportPath_);
        if (printHandle_ == 0) {
            std::printf("note: the audit report %s could not be opened; auditing goes to the log alone\n",
                        reportPath_.c_str());
            reportPath_.clear();
        }
    }
    settings->OverrideAuditing(true);
    audit_->InitAuditWithoutHub(&query, printHandle_);
    audit_->Start();
    audit_->Observe(&root);
}

ConsoleAudit::~ConsoleAudit() {
    // The last handle ends the trail; then the job's pages are written.
    audit_.reset();
    oxdmGlobalData::Instance()->StopAuditOverride();
    if (printHandle_ == 0) return;
    if (xp_close(printHandle_) == XP_OK) {
        std::printf("audit report: %s.pdf (and %s.txt)\n", reportPath_.c_str(), reportPath_.c_str());
    } else {
        std::printf("note: the audit report %s could not be written\n", reportPath_.c_str());
    }
}

std::string AuditLine(const oxAuditLogEntry& entry) {
    char sequence[32];
    std::snprintf(sequence, sizeof sequence, "#%lld ", entry.sequence);
    return sequence + entry.time.str() + " " + entry.operatorId.str() + " " + entry.tableName.str() + " " +
           entry.recordKey.str() + " " + entry.label.str() + " " + entry.column.str() + ": '" + entry.oldValue.str() +
           "' -> '" + entry.newValue.str() + "'";
}

bool ReadAuditLines(const std::string& path, std::vector<std::string>& lines, std::string& error) {
    std::vector<oxAuditLogEntry> entries;
    CString readError;
    if (!oxReadAuditLog(CString(path.c_str()), oxAuditLogFilter(), entries, readError)) {
        error = readError.str();
        return false;
    }
    lines.clear();
    for (const oxAuditLogEntry& entry : entries) lines.push_back(AuditLine(entry));
    return true;
}

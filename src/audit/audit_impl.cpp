// oxdmAuditImpl: the settings, the print job and the observers. The lines
// of the report and the log entries are in audit_report.cpp.

#include <cstring>

#include "oxdm/audit/audit_impl.h"
#include "oxdm/base/functor.h"
#include "oxdm/common/shell/global_data.h"
#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/column_def.h"
#include "oxdm/notify/change.h"
#include "oxdm/notify/change_mgr.h"

namespace {

// The report's layout: the job's names, its width and orientation.
constexpr const char* kJobName = "Audit Report";
constexpr const char* kJobShortName = "audit report";
constexpr short kReportWidth = 87;

using ChangeFunctor = CBFunctor1<mvcChange*>;

}  // namespace

oxdmAuditImpl::oxdmAuditImpl(oxTask* task) : task(task) {}

oxdmAuditImpl::~oxdmAuditImpl() {
    if (observerId != 0) mvcChangeMgr::Instance()->UnregisterAll(observerId);
    oxdmAuditImpl::Finish();
}

bool oxdmAuditImpl::Prompt(const oxdmQuery* query) {
    print = true;
    DoPrintHub(query);
    // The hub answers through its callbacks before it returns, so the
    // confirmation is over here; a hub that could not start leaves nothing
    // to wait for and the report off.
    waiting = false;
    return print;
}

void oxdmAuditImpl::DoPrintHub(const oxdmQuery* query) {
    if (!OkToAudit(query)) {
        waiting = false;
        return;
    }
    active = true;
    print = oxdmGlobalData::Instance()->PrintAudit();
    if (!print) {
        waiting = false;
        return;
    }
    xh_process_def def;
    std::memset(&def, 0, sizeof def);
    xp_print_def report;
    std::memset(&report, 0, sizeof report);
    CopyToAlpha(task ? task->Caption() : CString(), report.title1, sizeof report.title1);
    CopyToAlpha(kJobName, report.title2, sizeof report.title2);
    report.orientation = XP_PORTRAIT;
    report.width = kReportWidth;
    std::memcpy(&def.report, &report, sizeof report);
    def.process_id = xh_process_id();
    CopyToAlpha(kJobName, def.name, sizeof def.name);
    CopyToAlpha(kJobShortName, def.short_name, sizeof def.short_name);
    def.process = &oxdmAuditImpl::StaticHubPrintProcess;
    def.terminate = &oxdmAuditImpl::StaticHubTerminate;
    def.user_data = this;
    // The report stays off until the operator confirms; the hub calls back
    // before it returns, so this must be set first.
    print = false;
    waiting = true;
    hub = xh_process_hub(&def);
}

bool oxdmAuditImpl::OkToAudit(const oxdmQuery*) const {
    oxdmGlobalData* settings = oxdmGlobalData::Instance();
    settings->RefreshAuditing();
    return settings->Auditing();
}

short oxdmAuditImpl::HubPrintProcess(xh_process_def* process) {
    xw_start_wait("");
    printHandle = process->handle;
    // The report is on from here, so that Start sets its headings.
    print = true;
    waiting = false;
    if (active) {
        GetHeadings();
        Start();
    }
    xw_stop_wait();
    return 0;
}

void oxdmAuditImpl::HubTerminate() {
    hub = 0;
    waiting = false;
}

void oxdmAuditImpl::GetHeadings() {}

bool oxdmAuditImpl::InitAuditWithoutHub(const oxdmQuery* query, short handle) {
    if (!OkToAudit(query)) return false;
    active = true;
    print = oxdmGlobalData::Instance()->PrintAudit();
    printHandle = handle;
    return true;
}

void oxdmAuditImpl::Start() {
    if (!active || !print) return;
    if (hub > 0) xw_hide_window(hub);
    struct Heading {
        const char* text;
        short column;
    };
    const Heading line1[] = {{" ", 0}};
    const Heading line2[] = {{"Field Name", 4}, {"Old Value", 33}, {"New Value", 62}};
    auto put = [this](const Heading* headings, size_t count, short line) {
        for (size_t i = 0; i < count; ++i) {
            xp_field_def field;
            std::memset(&field, 0, sizeof field);
            x_value_def value;
            std::memset(&value, 0, sizeof value);
            field.column = headings[i].column;
            CopyToAlpha(headings[i].text, value.text, sizeof value.text);
            value.kind = XV_TEXT;
            xpPutField(printHandle, &field, &value);
        }
        xpSetLine(printHandle, 0, line);
    };
    put(line1, std::size(line1), 1);
    put(line2, std::size(line2), 2);
}

void oxdmAuditImpl::Finish() {
    if (!active) return;
    if (print && hub > 0) {
        xw_send_message(hub, XH_MSG_END_REPORT, 0, 0, 0, 0, 0);
        xw_send_message(hub, XH_MSG_CLOSE, 0, 0, 0, 0, 0);
        hub = 0;
    }
    active = false;
}

void oxdmAuditImpl::Observe(oxdmBufferedFileDataSource* source) {
    if (!active || source == nullptr) return;
    auto* tag = static_cast<ChangeFunctor*>(nullptr);
    source->AddObserver(oxdmDataSource::DSColChanged, observerId,
                        makeFunctor(tag, *this, &oxdmAuditImpl::mvcColumnChanged));
    source->AddObserver(oxdmDataSource::DSRowStateChanged, observerId,
                        makeFunctor(tag, *this, &oxdmAuditImpl::mvcRowStateChanged));
    source->AddObserver(oxdmDataSource::DSRowDeleted, observerId,
                        makeFunctor(tag, *this, &oxdmAuditImpl::mvcRowDeleted));
    for (size_t i = 0; i < source->Children().size(); ++i) Observe(source->Children()[i]);
}

void oxdmAuditImpl::mvcColumnChanged(mvcChange* change) {
    auto* colChange = dynamic_cast<mvcColChange*>(change);
    if (!active || colChange == nullptr) return;
    auto* source = dynamic_cast<oxdmBufferedFileDataSource*>(change->Subject());
    if (source == nullptr) return;
    const short col = colChange->Col();
    oxdmDSColumnBase* column = source->ColumnForIndex(col);
    const oxdmColumnDef* def = column ? column->OXColumn() : nullptr;
    // A column of no table is computed: nothing of it is stored, nothing audited.
    if (def == nullptr || def->Table() == nullptr) return;
    const oxData* oldValue = source->OldValue(col);
    const oxData* newValue = source->NewValue(col);
    ColumnChange entry;
    if (!source->IsNewRow() && oldValue) entry.oldValue = ValForAudit(column, oldValue);
    if (newValue) entry.newValue = ValForAudit(column, newValue);
    // The row's old value is the one before the latest edit: a column edited
    // again keeps the old text of its first edit, and takes the new text.
    TableChanges& columns = changes[def->Table()];
    if (auto pending = columns.find(def); pending != columns.end()) entry.oldValue = pending->second.oldValue;
    columns[def] = entry;
}

void oxdmAuditImpl::mvcRowStateChanged(mvcChange* change) {
    auto* state = dynamic_cast<oxdmRowStateChange*>(change);
    if (!active || state == nullptr) return;
    auto* source = dynamic_cast<oxdmBufferedFileDataSource*>(change->Subject());
    if (source == nullptr) return;
    switch (state->Cause()) {
        case oxdmRowStateChange::CauseRowReverted:
            WriteCancel(source);
            break;
        case oxdmRowStateChange::CauseRowInserted:
            WriteChanges("Added", source);
            break;
        case oxdmRowStateChange::CauseRowValidated:
            WriteChanges("Changed", source);
            break;
        default:
            break;
    }
}

void oxdmAuditImpl::mvcRowDeleted(mvcChange* change) {
    if (!active) return;
    // Only the record cursor raises this code on a buffer, always with the
    // node it deleted from.
    auto* nodeChange = dynamic_cast<oxdmMVCCursorNodeChange*>(change);
    auto* cursor = nodeChange ? dynamic_cast<oxdmOXIOCursorNode*>(nodeChange->Cursor()) : nullptr;
    auto* source = dynamic_cast<oxdmBufferedFileDataSource*>(change->Subject());
    if (cursor == nullptr || source == nullptr) return;
    WriteDelete(source->BufferForNode(*cursor->QueryNode()), cursor);
}

short oxdmAuditImpl::StaticHubPrintProcess(xh_process_def* process) {
    return static_cast<oxdmAuditImpl*>(process->user_data)->HubPrintProcess(process);
}

void oxdmAuditImpl::StaticHubTerminate(void* object) { static_cast<oxdmAuditImpl*>(object)->HubTerminate(); }

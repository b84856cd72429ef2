#include "oxdm/audit/audit.h"

oxdmAudit::oxdmAudit(oxTask* task) : impl(new oxdmAuditImpl(task)) {}

oxdmAudit::oxdmAudit(oxdmAuditImpl* impl) : impl(impl) {}

bool oxdmAudit::Prompt(const oxdmQuery* query) { return impl ? impl->Prompt(query) : true; }

void oxdmAudit::Observe(oxdmBufferedFileDataSource* source) {
    if (impl) impl->Observe(source);
}

bool oxdmAudit::InitAuditWithoutHub(const oxdmQuery* query, short printHandle) {
    return impl ? impl->InitAuditWithoutHub(query, printHandle) : false;
}

void oxdmAudit::Start() {
    if (impl) impl->Start();
}

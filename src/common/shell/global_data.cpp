#include "oxdm/common/shell/global_data.h"

#include "oxdm/common/shell/preferences.h"
#include "oxdm/common/shell/presenter.h"

namespace {

// Scope, section and the answer that means "on" for the audit settings.
constexpr short kAuditScope = 2;
constexpr const char* kAuditSection = "General";
constexpr long kSettingOn = 2;

bool SettingOn(const char* name) {
    return xpref_get_value(kAuditScope, kAuditSection, name, 1, nullptr) == kSettingOn;
}

}  // namespace

oxdmGlobalData* oxdmGlobalData::m_Instance = nullptr;

oxdmGlobalData* oxdmGlobalData::Instance() {
    if (!m_Instance) m_Instance = new oxdmGlobalData;
    return m_Instance;
}

void oxdmGlobalData::KillInstance() {
    delete m_Instance;
    m_Instance = nullptr;
}

void oxdmGlobalData::DisplayStatus(const CString& text, bool beep) {
    oxdmCurrentPresenter().DisplayStatus(text, beep);
}

void oxdmGlobalData::RefreshAuditing() {
    if (m_override) return;
    m_auditing = SettingOn("Audit Trail");
    m_printAudit = m_auditing && SettingOn("Print Audit Trail");
}

void oxdmGlobalData::OverrideAuditing(bool on) {
    m_auditing = on;
    m_override = true;
}

void oxdmGlobalData::StopAuditOverride() {
    m_override = false;
    RefreshAuditing();
}

#include "oxdm/common/shell/global_data.h"

#include "oxdm/common/shell/presenter.h"

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

#pragma once
// oxdmGlobalData: the process-wide object of the library behind the status
// line (and, with the preferences, the audit settings). Made at first use by
// Instance(); ended by KillInstance().

#include "oxdm/base/cstring.h"

class oxdmGlobalData {
public:
    static oxdmGlobalData* Instance();
    static void KillInstance();

    virtual ~oxdmGlobalData() = default;

    // Shows text on the status line; with beep and a non-empty text, beeps.
    void DisplayStatus(const CString& text, bool beep);

protected:
    oxdmGlobalData() = default;

private:
    static oxdmGlobalData* m_Instance;
};

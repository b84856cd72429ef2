#pragma once
// oxdmGlobalData: the process-wide object of the library behind the status
// line and the audit settings. Made at first use by Instance(); ended by
// KillInstance().

#include "oxdm/base/cstring.h"

class oxdmGlobalData {
public:
    static oxdmGlobalData* Instance();
    static void KillInstance();

    virtual ~oxdmGlobalData() = default;

    // Shows text on the status line; with beep and a non-empty text, beeps.
    void DisplayStatus(const CString& text, bool beep);

    // Reads the audit settings from the user's preferences ("General",
    // "Audit Trail" and "Print Audit Trail"; a setting is on when it holds 2),
    // unless an override is active. Printing is off whenever auditing is.
    void RefreshAuditing();
    // Sets auditing to on and holds it there against RefreshAuditing until
    // StopAuditOverride. Leaves the print setting as it is.
    void OverrideAuditing(bool on);
    void StopAuditOverride();

    bool Auditing() const { return m_auditing; }
    bool PrintAudit() const { return m_printAudit; }

protected:
    oxdmGlobalData() = default;

private:
    static oxdmGlobalData* m_Instance;

    // m_auditing and m_printAudit are what the last refresh read, or what the
    // override set; m_printAudit is false whenever the last refresh found
    // auditing off. m_override true: RefreshAuditing leaves both alone.
    bool m_auditing = false;
    bool m_override = false;
    bool m_printAudit = false;
};

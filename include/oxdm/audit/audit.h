#pragma once
// oxdmAudit: the application's handle on an audit trail. Copies share one
// oxdmAuditImpl; the last handle deletes it, which unregisters its observers
// and ends its print job. A handle without a body does nothing, and its
// Prompt answers true.

#include "oxdm/audit/audit_impl.h"
#include "oxdm/base/smart_ptr.h"

class oxdmAudit {
public:
    // Without a body.
    oxdmAudit() = default;
    // With a new oxdmAuditImpl for `task` (not owned, may be null).
    explicit oxdmAudit(oxTask* task);
    // Takes over `impl` (a derived report, say); null makes a handle without a body.
    explicit oxdmAudit(oxdmAuditImpl* impl);
    virtual ~oxdmAudit() = default;

    virtual bool Prompt(const oxdmQuery* query);
    virtual void Observe(oxdmBufferedFileDataSource* source);
    virtual bool InitAuditWithoutHub(const oxdmQuery* query, short printHandle);
    virtual void Start();

    // The body, null for none.
    oxdmAuditImpl* Impl() const { return impl.get(); }

private:
    // The only field: shared with every copy of this handle.
    oxCountedPtr<oxdmAuditImpl> impl;
};

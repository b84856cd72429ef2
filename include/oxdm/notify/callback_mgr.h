#pragma once
// The callback registry of an application: three keyed maps (rows by node
// label, columns by name, controls by user id), the application's data and
// the root control manager.
//
// oxdmCallbackMgr is the handle the application holds: copying it shares the
// one registry, and the last copy deletes it. Objects bind to it with
// SetCallbacks, which copies the functors into their own chains: registering
// later has no effect on an object already bound.

#include "oxdm/base/cstring.h"
#include "oxdm/base/functor.h"
#include "oxdm/base/smart_ptr.h"
#include "oxdm/notify/callback_info.h"
#include "oxdm/notify/callback_maps.h"

class oxdmControlMgr;

class oxdmCallbackMgrImpl {
public:
    using Functor = CBFunctor1wRet<oxdmCallbackInfo*, int>;

    virtual ~oxdmCallbackMgrImpl() = default;
    virtual void SetRowCallback(const CString& name, int item, const Functor& cb) = 0;
    virtual void SetColCallback(const CString& name, int item, const Functor& cb) = 0;
    virtual void SetCtrlCallback(unsigned short id, int item, const Functor& cb) = 0;
    virtual oxdmRowCallbacks& RowCallbacks() = 0;
    virtual const oxdmRowCallbacks& RowCallbacks() const = 0;
    virtual oxdmColCallbacks& ColCallbacks() = 0;
    virtual const oxdmColCallbacks& ColCallbacks() const = 0;
    virtual oxdmCtrlCallbacks& CtrlCallbacks() = 0;
    virtual const oxdmCtrlCallbacks& CtrlCallbacks() const = 0;
    virtual void SetAppData(const oxBase::SmartPtr<oxdmAppEventData>& data) = 0;
    virtual const oxBase::SmartPtr<oxdmAppEventData>& AppData() const = 0;
    virtual oxdmControlMgr* RootControlMgr() = 0;
    virtual const oxdmControlMgr* RootControlMgr() const = 0;
};

class _oxCallbackMgr : public oxdmCallbackMgrImpl {
public:
    explicit _oxCallbackMgr(oxdmControlMgr* root) : rootControlMgr(root) {}

    void SetRowCallback(const CString& name, int item, const Functor& cb) override;
    void SetColCallback(const CString& name, int item, const Functor& cb) override;
    void SetCtrlCallback(unsigned short id, int item, const Functor& cb) override;
    oxdmRowCallbacks& RowCallbacks() override { return rowCallbacks; }
    const oxdmRowCallbacks& RowCallbacks() const override { return rowCallbacks; }
    oxdmColCallbacks& ColCallbacks() override { return colCallbacks; }
    const oxdmColCallbacks& ColCallbacks() const override { return colCallbacks; }
    oxdmCtrlCallbacks& CtrlCallbacks() override { return ctrlCallbacks; }
    const oxdmCtrlCallbacks& CtrlCallbacks() const override { return ctrlCallbacks; }
    void SetAppData(const oxBase::SmartPtr<oxdmAppEventData>& data) override { appData = data; }
    const oxBase::SmartPtr<oxdmAppEventData>& AppData() const override { return appData; }
    oxdmControlMgr* RootControlMgr() override { return rootControlMgr; }
    const oxdmControlMgr* RootControlMgr() const override { return rootControlMgr; }

private:
    // The maps own their functors; appData is shared with whoever set it;
    // rootControlMgr is not owned and may be null.
    oxdmRowCallbacks rowCallbacks;
    oxdmColCallbacks colCallbacks;
    oxdmCtrlCallbacks ctrlCallbacks;
    oxBase::SmartPtr<oxdmAppEventData> appData;
    oxdmControlMgr* rootControlMgr;
};

class oxdmCallbackMgr {
public:
    using Functor = CBFunctor1wRet<oxdmCallbackInfo*, int>;

    // A new registry. root is the application's root control manager, may be
    // null, and is not owned.
    explicit oxdmCallbackMgr(oxdmControlMgr* root);

    void SetRowCallback(const CString& nodeName, oxdmRowCallbacks::Item item, const Functor& cb);
    void SetColCallback(const CString& colName, oxdmColCallbacks::Item item, const Functor& cb);
    // item is an oxdmCtrlCallbacks::Item value.
    void SetCtrlCallback(unsigned short userId, int item, const Functor& cb);

    const oxdmRowCallbacks& RowCallbacks() const { return impl->RowCallbacks(); }
    const oxdmColCallbacks& ColCallbacks() const { return impl->ColCallbacks(); }
    const oxdmCtrlCallbacks& CtrlCallbacks() const { return impl->CtrlCallbacks(); }

    void SetAppData(const oxBase::SmartPtr<oxdmAppEventData>& data) { impl->SetAppData(data); }
    const oxBase::SmartPtr<oxdmAppEventData>& AppData() const { return impl->AppData(); }

    oxdmControlMgr* RootControlMgr() { return impl->RootControlMgr(); }
    const oxdmControlMgr* RootControlMgr() const { return impl->RootControlMgr(); }

    // Adds the entries of other whose keys this registry does not have.
    void Merge(const oxdmRowCallbacks& other) { impl->RowCallbacks().Merge(other); }
    void Merge(const oxdmColCallbacks& other) { impl->ColCallbacks().Merge(other); }
    void Merge(const oxdmCtrlCallbacks& other) { impl->CtrlCallbacks().Merge(other); }

private:
    // Invariant: impl is never empty. Copies of this handle share it.
    oxBase::SmartPtr<oxdmCallbackMgrImpl> impl;
};

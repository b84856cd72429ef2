#include "oxdm/notify/callback_mgr.h"

void _oxCallbackMgr::SetRowCallback(const CString& name, int item, const Functor& cb) {
    rowCallbacks.SetCallback(name, item, cb);
}

void _oxCallbackMgr::SetColCallback(const CString& name, int item, const Functor& cb) {
    colCallbacks.SetCallback(name, item, cb);
}

void _oxCallbackMgr::SetCtrlCallback(unsigned short id, int item, const Functor& cb) {
    ctrlCallbacks.SetCallback(id, item, cb);
}

oxdmCallbackMgr::oxdmCallbackMgr(oxdmControlMgr* root) : impl(new _oxCallbackMgr(root)) {}

void oxdmCallbackMgr::SetRowCallback(const CString& nodeName, oxdmRowCallbacks::Item item, const Functor& cb) {
    impl->SetRowCallback(nodeName, item, cb);
}

void oxdmCallbackMgr::SetColCallback(const CString& colName, oxdmColCallbacks::Item item, const Functor& cb) {
    impl->SetColCallback(colName, item, cb);
}

void oxdmCallbackMgr::SetCtrlCallback(unsigned short userId, int item, const Functor& cb) {
    impl->SetCtrlCallback(userId, item, cb);
}

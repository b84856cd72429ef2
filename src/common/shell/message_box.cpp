#include "oxdm/common/shell/message_box.h"

#include "oxdm/common/shell/presenter.h"
#include "oxdm/common/shell/task.h"

namespace {

int g_modalDepth = 0;

}  // namespace

oxdmMessageBox::oxdmMessageBox(const CString& text, const CString& title, unsigned style)
    : answer_(oxdmCurrentPresenter().MessageBox(text, title, style, 0)) {}

oxdmMessageBox::oxdmMessageBox(const CString& text, unsigned style, unsigned help)
    : answer_(oxdmCurrentPresenter().MessageBox(text, OXGetApp() ? OXGetApp()->Code() : CString(), style, help)) {}

void TaskWindowLookup::PreModalDialogCall(const oxTask*, oxWindowHandle) { ++g_modalDepth; }

void TaskWindowLookup::PostModalDialogCall() {
    if (g_modalDepth > 0) --g_modalDepth;
}

int TaskWindowLookup::ModalDepth() { return g_modalDepth; }

oxWindowHandle GetTopmostAppWindow() { return nullptr; }

CString oxdmTaskBoxTitle(const oxTask* task) { return task ? task->Caption() : CString("Warning"); }

int oxdmTaskMessageBox(const oxTask* task, const CString& text, unsigned style) {
    TaskWindowLookup::PreModalDialogCall(task, GetTopmostAppWindow());
    oxdmMessageBox box(text, oxdmTaskBoxTitle(task), style);
    TaskWindowLookup::PostModalDialogCall();
    return box.value();
}

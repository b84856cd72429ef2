#pragma once
// oxdmMessageBox: a box shown from the constructor, which keeps the answer.
// Boxes asked for on behalf of a task are bracketed by
// TaskWindowLookup::PreModalDialogCall and PostModalDialogCall.

#include "oxdm/base/cstring.h"
#include "oxdm/common/shell/box_styles.h"

class oxTask;

class oxdmMessageBox {
public:
    // A plain box with a title.
    oxdmMessageBox(const CString& text, const CString& title, unsigned style);
    // A box of the application, titled with the application's code, with a
    // help context.
    oxdmMessageBox(const CString& text, unsigned style, unsigned help);

    int value() const { return answer_; }
    bool isOk() const { return answer_ == oxdmBox::IdOK; }
    bool isCancel() const { return answer_ == oxdmBox::IdCancel; }
    bool isYes() const { return answer_ == oxdmBox::IdYes; }
    bool isNo() const { return answer_ == oxdmBox::IdNo; }
    bool isAbort() const { return answer_ == oxdmBox::IdAbort; }
    bool isRetry() const { return answer_ == oxdmBox::IdRetry; }
    bool isIgnore() const { return answer_ == oxdmBox::IdIgnore; }

private:
    int answer_;
};

// Window handles are opaque to the data layer.
using oxWindowHandle = void*;

// Brackets a modal dialog: the window layer disables the task's windows
// before and enables them after. Calls nest; the depth is kept for the
// window layer and for tests.
class TaskWindowLookup {
public:
    static void PreModalDialogCall(const oxTask* task, oxWindowHandle topmost);
    static void PostModalDialogCall();
    static int ModalDepth();
};

// The topmost window of the application, null without a window layer.
oxWindowHandle GetTopmostAppWindow();

// The title of a box asked for on behalf of task: its caption, or "Warning"
// without a task.
CString oxdmTaskBoxTitle(const oxTask* task);

// Asks one question on behalf of task: the box titled by oxdmTaskBoxTitle,
// between PreModalDialogCall and PostModalDialogCall. Answers the button.
int oxdmTaskMessageBox(const oxTask* task, const CString& text, unsigned style);

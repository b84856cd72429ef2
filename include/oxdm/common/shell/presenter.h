#pragma once
// The user-interaction seam. Every question the library asks, every status
// text and every wait state goes through one replaceable presenter, so that
// a test can read exactly what the operator would have seen and choose the
// answers, and a window backend can show real dialogs.
//
// Ownership: the presenter installed with oxdmSetPresenter is not owned by
// the library; it must outlive its installation. The default presenter is a
// process-wide oxdmHeadlessPresenter that the library owns.

#include <deque>
#include <vector>

#include "oxdm/base/cstring.h"

class oxdmPresenter {
public:
    virtual ~oxdmPresenter() = default;
    // Shows a box and answers the button pressed (oxdmBox::Id*).
    virtual int MessageBox(const CString& text, const CString& title, unsigned style, unsigned helpContext) = 0;
    virtual void DisplayStatus(const CString& text, bool beep) = 0;
    virtual void StartWait(const CString& text) = 0;
    virtual void StopWait() = 0;
};

// One box as the headless presenter saw it.
struct oxdmShownBox {
    CString text;
    CString title;
    unsigned style = 0;
    int answer = 0;
};

// The default presenter: shows nothing, records everything, and answers
// boxes from a queue; with an empty queue it answers the style's default
// button, as a window system does when the operator presses Enter.
class oxdmHeadlessPresenter : public oxdmPresenter {
public:
    int MessageBox(const CString& text, const CString& title, unsigned style, unsigned helpContext) override;
    void DisplayStatus(const CString& text, bool beep) override;
    void StartWait(const CString& text) override;
    void StopWait() override;

    // The answer given to the next box; answers are used in the order queued.
    void QueueAnswer(int answer) { answers_.push_back(answer); }

    const std::vector<oxdmShownBox>& Boxes() const { return boxes_; }
    const std::vector<CString>& StatusTexts() const { return statusTexts_; }
    int Beeps() const { return beeps_; }
    // Nesting depth of StartWait/StopWait; never below 0.
    int WaitDepth() const { return waitDepth_; }

    // Forgets every box, status text, beep, queued answer and wait state.
    void Clear();

private:
    std::deque<int> answers_;
    std::vector<oxdmShownBox> boxes_;
    std::vector<CString> statusTexts_;
    int beeps_ = 0;
    int waitDepth_ = 0;
};

// Installs presenter and answers the former one; null puts the default back.
oxdmPresenter* oxdmSetPresenter(oxdmPresenter* presenter);
// The presenter in force; never null.
oxdmPresenter& oxdmCurrentPresenter();
// The library's own headless presenter (the default), for tests that did not
// install one of their own.
oxdmHeadlessPresenter& oxdmDefaultPresenter();

// Shows and hide a wait state through the presenter.
void xw_start_wait(const char* text);
void xw_stop_wait();

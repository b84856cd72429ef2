#include "oxdm/common/shell/presenter.h"

#include "oxdm/common/shell/box_styles.h"

namespace {

oxdmPresenter* g_installed = nullptr;  // not owned; null means the default

}  // namespace

int oxdmBox::DefaultAnswer(unsigned style) {
    const unsigned def = (style & DefButtonMask) >> 8;  // 0, 1 or 2
    auto pick = [def](std::initializer_list<int> buttons) {
        return def < buttons.size() ? *(buttons.begin() + def) : *buttons.begin();
    };
    switch (style & ButtonMask) {
    case OKCancel: return pick({IdOK, IdCancel});
    case AbortRetryIgnore: return pick({IdAbort, IdRetry, IdIgnore});
    case YesNoCancel: return pick({IdYes, IdNo, IdCancel});
    case YesNo: return pick({IdYes, IdNo});
    case RetryCancel: return pick({IdRetry, IdCancel});
    default: return IdOK;
    }
}

int oxdmHeadlessPresenter::MessageBox(const CString& text, const CString& title, unsigned style, unsigned) {
    int answer;
    if (answers_.empty()) {
        answer = oxdmBox::DefaultAnswer(style);
    } else {
        answer = answers_.front();
        answers_.pop_front();
    }
    boxes_.push_back({text, title, style, answer});
    return answer;
}

void oxdmHeadlessPresenter::DisplayStatus(const CString& text, bool beep) {
    statusTexts_.push_back(text);
    if (beep && !text.IsEmpty()) ++beeps_;
}

void oxdmHeadlessPresenter::StartWait(const CString&) { ++waitDepth_; }

void oxdmHeadlessPresenter::StopWait() {
    if (waitDepth_ > 0) --waitDepth_;
}

void oxdmHeadlessPresenter::Clear() { *this = oxdmHeadlessPresenter(); }

oxdmHeadlessPresenter& oxdmDefaultPresenter() {
    static oxdmHeadlessPresenter presenter;
    return presenter;
}

oxdmPresenter* oxdmSetPresenter(oxdmPresenter* presenter) {
    oxdmPresenter* former = &oxdmCurrentPresenter();
    g_installed = presenter;
    return former;
}

oxdmPresenter& oxdmCurrentPresenter() { return g_installed ? *g_installed : oxdmDefaultPresenter(); }

void xw_start_wait(const char* text) { oxdmCurrentPresenter().StartWait(text); }

void xw_stop_wait() { oxdmCurrentPresenter().StopWait(); }

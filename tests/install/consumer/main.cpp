// An outside program that uses the installed library through its umbrella
// header: an observer, a callback registry and the headless presenter.
#include <oxdm/oxdm.h>

#include <cstdio>

namespace {

class Counter : public mvcSubject {};

}  // namespace

int main() {
    Counter subject;
    unsigned long observerId = 0;
    int delivered = 0;
    subject.AddObserver(1, observerId, CBFunctor1<mvcChange*>([&](mvcChange*) { ++delivered; }));
    subject.Notify(new mvcChange(&subject, 1, 0, true), false);
    mvcChangeMgr::Instance()->UnregisterAll(observerId);

    oxdmCallbackMgr callbacks(nullptr);
    callbacks.SetRowCallback("Customer", oxdmRowCallbacks::Item(0),
                             CBFunctor1wRet<oxdmCallbackInfo*, int>([](oxdmCallbackInfo*) { return 7; }));
    const auto* slots = callbacks.RowCallbacks().GetCallbacks("Customer");
    const int answer = slots ? (*slots)[0](nullptr) : 0;

    oxdmMessageBox box("Delete this row?", "Customers", oxdmBox::YesNo | oxdmBox::IconQuestion);
    const auto& boxes = oxdmDefaultPresenter().Boxes();

    if (delivered != 1 || answer != 7 || boxes.size() != 1 || !box.isYes() || boxes[0].title != "Customers") {
        std::printf("consumer failed: delivered %d, answer %d, boxes %zu\n", delivered, answer, boxes.size());
        return 1;
    }
    std::printf("consumer ok\n");
    return 0;
}

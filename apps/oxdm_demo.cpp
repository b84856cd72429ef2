// oxdm-demo: shows what the library holds so far, each step printed as it
// fires: a subject with observers (one of which raises a change of its own
// while being told), a change dropped under suppression, a callback chain
// in which one callback vetoes, and the sample records in SQLite walked as a
// tree of cursors, with a save that meets another program's change.
#include <oxdm/oxdm.h>

#include <cstdio>
#include <cstdlib>

#include "demo_records.h"

namespace {

enum DemoEvent : short { RowEdited = 1, Totals = 2 };

// A subject standing for one screen's buffer.
class Orders : public mvcSubject {
public:
    void Edit(short row) { Notify(new mvcRowChange(row, this, RowEdited, 0, true), false); }
};

// An observer that prints what it hears; it keeps one id for all its
// registrations and removes them all when it goes.
class Printer {
public:
    Printer(const char* name, Orders& orders) : name(name) {
        orders.AddObserver(RowEdited, id,
                           makeFunctor(static_cast<CBFunctor1<mvcChange*>*>(nullptr), *this, &Printer::OnEdit));
        orders.AddObserver(Totals, id,
                           makeFunctor(static_cast<CBFunctor1<mvcChange*>*>(nullptr), *this, &Printer::OnTotals));
    }
    ~Printer() { mvcChangeMgr::Instance()->UnregisterAll(id); }
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

private:
    void OnEdit(mvcChange* change) {
        std::printf("  %s (id %lu): row %d edited\n", name, id, static_cast<mvcRowChange*>(change)->Row());
    }
    void OnTotals(mvcChange*) { std::printf("  %s (id %lu): totals changed\n", name, id); }

    const char* name;
    unsigned long id = 0;
};

void ShowObservers() {
    std::printf("Observers:\n");
    Orders orders;
    Printer grid("grid", orders);
    // Registered between the two printers: raises a change while being told,
    // which everyone hears before the later printer hears the edit.
    unsigned long totalsId = 0;
    orders.AddObserver(RowEdited, totalsId, CBFunctor1<mvcChange*>([&orders](mvcChange* change) {
        std::printf("  totals: row %d edited, recomputing\n", static_cast<mvcRowChange*>(change)->Row());
        orders.Notify(new mvcChange(&orders, Totals, 0, true), false);
    }));
    Printer audit("audit", orders);
    std::printf(" edit row 3:\n");
    orders.Edit(3);

    std::printf(" suppressed, edit row 4:\n");
    orders.SupressNotification(true);
    orders.Edit(4);
    std::printf("  (nobody was told)\n");
    orders.SupressNotification(false);
    mvcChangeMgr::Instance()->UnregisterAll(totalsId);
}

int Say(const char* name, int answer) {
    std::printf("  %s answers %d\n", name, answer);
    return answer;
}

void ShowCallbacks() {
    std::printf("Callbacks:\n");
    using Functor = CBFunctor1wRet<oxdmCallbackInfo*, int>;
    oxdmCallbackMgr mgr(nullptr);
    mgr.SetRowCallback("Order", oxdmRowCallbacks::cbRowValidate,
                       Functor([](oxdmCallbackInfo*) { return Say("application check", 0); }));
    oxdmCallbackMgr roles(nullptr);
    roles.SetRowCallback("Order", oxdmRowCallbacks::cbRowValidate,
                         Functor([](oxdmCallbackInfo*) { return Say("credit limit", 1); }));

    // Binding copies each registry's functor into one chain, in order.
    oxdmCallback chain;
    for (const oxdmCallbackMgr* registry : {&mgr, &roles}) {
        const auto* entry = registry->RowCallbacks().GetCallbacks("Order");
        if (entry) chain += (*entry)[oxdmRowCallbacks::cbRowValidate];
    }
    chain += Functor([](oxdmCallbackInfo*) { return Say("never asked", 0); });

    std::printf(" validate order row (event %d):\n",
                oxdmRowCallbacks::DataSourceEvent(oxdmRowCallbacks::cbRowValidate));
    oxdmCallbackInfo info;
    const int answer = chain(&info);
    std::printf("  chain answers %d: %s\n", answer, answer ? "the write is vetoed" : "the write goes on");
}

}  // namespace

int main(int argc, char** argv) {
    // The sample dictionary is found on OXDM_DICT_PATH; by default, in the
    // source tree's examples/.
    setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 0);
    oxApp app("OX");
    OXSetApp(&app);
    ShowObservers();
    ShowCallbacks();
    const bool ok = ShowRecords(argc > 1 ? argv[1] : OXDM_DEMO_DATA_DIR);
    OXSetApp(nullptr);
    mvcChangeMgr::KillInstance();
    return ok ? 0 : 1;
}

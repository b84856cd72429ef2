// The registry's 16-bit reach: records from position 32,768 on are never
// delivered to and never found again by Register.
#include "notify_fixture.h"

namespace {

using RegistryLimitTest = NotifyTest;

TEST_F(RegistryLimitTest, RecordsPast32768AreNeitherDeliveredNorFound) {
    mvcSubject filler, s;
    const CBFunctor1<mvcChange*> ignore([](mvcChange*) {});
    for (int i = 0; i < 32767; ++i) {
        unsigned long id = 0;
        filler.AddObserver(static_cast<short>(i % 7), id, ignore);
    }
    unsigned long last = 0, beyond = 0;
    s.AddObserver(1, last, Logger("last"));      // position 32,767: the last in reach
    s.AddObserver(1, beyond, Logger("beyond"));  // position 32,768: out of reach

    s.Notify(new mvcChange(&s, 1, 0, true), false);
    EXPECT_EQ(log, (Log{"last"}));

    // Register's search stops at the same place: a second record is made
    // instead of an update of the first.
    s.AddObserver(1, beyond, Logger("beyond-again"));
    // With the fillers gone both records come into reach.
    mvcChangeMgr::Instance()->UnregisterAll(&filler);
    log.clear();
    s.Notify(new mvcChange(&s, 1, 0, true), false);
    EXPECT_EQ(log, (Log{"last", "beyond", "beyond-again"}));

    // Both records belong to the one id and go together.
    s.RemoveObserver(1, beyond);
    log.clear();
    s.Notify(new mvcChange(&s, 1, 0, true), false);
    EXPECT_EQ(log, (Log{"last"}));
}

}  // namespace

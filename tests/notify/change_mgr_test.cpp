// Registration and delivery of the change manager: order, matching, the
// initiator, re-entrancy, ids and the life of the singleton.
#include <stdexcept>

#include "notify_fixture.h"

namespace {

using ChangeMgrTest = NotifyTest;

void Send(mvcSubject& subject, short event, unsigned long initiator = 0, bool notifyInitiator = true) {
    subject.Notify(new mvcChange(&subject, event, initiator, notifyInitiator), false);
}

TEST_F(ChangeMgrTest, DeliversOnlyMatchingSubjectAndEventInRegistrationOrder) {
    mvcSubject a, b;
    unsigned long x = 0, y = 0, z = 0;
    a.AddObserver(1, y, Logger("y"));
    b.AddObserver(1, z, Logger("z-other-subject"));
    a.AddObserver(2, z, Logger("z-other-event"));
    a.AddObserver(1, x, Logger("x"));
    Send(a, 1);
    EXPECT_EQ(log, (Log{"y", "x"}));
}

TEST_F(ChangeMgrTest, RegisteringAgainReplacesTheFunctorAndKeepsTheFirstPlace) {
    mvcSubject s;
    unsigned long first = 0, second = 0;
    s.AddObserver(1, first, Logger("first-old"));
    s.AddObserver(1, second, Logger("second"));
    const unsigned long idBefore = first;
    s.AddObserver(1, first, Logger("first-new"));
    EXPECT_EQ(first, idBefore);
    Send(s, 1);
    EXPECT_EQ(log, (Log{"first-new", "second"}));
}

TEST_F(ChangeMgrTest, IdsAreFreshAndNeverTrustedAtOrAboveTheNextId) {
    mvcSubject s;
    unsigned long a = 0, b = 0;
    s.AddObserver(1, a, Logger("a"));
    s.AddObserver(1, b, Logger("b"));
    EXPECT_EQ(a, 1u);
    EXPECT_EQ(b, 2u);
    unsigned long stale = 3;  // equal to the next id: replaced
    s.AddObserver(1, stale, Logger("stale"));
    EXPECT_EQ(stale, 3u);
    unsigned long far = 1000;
    s.AddObserver(1, far, Logger("far"));
    EXPECT_EQ(far, 4u);
    // One id serves one observer on several subjects.
    mvcSubject t;
    s.AddObserver(2, a, Logger("a2"));
    t.AddObserver(1, a, Logger("a-t"));
    EXPECT_EQ(a, 1u);
}

TEST_F(ChangeMgrTest, UnregisterRemovesExactlyTheMatchingRecords) {
    mvcSubject s, t;
    unsigned long a = 0, b = 0;
    s.AddObserver(1, a, Logger("a1"));
    s.AddObserver(2, a, Logger("a2"));
    t.AddObserver(1, a, Logger("a-t"));
    s.AddObserver(1, b, Logger("b1"));
    s.RemoveObserver(3, a);  // not registered: nothing happens
    s.RemoveObserver(1, a);
    Send(s, 1);
    Send(s, 2);
    Send(t, 1);
    EXPECT_EQ(log, (Log{"b1", "a2", "a-t"}));

    log.clear();
    mvcChangeMgr::Instance()->UnregisterAll(a);
    EXPECT_EQ(a, 0u);
    Send(s, 2);
    Send(t, 1);
    Send(s, 1);
    EXPECT_EQ(log, (Log{"b1"}));

    unsigned long nothing = 77;
    mvcChangeMgr::Instance()->UnregisterAll(nothing);
    EXPECT_EQ(nothing, 0u);
}

TEST_F(ChangeMgrTest, InitiatorIsSkippedOnlyWhenNotToBeToldAndNotZero) {
    mvcSubject s;
    unsigned long a = 0, b = 0;
    s.AddObserver(1, a, Logger("a"));
    s.AddObserver(1, b, Logger("b"));
    Send(s, 1, a, false);
    EXPECT_EQ(log, (Log{"b"}));
    log.clear();
    Send(s, 1, a, true);
    EXPECT_EQ(log, (Log{"a", "b"}));
    log.clear();
    Send(s, 1, 0, false);
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST_F(ChangeMgrTest, ReentrantChangesAreDeliveredDepthFirst) {
    mvcSubject s;
    unsigned long a = 0, b = 0, c = 0;
    s.AddObserver(1, a, CBFunctor1<mvcChange*>([&](mvcChange* change) {
        log.push_back("a:" + std::to_string(change->Event()));
        Send(s, 2);
        // The outer change is still alive after the inner one is gone.
        log.push_back("a-after:" + std::to_string(change->Event()));
    }));
    s.AddObserver(1, b, Logger("b:1"));
    s.AddObserver(2, c, Logger("c:2"));
    Send(s, 1);
    EXPECT_EQ(log, (Log{"a:1", "c:2", "a-after:1", "b:1"}));
}

TEST_F(ChangeMgrTest, ObserverRegisteredDuringDeliveryIsCalledInTheSameDelivery) {
    mvcSubject s;
    unsigned long a = 0, late = 0;
    s.AddObserver(1, a, CBFunctor1<mvcChange*>([&](mvcChange*) {
        log.push_back("a");
        if (late == 0) s.AddObserver(1, late, Logger("late"));
    }));
    Send(s, 1);
    EXPECT_EQ(log, (Log{"a", "late"}));
}

TEST_F(ChangeMgrTest, UnregisteringDuringDeliverySkipsTheRecordThatMovesIntoPlace) {
    mvcSubject s;
    unsigned long a = 0, b = 0, c = 0;
    s.AddObserver(1, a, CBFunctor1<mvcChange*>([&, name = std::string("a")](mvcChange*) {
        mvcChangeMgr::Instance()->UnregisterAll(a);
        // The record is gone from the registry but its functor still runs
        // with its captures intact.
        log.push_back(name);
    }));
    s.AddObserver(1, b, Logger("b"));
    s.AddObserver(1, c, Logger("c"));
    Send(s, 1);
    EXPECT_EQ(log, (Log{"a", "c"}));  // b moved into a's place and was passed
    log.clear();
    Send(s, 1);
    EXPECT_EQ(log, (Log{"b", "c"}));
}

TEST_F(ChangeMgrTest, AnObserverExceptionEndsTheDeliveryAndFreesTheChange) {
    mvcSubject s;
    unsigned long a = 0, b = 0;
    s.AddObserver(1, a, CBFunctor1<mvcChange*>([](mvcChange*) { throw std::runtime_error("observer"); }));
    s.AddObserver(1, b, Logger("b"));
    int destroyed = 0;
    EXPECT_THROW(s.Notify(new CountedChange(&destroyed, &s, 1), false), std::runtime_error);
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(destroyed, 1);
}

TEST_F(ChangeMgrTest, DestroyedSubjectTakesItsRecordsAndLeavesTheObserversIdValid) {
    mvcSubject survivor;
    unsigned long id = 0;
    {
        mvcSubject doomed;
        doomed.AddObserver(1, id, Logger("doomed"));
        survivor.AddObserver(1, id, Logger("survivor"));
    }
    Send(survivor, 1);
    EXPECT_EQ(log, (Log{"survivor"}));
    mvcChangeMgr::Instance()->UnregisterAll(id);
    EXPECT_EQ(id, 0u);
    log.clear();
    Send(survivor, 1);
    EXPECT_TRUE(log.empty());
}

TEST_F(ChangeMgrTest, KilledManagerIsRecreatedEmptyWithIdsFromOne) {
    mvcSubject s;
    unsigned long a = 0, b = 0;
    s.AddObserver(1, a, Logger("a"));
    s.AddObserver(1, b, Logger("b"));
    ASSERT_EQ(b, 2u);
    mvcChangeMgr::KillInstance();

    Send(s, 1);  // makes a new, empty registry
    EXPECT_TRUE(log.empty());
    unsigned long fresh = 0;
    s.AddObserver(1, b, Logger("b-again"));  // 2 is stale now: replaced by 1
    s.AddObserver(1, fresh, Logger("fresh"));
    EXPECT_EQ(b, 1u);
    EXPECT_EQ(fresh, 2u);
    Send(s, 1);
    EXPECT_EQ(log, (Log{"b-again", "fresh"}));
}

}  // namespace

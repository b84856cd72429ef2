// Suppression, deferred delivery, the life of a change, and change lists.
#include "notify_fixture.h"
#include "oxdm/notify/change_list.h"

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#define OXDM_TEST_LEAK_ALLOWED() __lsan::ScopedDisabler leakAllowed
#else
#define OXDM_TEST_LEAK_ALLOWED() (void)0
#endif

namespace {

using SubjectTest = NotifyTest;

TEST_F(SubjectTest, ChangeLivesExactlyAsLongAsItsDelivery) {
    mvcSubject s;
    unsigned long a = 0;
    int destroyed = 0;
    int destroyedDuringCall = -1;
    s.AddObserver(1, a, CBFunctor1<mvcChange*>([&](mvcChange*) { destroyedDuringCall = destroyed; }));
    s.Notify(new CountedChange(&destroyed, &s, 1), false);
    EXPECT_EQ(destroyedDuringCall, 0);
    EXPECT_EQ(destroyed, 1);
}

TEST_F(SubjectTest, SuppressedSubjectDropsChangesAtOnceAndRemembersNothing) {
    mvcSubject s;
    unsigned long a = 0;
    s.AddObserver(1, a, Logger("a"));
    s.SupressNotification(true);
    EXPECT_TRUE(s.IsNotificationSupressed());
    int destroyed = 0;
    s.Notify(new CountedChange(&destroyed, &s, 1), false);
    EXPECT_EQ(destroyed, 1);
    s.Notify(nullptr, false);  // nothing to drop: no harm

    s.SupressNotification(false);
    EXPECT_TRUE(log.empty());
    s.Notify(new mvcChange(&s, 1, 0, true), false);
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(SubjectTest, ChangeNotifyGoesThroughTheSubjectsOverride) {
    class Counting : public mvcSubject {
    public:
        void Notify(mvcChange* change, bool deferred) override {
            ++seen;
            mvcSubject::Notify(change, deferred);
        }
        int seen = 0;
    } s;
    unsigned long a = 0;
    s.AddObserver(1, a, Logger("a"));
    (new mvcRowChange(3, &s, 1, 0, true))->Notify(false);
    EXPECT_EQ(s.seen, 1);
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(SubjectTest, DeferredChangeIsNeitherDeliveredNorFreed) {
    mvcSubject s;
    unsigned long a = 0;
    s.AddObserver(1, a, Logger("a"));
    int destroyed = 0;
    {
        OXDM_TEST_LEAK_ALLOWED();  // the posted operation is never freed
        s.Notify(new CountedChange(&destroyed, &s, 1), true);
    }
    EXPECT_TRUE(log.empty());
    EXPECT_EQ(destroyed, 0);
}

TEST_F(SubjectTest, CopyingASubjectCopiesTheFlagButNoObservers) {
    mvcSubject s;
    unsigned long a = 0;
    s.AddObserver(1, a, Logger("a"));
    s.SupressNotification(true);
    mvcSubject copy(s);
    EXPECT_TRUE(copy.IsNotificationSupressed());
    copy.SupressNotification(false);
    copy.Notify(new mvcChange(&copy, 1, 0, true), false);
    EXPECT_TRUE(log.empty());
}

TEST_F(SubjectTest, ChangeListSendsEachChangeToItsSubjectAsSuppressionStandsAtTheWalk) {
    mvcSubject s, t;
    unsigned long a = 0;
    s.AddObserver(1, a, Logger("s1"));
    s.AddObserver(2, a, Logger("s2"));
    t.AddObserver(1, a, Logger("t1"));
    int destroyed = 0;
    mvcChangeList list;
    list.push_back(new mvcChange(&s, 1, 0, true));
    list.push_back(new CountedChange(&destroyed, &t, 1));
    list.push_back(new mvcChange(&s, 2, 0, true));
    t.SupressNotification(true);  // after the change was added
    list.Notify(false);
    EXPECT_EQ(log, (Log{"s1", "s2"}));
    EXPECT_EQ(destroyed, 1);

    mvcChangeList empty;
    empty.Notify(false);
    EXPECT_EQ(log.size(), 2u);
}

TEST_F(SubjectTest, ChangeListReadsItsEndAnewOnEachStep) {
    mvcSubject s;
    unsigned long a = 0;
    mvcChangeList list;
    s.AddObserver(1, a, CBFunctor1<mvcChange*>([&](mvcChange*) {
        log.push_back("1");
        if (list.size() < 3) list.push_back(new mvcChange(&s, 1, 0, true));
    }));
    list.push_back(new mvcChange(&s, 1, 0, true));
    list.Notify(false);
    EXPECT_EQ(log, (Log{"1", "1", "1"}));
}

TEST(ChangeKinds, ConstructorsPutTheirArgumentsInTheRightFields) {
    mvcSubject s;
    const mvcRowChange row(4, &s, 2, 9, false);
    EXPECT_EQ(row.Row(), 4);
    EXPECT_EQ(row.Subject(), &s);
    EXPECT_EQ(row.Event(), 2);
    EXPECT_EQ(row.Initiator(), 9u);
    EXPECT_FALSE(row.NotifyInitiator());

    const oxdmRowStateChange withCause(oxdmRowStateChange::CauseRowEdited, true, &s, 6, 3, true);
    EXPECT_EQ(withCause.Cause(), oxdmRowStateChange::CauseRowEdited);
    EXPECT_TRUE(withCause.Dirty());
    const oxdmRowStateChange withoutCause(false, &s, 6, 3, true);
    EXPECT_EQ(withoutCause.Cause(), oxdmRowStateChange::CauseUnspecified);
    EXPECT_FALSE(withoutCause.Dirty());
    EXPECT_EQ(withoutCause.Initiator(), 3u);

    auto* node = reinterpret_cast<oxdmCursorNode*>(&s);  // only carried, never used
    const oxdmMVCCursorNodeChange cursor(node, &s, 7);
    EXPECT_EQ(cursor.Cursor(), node);
    EXPECT_EQ(cursor.Initiator(), 0u);
    EXPECT_TRUE(cursor.NotifyInitiator());
}

}  // namespace

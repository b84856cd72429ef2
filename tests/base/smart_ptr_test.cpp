// The counted pointer: copies share one count, the last holder deletes, and
// assignment, moves and Reset never delete early or twice.
#include <gtest/gtest.h>

#include <utility>

#include "oxdm/base/smart_ptr.h"

namespace {

struct Tracked {
    explicit Tracked(int* deaths) : deaths(deaths) {}
    ~Tracked() { ++*deaths; }
    int* deaths;
};

using Ptr = oxBase::SmartPtr<Tracked>;

TEST(SmartPtr, LastHolderDeletesOnce) {
    int deaths = 0;
    {
        Ptr a(new Tracked(&deaths));
        {
            Ptr b(a);
            Ptr c;
            c = b;
            EXPECT_EQ(a.UseCount(), 3);
            EXPECT_EQ(c.get(), a.get());
        }
        EXPECT_EQ(deaths, 0);
        EXPECT_EQ(a.UseCount(), 1);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(SmartPtr, AssignmentReleasesTheOldObjectAndSurvivesSelfAssignment) {
    int deathsA = 0, deathsB = 0;
    Ptr a(new Tracked(&deathsA));
    Ptr b(new Tracked(&deathsB));
    Ptr& alias = a;
    a = alias;
    EXPECT_EQ(a.UseCount(), 1);
    EXPECT_EQ(deathsA, 0);
    a = b;
    EXPECT_EQ(deathsA, 1);
    EXPECT_EQ(b.UseCount(), 2);
    a = std::move(a);  // NOLINT: self-move must leave the handle intact
    EXPECT_EQ(b.UseCount(), 2);
    EXPECT_EQ(deathsB, 0);
}

TEST(SmartPtr, MovesTransferWithoutCounting) {
    int deaths = 0;
    Ptr a(new Tracked(&deaths));
    Ptr b(std::move(a));
    EXPECT_EQ(a.get(), nullptr);  // NOLINT: a moved-from handle is empty
    EXPECT_EQ(a.UseCount(), 0);
    EXPECT_EQ(b.UseCount(), 1);
    Ptr c;
    c = std::move(b);
    EXPECT_EQ(c.UseCount(), 1);
    EXPECT_EQ(deaths, 0);
}

TEST(SmartPtr, ResetDropsOnlyThisShare) {
    int first = 0, second = 0;
    Ptr a(new Tracked(&first));
    Ptr keep(a);
    a.Reset(new Tracked(&second));
    EXPECT_EQ(first, 0);
    EXPECT_EQ(keep.UseCount(), 1);
    EXPECT_EQ(a.UseCount(), 1);
    a.Reset();
    EXPECT_EQ(second, 1);
    EXPECT_FALSE(a);
    EXPECT_EQ(a.UseCount(), 0);
}

TEST(SmartPtr, HandleOfNullCountsButHoldsNothing) {
    Ptr a(nullptr);
    Ptr b(a);
    EXPECT_EQ(a.UseCount(), 2);
    EXPECT_FALSE(b);
    EXPECT_TRUE(a == Ptr());
}

}  // namespace

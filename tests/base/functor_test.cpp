// The callback values: emptiness, the three ways to make one, and the object
// held by address.
#include <gtest/gtest.h>

#include "oxdm/base/functor.h"

namespace {

struct Counter {
    int total = 0;
    void Add(int n) { total += n; }
    int AddAndGet(int n) {
        total += n;
        return total;
    }
    bool Same(int a, int b) const { return a == b; }
};

int Twice(int n) { return 2 * n; }

TEST(Functor, DefaultIsEmpty) {
    CBFunctor1<int> f;
    EXPECT_TRUE(f.IsEmpty());
    EXPECT_FALSE(f);
    CBFunctor0wRet<int> g([] { return 3; });
    EXPECT_FALSE(g.IsEmpty());
    EXPECT_EQ(g(), 3);
}

TEST(Functor, MemberFunctionCallsTheObjectItself) {
    Counter counter;
    auto add = makeFunctor(static_cast<CBFunctor1<int>*>(nullptr), counter, &Counter::Add);
    auto copy = add;
    add(2);
    copy(5);
    EXPECT_EQ(counter.total, 7);  // copies share the callee, not a copy of it
    auto addAndGet =
        makeFunctor(static_cast<CBFunctor1wRet<int, int>*>(nullptr), &counter, &Counter::AddAndGet);
    EXPECT_EQ(addAndGet(1), 8);
    auto same = makeFunctor(static_cast<CBFunctor2wRet<int, int, bool>*>(nullptr), counter, &Counter::Same);
    EXPECT_TRUE(same(4, 4));
    EXPECT_FALSE(same(4, 5));
}

TEST(Functor, NullObjectOrFunctionMakesAnEmptyFunctor) {
    Counter* none = nullptr;
    EXPECT_TRUE(makeFunctor(static_cast<CBFunctor1<int>*>(nullptr), none, &Counter::Add).IsEmpty());
    int (*noFunction)(int) = nullptr;
    EXPECT_TRUE(makeFunctor(static_cast<CBFunctor1wRet<int, int>*>(nullptr), noFunction).IsEmpty());
}

TEST(Functor, FreeFunctionAndTwoArgumentForms) {
    auto twice = makeFunctor(static_cast<CBFunctor1wRet<int, int>*>(nullptr), &Twice);
    EXPECT_EQ(twice(21), 42);
    int seen = 0;
    CBFunctor2<int, int> sum([&seen](int a, int b) { seen = a + b; });
    sum(3, 4);
    EXPECT_EQ(seen, 7);
}

}  // namespace

// The callback chain: its answer, and the exact meaning of =, += and Append.
#include <gtest/gtest.h>

#include <string>

#include "oxdm/notify/callback.h"

namespace {

using Functor = oxdmCallback::Functor;

// A functor that records its name in *trace and answers value.
Functor Answer(std::string* trace, char name, int value) {
    return Functor([trace, name, value](oxdmCallbackInfo*) {
        *trace += name;
        return value;
    });
}

TEST(CallbackChain, FirstNonZeroAnswerEndsTheChain) {
    std::string trace;
    oxdmCallback chain(Answer(&trace, 'a', 0));
    chain += Answer(&trace, 'b', 5);
    chain += Answer(&trace, 'c', 7);
    EXPECT_EQ(chain(nullptr), 5);
    EXPECT_EQ(trace, "ab");
}

TEST(CallbackChain, AllZeroRunsEveryFunctorAndPassesOverEmptyOnes) {
    std::string trace;
    oxdmCallback chain;
    chain.Append(Functor());
    chain.Append(Answer(&trace, 'a', 0));
    chain.Append(Functor());
    chain.Append(Answer(&trace, 'b', 0));
    EXPECT_EQ(chain.size(), 4u);
    EXPECT_EQ(chain(nullptr), 0);
    EXPECT_EQ(trace, "ab");
}

TEST(CallbackChain, EmptyChainAnswersZeroAndTestsFalse) {
    oxdmCallback chain;
    EXPECT_EQ(chain(nullptr), 0);
    EXPECT_EQ(static_cast<int>(chain), 0);
}

TEST(CallbackChain, AddingAnEmptyFunctorChangesNothing) {
    oxdmCallback chain;
    chain += Functor();
    EXPECT_TRUE(chain.empty());
    EXPECT_FALSE(chain);
    std::string trace;
    chain += Answer(&trace, 'a', 1);
    chain += Functor();
    EXPECT_EQ(chain.size(), 1u);
}

TEST(CallbackChain, AssigningAnEmptyFunctorLeavesOneElementThatAnswersZero) {
    std::string trace;
    oxdmCallback chain(Answer(&trace, 'a', 3));
    chain += Answer(&trace, 'b', 4);
    chain = Functor();
    EXPECT_EQ(chain.size(), 1u);
    EXPECT_TRUE(chain);
    EXPECT_EQ(chain(nullptr), 0);
    EXPECT_TRUE(trace.empty());
}

TEST(CallbackChain, SelfAssignmentAndSelfAdditionDoNothing) {
    std::string trace;
    oxdmCallback chain(Answer(&trace, 'a', 0));
    chain += Answer(&trace, 'b', 0);
    oxdmCallback& alias = chain;
    chain = alias;
    chain += alias;
    EXPECT_EQ(chain.size(), 2u);
    chain(nullptr);
    EXPECT_EQ(trace, "ab");
}

TEST(CallbackChain, AppendAddsWithoutTestEvenToItself) {
    std::string trace;
    oxdmCallback chain(Answer(&trace, 'a', 0));
    chain.Append(Functor());
    chain.Append(chain);
    EXPECT_EQ(chain.size(), 4u);
    chain(nullptr);
    EXPECT_EQ(trace, "aa");
}

TEST(CallbackChain, AddingAChainKeepsBothOrders) {
    std::string trace;
    oxdmCallback first(Answer(&trace, 'a', 0));
    oxdmCallback second(Answer(&trace, 'b', 0));
    second += Answer(&trace, 'c', 9);
    first += second;
    EXPECT_EQ(first(nullptr), 9);
    EXPECT_EQ(trace, "abc");
    EXPECT_EQ(second.size(), 2u);  // the added chain is untouched
}

}  // namespace

#pragma once
// Shared pieces of the notification tests: a fresh change manager per test,
// a log of who was called, and a change that reports its destruction.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "oxdm/notify/change.h"
#include "oxdm/notify/change_mgr.h"
#include "oxdm/notify/subject.h"

class NotifyTest : public ::testing::Test {
protected:
    void SetUp() override { mvcChangeMgr::KillInstance(); }
    void TearDown() override { mvcChangeMgr::KillInstance(); }

    // An observer functor that appends name to the log.
    CBFunctor1<mvcChange*> Logger(const std::string& name) {
        return CBFunctor1<mvcChange*>([this, name](mvcChange*) { log.push_back(name); });
    }

    std::vector<std::string> log;
};

// A change that counts its destruction into *destroyed.
class CountedChange : public mvcChange {
public:
    CountedChange(int* destroyed, mvcSubject* subject, short event, unsigned long initiator = 0,
                  bool notifyInitiator = true)
        : mvcChange(subject, event, initiator, notifyInitiator), destroyed(destroyed) {}
    ~CountedChange() override { ++*destroyed; }

private:
    int* destroyed;
};

using Log = std::vector<std::string>;

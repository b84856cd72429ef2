#pragma once
// mvcChangeList: the one way to send several changes as a group. It collects
// changes and later sends them one after the other.
//
// The list owns nothing. Notify hands each change to its subject, after which
// the entries dangle: a list is notified at most once and then only
// destroyed. A change put in a list that is never notified is lost with its
// memory.

#include <vector>

class mvcChange;

class mvcChangeList : public std::vector<mvcChange*> {
public:
    virtual ~mvcChangeList() = default;

    // Calls each change's virtual Notify(deferred), front to back, re-reading
    // the end on each step (an observer may append to the list). Each change
    // meets its subject's suppression flag as it stands now.
    void Notify(bool deferred);
};

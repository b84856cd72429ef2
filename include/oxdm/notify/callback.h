#pragma once
// oxdmCallback: an ordered chain of callbacks that may answer back.
//
// Calling the chain calls its functors front to back while the answer is 0;
// the first non-zero answer ends the chain and is its answer, and a chain
// with nothing in it answers 0. Empty functors are passed over. The chain is
// publicly a vector and adds no data.

#include <vector>

#include "oxdm/base/functor.h"

class oxdmCallbackInfo;

class oxdmCallback : public std::vector<CBFunctor1wRet<oxdmCallbackInfo*, int>> {
public:
    using Functor = CBFunctor1wRet<oxdmCallbackInfo*, int>;

    oxdmCallback() = default;
    oxdmCallback(const oxdmCallback&) = default;
    // A chain of this one functor, empty or not.
    oxdmCallback(const Functor& functor);  // NOLINT: implicit, a functor is a chain of one

    // The chain's answer. The end is read anew on each step, so a functor that
    // appends to the chain it runs in has its additions called too.
    int operator()(oxdmCallbackInfo* info) const;

    // Non-zero when the chain holds at least one element, empty functors
    // included.
    operator int() const { return empty() ? 0 : 1; }  // NOLINT: the chain's test

    // Add to the end, empty functors included.
    void Append(const oxdmCallback& other);
    void Append(const Functor& functor);

    // Replaces the chain; self-assignment does nothing.
    oxdmCallback& operator=(const oxdmCallback& other);
    // Empties the chain and adds the functor, even an empty one.
    oxdmCallback& operator=(const Functor& functor);

    // Append; adding a chain to itself does nothing.
    oxdmCallback& operator+=(const oxdmCallback& other);
    // Adds the functor only if it is not empty; bound chains are built this
    // way, so that they hold no empty functors.
    oxdmCallback& operator+=(const Functor& functor);
};

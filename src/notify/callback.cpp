#include "oxdm/notify/callback.h"

oxdmCallback::oxdmCallback(const Functor& functor) { push_back(functor); }

int oxdmCallback::operator()(oxdmCallbackInfo* info) const {
    int result = 0;
    for (size_type i = 0; result == 0 && i < size(); ++i) {
        const Functor& functor = (*this)[i];
        if (!functor.IsEmpty()) result = functor(info);
    }
    return result;
}

void oxdmCallback::Append(const oxdmCallback& other) {
    // By index after one reservation, so that a chain may append itself.
    const size_type count = other.size();
    reserve(size() + count);
    for (size_type i = 0; i < count; ++i) push_back(other[i]);
}

void oxdmCallback::Append(const Functor& functor) { push_back(functor); }

oxdmCallback& oxdmCallback::operator=(const oxdmCallback& other) {
    if (this != &other) std::vector<Functor>::operator=(other);
    return *this;
}

oxdmCallback& oxdmCallback::operator=(const Functor& functor) {
    clear();
    push_back(functor);
    return *this;
}

oxdmCallback& oxdmCallback::operator+=(const oxdmCallback& other) {
    if (this != &other) Append(other);
    return *this;
}

oxdmCallback& oxdmCallback::operator+=(const Functor& functor) {
    if (!functor.IsEmpty()) push_back(functor);
    return *this;
}

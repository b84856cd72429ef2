#pragma once
// oxdmException: what the library throws for a programming fault or an
// unusable dictionary. It is thrown by value and caught by reference; its
// message is a whole sentence for the user.

#include "oxdm/base/cstring.h"

class oxdmException {
public:
    oxdmException() = default;
    explicit oxdmException(const CString& message) : message_(message) {}

    const CString& Message() const { return message_; }

private:
    CString message_;
};

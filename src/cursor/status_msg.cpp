// The words that complete "... because " in the sentences of failed writes.

#include "oxdm/cursor/cursor_node.h"

#include <cstdio>

CString oxdmCursorNode::StatusMsg(oxioStatus::Status status) {
    static const char* const kWords[] = {
        "the operation succeeded",
        "an IO error occurred",
        "the device was not found",
        "the file was not found",
        "the file already exists",
        "the row was not found",
        "the row already exists",
        "there is no more room",
        "it is write-protected",
        "it is in use by another user",
        nullptr,  // 10 has no words of its own
        "at start",
        "at end",
        "the key is invalid or a duplicate",
        "the password is incorrect",
        "the operation was cancelled",
        "the data is corrupt",
        "the file is incompatible",
        "a security violation occurred",
        "too many files are open",
    };
    int value = static_cast<int>(status);
    if (value >= 0 && value < static_cast<int>(sizeof kWords / sizeof kWords[0]) && kWords[value] != nullptr)
        return kWords[value];
    char number[8];
    std::snprintf(number, sizeof number, "%d", value);
    return CString("unknown error ") + number + " occured";
}

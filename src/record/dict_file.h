#pragma once
// Opening a dictionary for reading its definitions, shared by the import and
// the refresh of a table, and closing it again on every way out of a scope.

#include "oxdm/base/cstring.h"

// Opens dictionary `dict` (at most 256 bytes of its name, mode 1). Answers
// the raw status; on success *file is the file number.
// REQUIRES: file is not null.
short oxdmOpenDictFile(const CString& dict, short* file);

// Closes an open dictionary file when it goes out of scope.
class oxdmDictFileCloser {
public:
    explicit oxdmDictFileCloser(short file) : file_(file) {}
    ~oxdmDictFileCloser();
    oxdmDictFileCloser(const oxdmDictFileCloser&) = delete;
    oxdmDictFileCloser& operator=(const oxdmDictFileCloser&) = delete;

private:
    short file_;  // the open file, closed by the destructor
};

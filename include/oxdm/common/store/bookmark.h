#pragma once
// oxioBookmark: a position of a cursor, and optionally the contents of its
// record buffer at that moment.
//
// A bookmark names a record by its identity in the file, so GoTo finds it
// wherever its key has moved; it fails with InvalidKey when the record is
// gone. Positions compare in the order of the cursor's index.

#include <memory>

#include "oxdm/common/values/io_status.h"

class oxioCursor;

class oxioBookmark {
public:
    // REQUIRES: `cursor` outlives the bookmark.
    oxioBookmark(oxioCursor& cursor, bool contents);
    ~oxioBookmark();
    oxioBookmark(const oxioBookmark&) = delete;
    oxioBookmark& operator=(const oxioBookmark&) = delete;

    // Reads the marked record into the buffer and the cursor's values.
    oxioStatus::Status GoTo();
    // Puts the kept contents back into the buffer, and into the cursor's
    // values when `refresh` is true; InvalidKey when none were kept.
    oxioStatus::Status RestoreContents(bool refresh);

    bool operator==(const oxioBookmark& other) const;
    bool operator<(const oxioBookmark& other) const;

private:
    struct Mark;
    // Invariant: mark_ is never null; it holds the record's identity, its
    // key in the cursor's index and, when asked, the buffer's contents.
    oxioCursor* cursor_;
    std::unique_ptr<Mark> mark_;
};

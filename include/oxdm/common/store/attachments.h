#pragma once
// oxioAttachments: the documents attached to one record.
//
// The record is the one the table stands on when Fetch or Write runs. The
// documents are held here between Fetch and Write; Clear empties them.

#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/values/io_status.h"

class oxioCursor;

class oxioAttachments {
public:
    struct Document {
        CString name;
        CString data;
    };

    explicit oxioAttachments(oxioCursor& cursor);
    oxioAttachments(short file, short table);

    // Reads the documents of the record; `lock` is not used.
    oxioStatus::Status Fetch(bool lock);
    // Replaces the record's documents with those held here.
    oxioStatus::Status Write();
    // Whether any document is held.
    bool Find() const { return !documents_.empty(); }
    void Clear() { documents_.clear(); }

    const std::vector<Document>& Documents() const { return documents_; }
    void Add(const CString& name, const CString& data) { documents_.push_back({name, data}); }

private:
    // file_ and table_ name the table whose current record the documents
    // belong to; documents_ is what Fetch read or the caller added, in order.
    short file_;
    short table_;
    std::vector<Document> documents_;
};

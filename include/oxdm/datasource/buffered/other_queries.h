#pragma once
// oxdmOtherQueries: a side table of further queries that a screen may use,
// each with a buffer made on first request.
//
// Invariants: queries_ and buffers_ have the same length; a query is not
// owned and must outlive the table; a buffer is owned, null until asked for.

#include <vector>

#include "oxdm/base/cstring.h"

class oxdmBufferedFileDataSource;
class oxdmFileManager;
class oxdmQuery;
class oxdmQueryNode;
class oxTask;

class oxdmOtherQueries {
public:
    oxdmOtherQueries() = default;
    ~oxdmOtherQueries();
    // A copy holds both vectors as they stand, buffers included; nothing
    // copies a table whose buffers have been made.
    oxdmOtherQueries(const oxdmOtherQueries&) = default;
    oxdmOtherQueries& operator=(const oxdmOtherQueries&) = default;

    // REQUIRES: query != nullptr
    void AddExtraQuery(oxdmQuery* query);
    // The buffer of the node in the query of that label (or, failing that,
    // whose root node has that label); null for an unknown query or node.
    oxdmBufferedFileDataSource* BufferForNode(const CString& query, const CString& node, oxTask* task,
                                              oxdmFileManager* files);
    oxdmBufferedFileDataSource* BufferForNode(const CString& query, oxdmQueryNode* node, oxTask* task,
                                              oxdmFileManager* files);

private:
    // The root buffer of the query of that label, made on first use; null
    // when no query has that label.
    oxdmBufferedFileDataSource* RootBuffer(const CString& query, oxTask* task, oxdmFileManager* files);

    std::vector<oxdmQuery*> queries_;
    std::vector<oxdmBufferedFileDataSource*> buffers_;
};

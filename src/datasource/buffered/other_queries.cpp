// The side table of further queries of a screen, with their buffers made
// on demand.

#include "oxdm/datasource/buffered/other_queries.h"

#include <cassert>

#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"

oxdmOtherQueries::~oxdmOtherQueries() {
    for (oxdmBufferedFileDataSource* buffer : buffers_) delete buffer;
}

void oxdmOtherQueries::AddExtraQuery(oxdmQuery* query) {
    assert(query != nullptr);
    queries_.push_back(query);
    buffers_.push_back(nullptr);
}

oxdmBufferedFileDataSource* oxdmOtherQueries::RootBuffer(const CString& query, oxTask* task,
                                                         oxdmFileManager* files) {
    size_t found = queries_.size();
    for (size_t i = 0; i < queries_.size() && found == queries_.size(); ++i) {
        if (queries_[i]->ID() == query) found = i;
    }
    for (size_t i = 0; i < queries_.size() && found == queries_.size(); ++i) {
        if (queries_[i]->Root() != nullptr && queries_[i]->Root()->ID() == query) found = i;
    }
    if (found == queries_.size()) return nullptr;
    if (buffers_[found] == nullptr) buffers_[found] = new oxdmBufferedFileDataSource(queries_[found], task, files);
    return buffers_[found];
}

oxdmBufferedFileDataSource* oxdmOtherQueries::BufferForNode(const CString& query, const CString& node, oxTask* task,
                                                            oxdmFileManager* files) {
    oxdmBufferedFileDataSource* root = RootBuffer(query, task, files);
    return root ? root->BufferForNode(node) : nullptr;
}

oxdmBufferedFileDataSource* oxdmOtherQueries::BufferForNode(const CString& query, oxdmQueryNode* node, oxTask* task,
                                                            oxdmFileManager* files) {
    oxdmBufferedFileDataSource* root = RootBuffer(query, task, files);
    return root && node ? root->BufferForNode(*node) : nullptr;
}

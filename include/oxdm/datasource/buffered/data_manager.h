#pragma once
// oxdmDataManager: what a screen holds of its data: one query, the root
// buffer of its tree, and the verbs of the record-navigation buttons. Each
// verb saves what is pending first; it works on the root buffer, or on the
// buffer of the focus row manager given (null means the root). The movers
// answer 1 whatever happened: a refused save has told the user already.
//
// Invariants: usable_ is false when there is no query or no root buffer;
// the root buffer is shared by counted pointer between managers made from
// one another, the last holder deleting the tree; the query is not owned;
// otherQueries_ is made on first request and shared like the buffer.

#include "oxdm/base/smart_ptr.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/other_queries.h"

class oxdmCallbackMgr;
class oxdmControlMgr;
class oxdmDSFocusRowMgr;
class oxdmFileManager;
class oxdmQuery;
class oxTask;

class oxdmDataManager {
public:
    // With a null query the manager is not usable and makes no buffer.
    // Throws oxdmException when the query's files can't be opened.
    oxdmDataManager(const oxdmQuery* query, oxTask* task, oxdmFileManager* files);
    // Shares the other manager's root buffer and other queries.
    // REQUIRES: other != nullptr
    oxdmDataManager(oxdmDataManager* other, const oxdmQuery* query);
    ~oxdmDataManager();
    oxdmDataManager(const oxdmDataManager&) = delete;
    oxdmDataManager& operator=(const oxdmDataManager&) = delete;

    bool CanReadFirst(oxdmDSFocusRowMgr* rowMgr) const;
    bool CanReadPrev(oxdmDSFocusRowMgr* rowMgr) const;
    bool CanReadNext(oxdmDSFocusRowMgr* rowMgr) const;
    bool CanReadLast(oxdmDSFocusRowMgr* rowMgr) const;
    bool CanAppendRow(oxdmDSFocusRowMgr* rowMgr) const;
    bool CanDeleteRow(oxdmDSFocusRowMgr* rowMgr) const;

    int ReadFirst(oxdmDSFocusRowMgr* rowMgr);
    int ReadPrev(oxdmDSFocusRowMgr* rowMgr);
    int ReadNext(oxdmDSFocusRowMgr* rowMgr);
    int ReadLast(oxdmDSFocusRowMgr* rowMgr);
    int AppendRow(oxdmDSFocusRowMgr* rowMgr);
    int DeleteRow(oxdmDSFocusRowMgr* rowMgr);
    int RevertRow(oxdmDSFocusRowMgr* rowMgr);

    // Saves the root's focus row; true when saved or nothing is pending.
    bool CommitData();
    void SetupDataCallbacks(const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr);
    oxdmOtherQueries* GetOtherQueries();
    oxdmBufferedFileDataSource* RootBuffer() const { return rootBuffer_.get(); }
    const oxdmQuery* Query() const { return query_; }

private:
    // The shape of every mover: with a focus row manager, its save and
    // then `withRow`; with none, the root's commit, its `can` test and
    // then `withRoot`.
    template <class WithRow, class Can, class WithRoot>
    int Move(oxdmDSFocusRowMgr* rowMgr, WithRow withRow, Can can, WithRoot withRoot);

    bool usable_ = false;
    oxCountedPtr<oxdmBufferedFileDataSource> rootBuffer_;
    const oxdmQuery* query_ = nullptr;
    oxCountedPtr<oxdmOtherQueries> otherQueries_;
};

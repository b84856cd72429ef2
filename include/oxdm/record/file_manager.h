#pragma once
// oxdmFileManager: decides which open record file serves which table.
//
// Each open file has one record buffer for each table, so several tables may
// share one open file but one table never uses the same open file twice: a
// second user of a table gets a file of its own. A spec that failed to open
// is remembered and refused at once, so that a screen with many nodes on a
// missing file fails once, until ClearOpenFailures. Files stay open until
// the manager is destroyed.

#include <map>
#include <memory>
#include <vector>

#include "oxdm/common/store/file_manager.h"
#include "oxdm/common/store/file_spec.h"

class oxdmTableDef;
class oxdmQueryNode;

class oxdmFileManager : public oxioFileManager {
public:
    explicit oxdmFileManager(short group);
    oxdmFileManager(const oxTask* task, short group);
    ~oxdmFileManager() override;

    // The file that serves `table`: an open file of the spec that this table
    // does not use yet, or a newly opened one (created when `create`). A null
    // table never shares a file and registers nothing. Throws oxdmException
    // ("Couldn't open file.") when the file can't be opened or failed before.
    oxioDataFile& FileForTable(const oxioFileSpec& spec, const oxdmTableDef* table, bool create, short group);
    // One user of `table` has gone; its file stays open for the next user.
    void ReleaseTable(const oxioFileSpec& spec, const oxdmTableDef* table);
    // Opens the node's file ahead of time; false when it can't be opened.
    // Defined with the query layer, which knows the node.
    bool AddQueryNodeFile(oxdmQueryNode* node);
    bool AlreadyFailed(const oxioFileSpec& spec) const;
    void ClearOpenFailures() { failedSpecs_.clear(); }

protected:
    void RegisterTable(const oxdmTableDef* table, oxioDataFile* file);
    // Visitors for ForEach over the search fields: false stops the walk.
    bool FindAvailFile(oxioDataFile* file);
    bool FindAndReleaseTable(oxioDataFile* file);

private:
    // registered_: for each file, the tables using it, a table once for each
    // user; an entry stays (maybe empty) while the file is open.
    // searchSpec_, searchTable_, searchResult_: scratch of the search in
    // progress, which makes the manager non-reentrant.
    // failedSpecs_: every spec that failed to open, until cleared.
    std::map<oxioDataFile*, std::vector<const oxdmTableDef*>> registered_;
    oxioFileSpec searchSpec_;
    const oxdmTableDef* searchTable_ = nullptr;
    oxioDataFile* searchResult_ = nullptr;
    std::vector<std::shared_ptr<oxioFileSpec>> failedSpecs_;
};

// The data manager of a screen: its verbs over the root buffer or over the
// buffer of a focus row manager.

#include "oxdm/datasource/buffered/data_manager.h"

#include <cassert>

#include "oxdm/common/shell/message_box.h"
#include "oxdm/datasource/focus_row_mgr.h"
#include "oxdm/record/file_manager.h"

oxdmDataManager::oxdmDataManager(const oxdmQuery* query, oxTask* task, oxdmFileManager* files) : query_(query) {
    if (query == nullptr) return;
    rootBuffer_.Reset(new oxdmBufferedFileDataSource(query, task, files));
    usable_ = true;
}

oxdmDataManager::oxdmDataManager(oxdmDataManager* other, const oxdmQuery* query) : query_(query) {
    assert(other != nullptr);
    rootBuffer_ = other->rootBuffer_;
    // Made now, so that both managers hold the same table.
    other->GetOtherQueries();
    otherQueries_ = other->otherQueries_;
    usable_ = static_cast<bool>(rootBuffer_);
}

oxdmDataManager::~oxdmDataManager() {
    otherQueries_.Reset();
    if (!rootBuffer_) return;
    if (auto* files = dynamic_cast<oxdmFileManager*>(rootBuffer_->GetFileManager())) files->ClearOpenFailures();
    rootBuffer_->RemoveCallbacks(this);
    rootBuffer_.Reset();
}

// ---------------------------------------------------------------- the tests

bool oxdmDataManager::CanReadFirst(oxdmDSFocusRowMgr* rowMgr) const {
    if (rowMgr != nullptr && usable_) return rowMgr->CanMoveToTop(true);
    return usable_ && rootBuffer_->CanMoveToTop(false);
}

bool oxdmDataManager::CanReadPrev(oxdmDSFocusRowMgr* rowMgr) const {
    if (rowMgr != nullptr && usable_) return rowMgr->CanMoveUp();
    return usable_ && rootBuffer_->CanMoveUp();
}

bool oxdmDataManager::CanReadNext(oxdmDSFocusRowMgr* rowMgr) const {
    if (rowMgr != nullptr && usable_) return rowMgr->CanMoveDown(true);
    return usable_ && rootBuffer_->CanMoveDown(true);
}

bool oxdmDataManager::CanReadLast(oxdmDSFocusRowMgr* rowMgr) const {
    if (rowMgr != nullptr && usable_) return rowMgr->CanMoveToBottom(true);
    return usable_ && rootBuffer_->CanMoveToBottom(true);
}

bool oxdmDataManager::CanAppendRow(oxdmDSFocusRowMgr* rowMgr) const {
    if (rowMgr != nullptr && usable_) return rowMgr->CanMoveToBottom(false);
    return usable_ && rootBuffer_->CanMoveToBottom(false);
}

bool oxdmDataManager::CanDeleteRow(oxdmDSFocusRowMgr* rowMgr) const {
    if (rowMgr != nullptr && usable_) return rowMgr->CanDeleteRow();
    return usable_ && rootBuffer_->CanDeleteRow();
}

// ---------------------------------------------------------------- the movers

template <class WithRow, class Can, class WithRoot>
int oxdmDataManager::Move(oxdmDSFocusRowMgr* rowMgr, WithRow withRow, Can can, WithRoot withRoot) {
    if (rowMgr != nullptr) {
        if (rowMgr->UpdateRow()) withRow(*rowMgr);
    } else if (rootBuffer_ && CommitData() && can(*rootBuffer_)) {
        withRoot(*rootBuffer_);
    }
    return 1;
}

int oxdmDataManager::ReadFirst(oxdmDSFocusRowMgr* rowMgr) {
    return Move(
        rowMgr, [](oxdmDSFocusRowMgr& row) { row.MoveToTop(false); },
        [](oxdmBufferedFileDataSource& root) { return root.CanMoveToTop(false); },
        [](oxdmBufferedFileDataSource& root) { root.MoveToTop(0, true, true); });
}

int oxdmDataManager::ReadPrev(oxdmDSFocusRowMgr* rowMgr) {
    return Move(
        rowMgr, [](oxdmDSFocusRowMgr& row) { row.MoveUp(1); },
        [](oxdmBufferedFileDataSource& root) { return root.CanMoveUp(); },
        [](oxdmBufferedFileDataSource& root) { root.MoveUp(1, 0, true); });
}

int oxdmDataManager::ReadNext(oxdmDSFocusRowMgr* rowMgr) {
    return Move(
        rowMgr, [](oxdmDSFocusRowMgr& row) { row.MoveDown(1, true); },
        [](oxdmBufferedFileDataSource& root) { return root.CanMoveDown(true); },
        [](oxdmBufferedFileDataSource& root) { root.MoveDown(1, 0, true, true); });
}

int oxdmDataManager::ReadLast(oxdmDSFocusRowMgr* rowMgr) {
    return Move(
        rowMgr, [](oxdmDSFocusRowMgr& row) { row.MoveToBottom(true); },
        [](oxdmBufferedFileDataSource& root) { return root.CanMoveToBottom(true); },
        [](oxdmBufferedFileDataSource& root) { root.MoveToBottom(0, true, true); });
}

int oxdmDataManager::AppendRow(oxdmDSFocusRowMgr* rowMgr) {
    return Move(
        rowMgr, [](oxdmDSFocusRowMgr& row) { row.MoveToBottom(false); },
        [](oxdmBufferedFileDataSource& root) { return root.CanMoveToBottom(false); },
        [](oxdmBufferedFileDataSource& root) { root.MoveToBottom(0, true, false); });
}

int oxdmDataManager::DeleteRow(oxdmDSFocusRowMgr* rowMgr) {
    if (rowMgr != nullptr) {
        if (rowMgr->CanDeleteRow()) rowMgr->DeleteRow();
    } else if (rootBuffer_ && rootBuffer_->CanDeleteRow()) {
        rootBuffer_->DeleteRow(0, false);
    } else {
        oxdmMessageBox("This row cannot be deleted", "Warning", 0x40);
    }
    return 1;
}

int oxdmDataManager::RevertRow(oxdmDSFocusRowMgr* rowMgr) {
    if (rowMgr != nullptr) {
        rowMgr->RevertRow();
    } else if (rootBuffer_) {
        rootBuffer_->RevertRow(0, true);
    }
    return 1;
}

bool oxdmDataManager::CommitData() {
    if (rootBuffer_ && rootBuffer_->HasFocusRow()) return rootBuffer_->ValidateRow(0, false);
    return true;
}

void oxdmDataManager::SetupDataCallbacks(const oxdmCallbackMgr& mgr, oxdmControlMgr* controlMgr) {
    if (rootBuffer_) rootBuffer_->SetCallbacks(this, mgr, controlMgr);
}

oxdmOtherQueries* oxdmDataManager::GetOtherQueries() {
    if (!otherQueries_) otherQueries_.Reset(new oxdmOtherQueries);
    return otherQueries_.get();
}

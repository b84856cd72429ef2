#include "oxdm/datasource/focus_row_mgr.h"

#include <cassert>

#include "oxdm/datasource/cell_on_focus_row.h"
#include "oxdm/datasource/data_source.h"

oxdmDSFocusRowData::oxdmDSFocusRowData(oxdmDataSource* dataSource) : dataSource_(dataSource) {}

oxdmDSFocusRowData::~oxdmDSFocusRowData() = default;

void oxdmDSFocusRowData::AddColumn(const CString& name, oxdmDSCellOnFocusRow* cell) {
    assert(cell != nullptr);
    cells_[name].reset(cell);
}

oxdmDSCellOnFocusRow* oxdmDSFocusRowData::Column(const CString& name) const {
    // A walk, not find: the map orders by case but lookups ignore it.
    for (const auto& [key, cell] : cells_) {
        if (key.CompareNoCase(name) == 0) return cell.get();
    }
    return nullptr;
}

void oxdmDSFocusRowData::ForAllColumns(const CBFunctor1wRet<oxdmDSCellOnFocusRow*, bool>& visit) const {
    for (const auto& entry : cells_) {
        if (!visit(entry.second.get())) return;
    }
}

oxdmDSFocusRowMgr* oxdmDSFocusRowMgr::Node(const CString& label) {
    return dataSource_->NodeLabel().Compare(label) == 0 ? this : nullptr;
}

int oxdmDSFocusRowMgr::NumWindowDataRows() const { return static_cast<int>(dataSource_->NumWindowDataRows()); }

void oxdmDSFocusRowMgr::RefetchVisibleRows(bool children) { dataSource_->RefetchVisibleRows(0, true, children); }

void oxdmDSFocusRowMgr::ReQuery() { dataSource_->ReQuery(); }

void oxdmDSFocusRowMgr::FetchNoMore() { dataSource_->FetchNoMore(); }

void oxdmDSFocusRowMgr::Clear() { dataSource_->Clear(); }

bool oxdmDSFocusRowMgr::IsNewRow() const { return dataSource_->IsNewRow(); }

bool oxdmDSFocusRowMgr::IsRowDirty() const { return dataSource_->HasFocusRow() && dataSource_->IsRowChanged(); }

bool oxdmDSFocusRowMgr::Seek() { return dataSource_->FindGE(); }

void oxdmDSFocusRowMgr::SetRowDirty() { dataSource_->ObserverSetRowChanged(0, true); }

oxioFileManager* oxdmDSFocusRowMgr::GetFileManager() const {
    return dataSource_ ? dataSource_->GetFileManager() : nullptr;
}

const CString& oxdmDSFocusRowMgr::NodeLabel() const { return dataSource_->NodeLabel(); }

CString oxdmDSFocusRowMgr::RowDescription() const { return dataSource_->RowDescription(); }

double oxdmDSFocusRowMgr::WindowScrollPercent() const { return dataSource_->WindowScrollPercent(); }

oxdmDSBookmark* oxdmDSFocusRowMgr::GetFocusRowBookmark() const { return dataSource_->GetFocusRowBookmark(); }

bool oxdmDSFocusRowMgr::CanDeleteRow() const { return dataSource_->CanDeleteRow(); }

bool oxdmDSFocusRowMgr::CanMoveUp() const { return dataSource_->CanMoveUp(); }

bool oxdmDSFocusRowMgr::CanMoveDown(bool noNewRow) const { return dataSource_->CanMoveDown(noNewRow); }

bool oxdmDSFocusRowMgr::CanMoveToTop(bool noNewRow) const { return dataSource_->CanMoveToTop(noNewRow); }

bool oxdmDSFocusRowMgr::CanMoveToBottom(bool noNewRow) const { return dataSource_->CanMoveToBottom(noNewRow); }

bool oxdmDSFocusRowMgr::CanAddRow() const { return dataSource_->CanMoveToBottom(false); }

bool oxdmDSFocusRowMgr::DeleteRow() { return dataSource_->DeleteRow(0, true); }

bool oxdmDSFocusRowMgr::UpdateRow() { return dataSource_->ValidateRow(0, true); }

bool oxdmDSFocusRowMgr::RevertRow() { return dataSource_->RevertRow(0, true); }

short oxdmDSFocusRowMgr::MoveUp(short rows) { return dataSource_->MoveUp(rows, 0, true); }

short oxdmDSFocusRowMgr::MoveDown(short rows, bool noNewRow) { return dataSource_->MoveDown(rows, 0, true, noNewRow); }

bool oxdmDSFocusRowMgr::MoveToTop(bool noNewRow) { return dataSource_->MoveToTop(0, true, noNewRow); }

bool oxdmDSFocusRowMgr::MoveToBottom(bool noNewRow) { return dataSource_->MoveToBottom(0, true, noNewRow); }

bool oxdmDSFocusRowMgr::IsFirstRow() const {
    return dataSource_->WindowScrollPercent() == 0.0 && dataSource_->FocusRow() == 0;
}

bool oxdmDSFocusRowMgr::IsLastRow() const {
    const long rows = dataSource_->NumWindowDataRows();
    const short size = dataSource_->WindowSize();
    const long last = rows < size ? rows - 1 : size - 1;
    return dataSource_->WindowScrollPercent() == 1.0 && dataSource_->FocusRow() == last;
}

// Walking the cursor: the only way the window moves it. The row filter and
// the cancel poll live here, and the suppression of duplicate rows.

#include <cxxabi.h>

#include <cstdlib>
#include <memory>
#include <typeinfo>

#include "oxdm/base/exception.h"
#include "oxdm/common/values/data.h"
#include "oxdm/cursor/cursor_bookmark.h"
#include "oxdm/cursor/cursor_node.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/ds_column.h"
#include "oxdm/record/column_def.h"

namespace {

// Deletes the values of a scratch row when it goes.
struct ScratchRow {
    std::vector<oxData*> row;
    ~ScratchRow() {
        for (oxData* value : row) delete value;
    }
};

// Stamp fields and hidden columns do not make two rows differ.
bool SkippedInDupTest(const oxdmDSColumnBase& column) {
    const oxdmColumnDef* def = column.OXColumn();
    const xio_fld_def& fld = def->FldDef();
    return fld.second_stamp != 0 || fld.first_stamp != 0 || fld.operator_stamp != 0 || column.Hide();
}

// The class of a column as written in code.
CString ClassNameOf(const oxdmDSColumnBase& column) {
    int status = 0;
    char* name = abi::__cxa_demangle(typeid(column).name(), nullptr, nullptr, &status);
    CString text = status == 0 && name ? CString(name) : CString(ClassNameOf(column));
    std::free(name);
    return text;
}

}  // namespace

int oxdmBufferedFileDataSourceImpl::_QueryCancelPoll() {
    if (cancelCallback_) lastCancelAnswer_ = cancelCallback_();
    return lastCancelAnswer_;
}

bool oxdmBufferedFileDataSourceImpl::ParentToFocus() const {
    return parentBuffer_ == nullptr || parentBuffer_->MoveCursorToFocus();
}

bool oxdmBufferedFileDataSourceImpl::CursorFirst(bool filter, bool lock) {
    if (parentBuffer_ != nullptr && !parentBuffer_->MoveCursorToFocus()) return false;
    if (!cursorNode_->First(lock)) return false;
    while (filter && HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0) {
        const bool moved = cursorNode_->Next(lock);
        if (!moved) return false;
        if (_QueryCancelPoll() == oxdmDataSource::QueryCancel) return moved;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::CursorLast(bool filter, bool lock) {
    if (parentBuffer_ != nullptr && !parentBuffer_->MoveCursorToFocus()) return false;
    if (!cursorNode_->Last(lock)) return false;
    while (filter && HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0) {
        if (!cursorNode_->Prev(lock)) return false;
        if (_QueryCancelPoll() == oxdmDataSource::QueryCancel) return true;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::CursorGE(bool filter, bool lock) {
    if (!cursorNode_->GE(lock)) return false;
    while (filter && HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0) {
        if (!cursorNode_->Next(lock)) return false;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::CursorGT(bool filter, bool lock) {
    if (parentBuffer_ != nullptr && !parentBuffer_->MoveCursorToFocus()) return false;
    if (!cursorNode_->GT(lock)) return false;
    while (filter && HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0) {
        if (!cursorNode_->Next(lock)) return false;
    }
    return true;
}

long oxdmBufferedFileDataSourceImpl::CursorNext(long rows, bool filter, bool lock) {
    if (rows < 0) return -CursorPrev(-rows, filter, lock);
    const bool dups = cursorNode_->SuppressDups();
    ScratchRow scratch;
    if (dups) scratch.row = CreateRowData();
    long done = 0;
    for (; done < rows && lastCancelAnswer_ == 0; ++done) {
        if (dups) CopyRowFromCursor(scratch.row);
        for (;;) {
            if (_QueryCancelPoll() == oxdmDataSource::QueryCancel) break;
            if (!cursorNode_->Next(lock)) return done;
            if (lastCancelAnswer_ != 0) break;
            if (!SameSuppressDupsRow(scratch.row) &&
                (!filter || HandleRowEvent(oxdmDataSource::RowFilter, nullptr) == 0))
                break;
        }
    }
    return done;
}

long oxdmBufferedFileDataSourceImpl::CursorPrev(long rows, bool filter, bool lock) {
    if (rows < 0) return -CursorNext(-rows, filter, lock);
    const bool dups = cursorNode_->SuppressDups();
    ScratchRow scratch;
    if (dups) scratch.row = CreateRowData();
    long done = 0;
    for (; done < rows && lastCancelAnswer_ == 0; ++done) {
        if (dups) CopyRowFromCursor(scratch.row);
        bool stepped = true;
        for (;;) {
            if (_QueryCancelPoll() == oxdmDataSource::QueryCancel) break;
            if (!cursorNode_->Prev(lock)) {
                stepped = false;
                break;
            }
            if (lastCancelAnswer_ != 0) break;
            if (!SameSuppressDupsRow(scratch.row) &&
                (!filter || HandleRowEvent(oxdmDataSource::RowFilter, nullptr) == 0))
                break;
        }
        if (!stepped) break;
    }
    if (dups && done > 0) {
        // Seen from below the cursor stands on the last record of a group
        // of duplicates; the row is its first.
        CopyRowFromCursor(scratch.row);
        bool atStart = false;
        while (SameSuppressDupsRow(scratch.row)) {
            if (!cursorNode_->Prev(false)) {
                atStart = true;
                break;
            }
        }
        if (atStart) {
            cursorNode_->First(lock);
        } else {
            cursorNode_->Next(1, lock);
        }
    }
    return done;
}

bool oxdmBufferedFileDataSourceImpl::SameSuppressDupsRow(const Row& row) const {
    if (!cursorNode_->SuppressDups() || !hasFocus_ || row.empty()) return false;
    for (size_t col = 0; col < columns_.size(); ++col) {
        const oxdmDSColumnBase& column = *columns_[col];
        if (SkippedInDupTest(column)) continue;
        if (!row[col]->Eq(column.Value(false))) return false;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::RowAlreadyBuffered() const {
    if (windowRows_.empty()) return false;
    const std::unique_ptr<oxdmCursorBookmark> here(cursorNode_->CreateBookmark());
    for (const auto& bookmark : windowBookmarks_) {
        if (bookmark && bookmark->EqualTo(here.get())) return true;
    }
    if (!cursorNode_->SuppressDups()) return reservedKey_ && reservedKey_->EqualTo(here.get());
    for (const Row& row : windowRows_) {
        bool same = true;
        for (size_t col = 0; col < columns_.size() && same; ++col) {
            if (SkippedInDupTest(*columns_[col])) continue;
            same = row[col]->Eq(columns_[col]->Value(false));
        }
        if (same) return true;
    }
    return false;
}

oxdmBufferedFileDataSourceImpl::Row oxdmBufferedFileDataSourceImpl::CreateRowData() const {
    Row row;
    row.reserve(columns_.size());
    for (const oxdmDSColumnBase* column : columns_) row.push_back(column->CreateData());
    return row;
}

bool oxdmBufferedFileDataSourceImpl::CopyRowFromCursor(Row& row) const {
    for (size_t col = 0; col < columns_.size(); ++col) {
        if (!columns_[col]->CopyValue(columns_[col]->Value(false), *row[col])) return false;
    }
    return true;
}

void oxdmBufferedFileDataSourceImpl::CopyRowFromNew(Row& row) const {
    for (size_t col = 0; col < columns_.size(); ++col) {
        const oxdmDSColumnBase& column = *columns_[col];
        const oxData& prefill = column.PrefillValue();
        if (!column.CopyValue(prefill, *row[col])) {
            throw oxdmException("Cannot copy value from type " + oxDataClassName(prefill) + " to type " +
                                oxDataClassName(*row[col]) + " on column '" + column.ID() + "' of type " +
                                ClassNameOf(column));
        }
    }
}

bool oxdmBufferedFileDataSourceImpl::CopyRowToCursor(const Row& row) {
    for (size_t col = 0; col < columns_.size(); ++col) {
        if (!columns_[col]->SetValue(*row[col])) return false;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::CopyRowToCursor() {
    for (size_t col = 0; col < columns_.size(); ++col) {
        if (!columns_[col]->SetValue(*newValues_[col])) return false;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::CopyData(const Row& from, Row& to) const {
    for (size_t col = 0; col < from.size() && col < to.size(); ++col) {
        if (!columns_[col]->CopyValue(*from[col], *to[col])) return false;
    }
    return true;
}

bool oxdmBufferedFileDataSourceImpl::ForAllRows(const RowVisitor& visit, bool filter) {
    if (!visit) return false;
    const std::unique_ptr<oxdmCursorBookmark> back(cursorNode_->CreateBookmark());
    ScratchRow scratch;
    scratch.row = CreateRowData();
    bool on = cursorNode_->First(false);
    while (on && filter && HandleRowEvent(oxdmDataSource::RowFilter, nullptr) != 0) on = cursorNode_->Next(false);
    bool result = false;
    while (on) {
        CopyRowFromCursor(scratch.row);
        result = visit(scratch.row);
        if (!result || CursorNext(1, filter, false) < 1) break;
    }
    back->GoTo();
    return result;
}

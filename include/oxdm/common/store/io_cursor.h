#pragma once
// oxioCursor: a cursor on one table of one open record file, walking one
// of its indexes.
//
// The record buffer of the table belongs to the open file and is shared by
// the flat face (xio_rd_record, xio_get_field, ...) and by every cursor on
// that table of that file, as is the record the table stands on. A cursor
// adds: its index, the values attached to columns (refreshed by every fetch,
// taken by every write), its conditions and range (evaluated by the file in
// every seek), and the version of the record it last read, which a write
// with method CheckConflict compares with the file's.
//
// Every fetch is one indexed seek on the file; nothing of the table is held
// in memory. FetchNext at the end answers AtEnd and leaves the buffer on the
// last record; FetchPrev at the start answers AtStart.

#include <vector>

#include "oxdm/base/cstring.h"
#include "oxdm/common/values/io_status.h"

class oxData;
class oxioDataFile;
class oxioBookmark;
namespace oxdm::store {
class oxStoreFile;
}

class oxioCursor {
public:
    enum UpdateMethod { Overwrite = 0, CheckConflict = 1 };
    enum ConditionConnector { ConnectNone = 0, ConnectAnd = 1, ConnectOr = 2 };

    // REQUIRES: `file` outlives the cursor.
    oxioCursor(const oxioDataFile& file, short table, short index);
    virtual ~oxioCursor();
    oxioCursor(const oxioCursor&) = delete;
    oxioCursor& operator=(const oxioCursor&) = delete;

    // The fetches; `lock` true also locks the record read.
    virtual oxioStatus::Status FetchFirst(bool lock);
    virtual oxioStatus::Status FetchLast(bool lock);
    virtual oxioStatus::Status FetchNext(bool lock);
    // Reads the record the table stands on again; InvalidKey when it is gone.
    virtual oxioStatus::Status FetchCurrent(bool lock);
    virtual oxioStatus::Status FetchPrev(bool lock);
    // The key is taken from the attached values (then the buffer).
    virtual oxioStatus::Status FetchEQ(bool lock);
    // Honours a partial key: trailing blank key columns are left out.
    virtual oxioStatus::Status FetchGE(bool lock);
    virtual oxioStatus::Status FetchGT(bool lock);
    // Stands on the record of the equal key without reading it into the
    // buffer or the attached values.
    virtual oxioStatus::Status SeekEQ();
    // Writes the attached values and the buffer as a new record; InvalidKey
    // (13) on a duplicate key. The error pointer is not used.
    virtual oxioStatus::Status Insert(short* error);
    // Rewrites the record the table stands on. CheckConflict answers
    // DataConflict (20) when the record changed since this cursor read it.
    virtual oxioStatus::Status Update(short* error, UpdateMethod method);
    // Deletes the record the table stands on; InvalidKey when it is gone.
    virtual oxioStatus::Status Delete();
    // Locks the record the table stands on against other processes; InUse
    // (9) while another live process holds it.
    virtual oxioStatus::Status Lock();
    virtual oxioStatus::Status Unlock(long mode);
    virtual bool Locked();
    // Kept for callers; records are locked one at a time, never a table.
    virtual oxioStatus::Status TableLockMode(long mode);
    // Blanks the buffer and forgets the record the table stands on.
    virtual void Initialize();
    // Blanks the buffer and the attached values.
    virtual void Clear();
    // Reloads the attached values from the buffer.
    virtual void Refresh();
    // Moves the attached values into the buffer.
    virtual void SetBuffer();
    // One column of the buffer by name; false for an unknown column or a
    // value that cannot take it.
    virtual bool GetColumnData(const CString& column, oxData& value) const;
    virtual bool SetColumnData(const CString& column, const oxData& value);

    const oxioDataFile* File() const { return file_; }
    short TableID() const { return table_; }
    short IndexID() const { return index_; }
    // Binds `value` to a column; false for an unknown column.
    // REQUIRES: `value` outlives the cursor or is detached by its destruction.
    bool AttachColumn(const CString& column, oxData& value);
    // Evaluates the condition list of `conditions` (an xc_* handle) in every
    // seek from now on; the list is read when attached.
    void AttachCondition(short conditions, bool keep, bool evaluate, ConditionConnector connector);
    void DetachCondition(short conditions);
    // A range is a condition list too; range and conditions must both hold.
    void AttachRange(short range);
    void DetachRange();
    // Drops what the file caches, so that the next read goes to the disk.
    void ClearFileBuffers();
    // Whether the record the table stands on has attached documents.
    bool AttachmentsExist() const;

private:
    friend class oxioBookmark;
    enum class Seek { First, Last, Next, Prev, EQ, GE, GT };

    oxioStatus::Status Fetch(Seek seek, bool lock);
    // Moves the attached values of the index's key columns into the buffer.
    void SetKeyInBuffer(oxdm::store::oxStoreFile& file);
    // Refresh on a file already found.
    void RefreshFrom(oxdm::store::oxStoreFile& file);
    // Compiles range and conditions into the file's filter.
    void RebuildFilter();
    // Takes what was read as the record under the cursor.
    void TakeRecord(oxdm::store::oxStoreFile& file, long long rowid, long long version);

    // Invariants: file_ outlives the cursor; attached_ holds column
    // positions of table_ and values the caller owns; filter_ is the file's
    // compiled form of range_ and conditions_ (0 when neither is attached);
    // readRowid_ and readVersion_ describe the record that this cursor last
    // read or wrote (0 when none); lockedRowid_ is the record this cursor
    // locked, 0 when none.
    struct Attached {
        int column;
        oxData* value;
        bool text;  // the value is of the text family
    };
    const oxioDataFile* file_;
    short table_;
    short index_;
    std::vector<Attached> attached_;
    short conditions_ = 0;
    short range_ = 0;
    int filter_ = 0;
    long long readRowid_ = 0;
    long long readVersion_ = 0;
    long long lockedRowid_ = 0;
    long tableLockMode_ = 0;
};

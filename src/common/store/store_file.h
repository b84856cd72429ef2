#pragma once
// oxStoreFile: an open data file in the process-wide table of open files.
//
// It owns the file's RecordStore and, for each table, the record buffer
// and the record the table stands on; and the saved record images, by id.
//
// Invariants: tables_[i] is the state of table i + 1 of the dictionary and
// has one field per column of that table in both images. A position with
// rowid 0 stands on no record. saved_ maps ids 1..32767 to images of one of
// this file's tables; nextSave_ is where the search for a free id begins.

#include "oxdm/base/cstring.h"
#include "oxdm/common/dictionary/open_file_table.h"
#include "record_store.h"

#include <map>
#include <memory>
#include <vector>

namespace oxdm::store {

struct TableState {
    RowImage buffer;    // what writes take and xio_get_field reads
    RowImage position;  // the record the table stands on, as last read
    int filter = 0;     // the filter of the last cursor seek on the table
    RowImage scratch;   // reused by reads, so that a walk allocates nothing

    // Makes the record just read into `scratch` the buffer and the record
    // the table stands on.
    void TakeScratch() {
        std::swap(buffer, scratch);
        position = buffer;
    }
};

class oxStoreFile : public oxOpenFile {
public:
    oxStoreFile(std::shared_ptr<const oxDictionary> dictionary, std::unique_ptr<RecordStore> store);

    // Opens the record file at `path` described by dictionary `dict` and
    // enters it in the open-file table. Raw status; `error` names the file.
    static short Open(const CString& path, const CString& dict, bool create, short* fileNum, CString& error);
    // The open data file of that number; null when there is none.
    static oxStoreFile* Find(short fileNum);

    RecordStore& Store() { return *store_; }
    // The state of a table; null when the file has no such table.
    TableState* State(short table);
    const TableSpec* Spec(short table) const { return store_->Table(table); }
    // The definition of column `column` of `table`.
    // REQUIRES: both exist.
    const xio_fld_def& Field(short table, int column) const;
    // The column position of a field of `table`, by dictionary field number
    // or by name (case ignored); -1 when the table has no such field.
    int ColumnOfField(short table, short field) const;
    int ColumnNamed(short table, const char* name) const;

    // Key values of `index` taken from `row`; empty when there is no index.
    std::vector<FieldValue> KeyOf(short table, short index, const RowImage& row) const;

    struct SavedImage {
        short table;
        RowImage row;
    };
    // Saves a copy of the table's buffer; answers its id, 0 when none is free.
    short Save(short table);
    const SavedImage* Saved(short id) const;
    bool Unsave(short id);

private:
    std::unique_ptr<RecordStore> store_;
    std::vector<TableState> tables_;
    std::map<short, SavedImage> saved_;
    short nextSave_ = 1;
};

// Raw status of a file number: 0, FILE_NOT_FOUND or IO_VOID for the table.
short Locate(short fileNum, short table, oxStoreFile*& file, TableState*& state);

}  // namespace oxdm::store

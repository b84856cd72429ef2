#pragma once
// The flat record face: records of an open data file by file number and
// table number. Each table has one record buffer and stands on one record
// (the last one read, found, written or restored). Every function returns a
// raw status (oxioStatus::Raw), 0 for success, unless told otherwise.
// A file number that is not an open data file answers FILE_NOT_FOUND; a
// table it does not have answers IO_VOID.

#include "oxdm/common/values/xval.h"

// mode 0: reads the record whose key in `index` equals the buffer's key;
// mode 1: reads the record the table stands on again. INVALID_KEY when
// there is none.
short xio_rd_record(short file, short table, short index, short mode);
// As xio_rd_record mode 0, standing on the record without reading it.
short xio_find_record(short file, short table, short index);
// One field (numbered in the whole dictionary) of the buffer, into a record
// that is overwritten without being freed; free it with x_value_free.
// REQUIRES: value is not null.
short xio_get_field(short file, short table, short field, x_value_def* value);
// Copies the buffer aside; answers the save id (> 0), or 0 on failure.
short xio_save_record(short file, short table);
short xio_unsave_record(short file, short saveId);
// Brings a saved copy back into its table's buffer and stands on its
// record. With `locate` 1 the record must still exist: INVALID_KEY when it
// is gone (the buffer is restored all the same).
short xio_restore_record(short file, short saveId, short locate, short unused);
// Writes the buffer as a new record; INVALID_KEY on a duplicate key.
short xio_wr_record(short file, short table, short* error);
// Replaces the record the table stands on with the buffer, unconditionally.
short xio_rep_record(short file, short table, short* error);
short xio_del_record(short file, short table);
// IN_USE while another live process holds the record.
short xio_lock_record(short file, short table);
short xio_unlock_record(short file, short table, long mode);
// The position of the record the table stands on, from 0 to 100 in the
// order of `index` (conditions of the last cursor seek included); 0 on any
// failure. When `count` is given it receives the same number.
short xio_get_relative_position(short file, short table, short index, unsigned long* count);
// Stands on the record at `percent` (0 to 100) of the order of `index` and
// reads it into the buffer.
short xio_set_relative_position(short file, short table, short index, short percent);

#pragma once
// The flat definition face: reading the definition records of an open file by
// its file number. Every function that returns short returns a raw status
// (oxioStatus::IO_VALID and its companions in io_status.h), 0 for success,
// except xio_num, which returns a number.
// A file number that is not open answers FILE_NOT_FOUND; a table, field, key
// or item number outside the file answers IO_VOID. Records are copied whole.

#include "oxdm/common/dictionary/definition_records.h"

// Opens the dictionary named (or whose source path is given) in def->name and
// stores its file number in def->file. Raw FILE_NOT_FOUND, IO_ERROR or
// CORRUPT_DATA on failure (oxDictionaryLoader::LastError() keeps the message).
// REQUIRES: def is not null.
short xio_open_dictionary(xio_open_dict_def* def);

// Closes an open file, dictionary or data file.
short xio_cls_file(short file);

// REQUIRES: the record pointer is not null.
short xio_get_def(short file, xio_file_def* def, short mode);
short xio_get_rec_def(short file, short table, xio_rec_def* def, short mode);
// `full` and `dataFile` do not change what is read: the whole record is given.
short xio_get_fld_def(short file, short field, xio_fld_def* def, short full, bool dataFile);
short xio_get_key_def(short file, short key, xio_key_def* def, short mode);

// The code and text of item `item` (from 1) of choice field `field`, copied
// into buffers of XIO_ITEM_CODE_SIZE and XIO_ITEM_TEXT_SIZE bytes; either
// pointer may be null.
short xio_get_item_alpha(short file, short field, short item, char* code, char* text);

// The number of the field called `name` (case ignored): kind 0 searches the
// whole file (`table` is not used), kind 2 the fields of `table`. 0 when there
// is no such field, -1 for a file number that is not open or another kind.
short xio_num(short file, short kind, short table, const char* name);

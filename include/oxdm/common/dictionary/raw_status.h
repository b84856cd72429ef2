#pragma once
// Raw status codes of the flat record face (xio_*, xc_*, xk_*). Every flat
// function that returns a short status returns one of these; 0 is success.
// The class face converts them with oxioStatus::ConvertToOxio; the two
// numberings differ (raw 9 and 10 are "at start" and "at end", raw 11 is the
// invalid or duplicate key).
//
// What this layer answers:
//   FILE_NOT_FOUND     no dictionary source of that name on the search path,
//                      or a file number that is not open
//   IO_ERROR           the source exists but cannot be read
//   CORRUPT_DATA       the source does not compile (the sentence naming the
//                      file, line and fault is kept by oxDictionaryLoader)
//   IO_VOID            a table, field, key or item number outside the file
//   TOO_MANY_OPEN_FILES the open-file table is full

namespace oxioRaw {

enum Code : short {
    IO_VALID = 0,
    IO_ERROR = 1,
    DEVICE_NOT_FOUND = 2,
    FILE_NOT_FOUND = 3,
    FILE_EXISTS = 4,
    NO_ROOM = 5,
    WRITE_PROTECT = 6,
    IN_USE = 7,
    AT_START = 9,
    AT_END = 10,
    INVALID_KEY = 11,
    WRONG_PASSWORD = 12,
    IO_VOID = 13,
    CORRUPT_DATA = 14,
    INCOMPATIBLE_FILE = 15,
    SECURITY_VIOLATION = 16,
    TOO_MANY_OPEN_FILES = 17,
    INCONSISTENT_KEY = 18,
};

// The printed name of a raw code ("IO_VALID", "CORRUPT_DATA", ...); the empty
// text for 8, for negative codes and for codes of 19 or more.
const char* Name(short code);

}  // namespace oxioRaw

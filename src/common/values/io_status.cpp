#include "oxdm/common/values/io_status.h"

oxioStatus::Status oxioStatus::ConvertToOxio(short raw) {
    // The raw numbering lacks the two row conditions, so from raw 5 on every
    // code is two below its status.
    if (raw >= IO_VALID && raw <= FILE_EXISTS) return static_cast<Status>(raw);
    if (raw >= NO_ROOM && raw <= INCONSISTENT_KEY) return static_cast<Status>(raw + 2);
    return IOError;
}

const char* oxioStatus::RawName(short raw) {
    static const char* const kNames[] = {
        "IO_VALID",       "IO_ERROR",     "DEVICE_NOT_FOUND",  "FILE_NOT_FOUND",     "FILE_EXISTS",
        "NO_ROOM",        "WRITE_PROTECT", "IN_USE",           "",                   "AT_START",
        "AT_END",         "INVALID_KEY",  "WRONG_PASSWORD",    "IO_VOID",            "CORRUPT_DATA",
        "INCOMPATIBLE_FILE", "SECURITY_VIOLATION", "TOO_MANY_OPEN_FILES", "INCONSISTENT_KEY",
    };
    if (raw < 0 || raw >= static_cast<short>(sizeof kNames / sizeof kNames[0])) return "";
    return kNames[raw];
}

#include "oxdm/common/dictionary/raw_status.h"

const char* oxioRaw::Name(short code) {
    static const char* const kNames[] = {
        "IO_VALID",      "IO_ERROR",          "DEVICE_NOT_FOUND",   "FILE_NOT_FOUND",
        "FILE_EXISTS",   "NO_ROOM",           "WRITE_PROTECT",      "IN_USE",
        "",              "AT_START",          "AT_END",             "INVALID_KEY",
        "WRONG_PASSWORD", "IO_VOID",          "CORRUPT_DATA",       "INCOMPATIBLE_FILE",
        "SECURITY_VIOLATION", "TOO_MANY_OPEN_FILES", "INCONSISTENT_KEY",
    };
    if (code < 0 || code >= static_cast<short>(sizeof kNames / sizeof kNames[0])) return "";
    return kNames[code];
}

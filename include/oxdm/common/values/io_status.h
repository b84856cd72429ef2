#pragma once
// oxioStatus: the result of a record operation.
//
// The class face answers oxioStatus::Status; the flat face (xio_*) answers a
// raw short code of another numbering, which ConvertToOxio maps. From raw 5
// on, the enum is the raw code plus 2: the enum has two row conditions
// (5, 6) that the raw numbering lacks.
//
//   raw  name                 enum
//    0   IO_VALID              0  Success
//    1   IO_ERROR              1  IOError
//    2   DEVICE_NOT_FOUND      2  DeviceNotFound
//    3   FILE_NOT_FOUND        3  FileNotFound
//    4   FILE_EXISTS           4  FileExists
//    -                         5  RowNotFound
//    -                         6  RowExists
//    5   NO_ROOM               7  NoRoom
//    6   WRITE_PROTECT         8  WriteProtected
//    7   IN_USE                9  InUse
//    8   (no name)            10  Reserved
//    9   AT_START             11  AtStart
//   10   AT_END               12  AtEnd
//   11   INVALID_KEY          13  InvalidKey (invalid or duplicate key; gone)
//   12   WRONG_PASSWORD       14  WrongPassword
//   13   IO_VOID              15  Cancelled
//   14   CORRUPT_DATA         16  CorruptData
//   15   INCOMPATIBLE_FILE    17  IncompatibleFile
//   16   SECURITY_VIOLATION   18  SecurityViolation
//   17   TOO_MANY_OPEN_FILES  19  TooManyOpenFiles
//   18   INCONSISTENT_KEY     20  DataConflict (changed by another writer)
//
// Any other raw code is an IO error.

class oxioStatus {
public:
    enum Status : short {
        Success = 0,
        IOError = 1,
        DeviceNotFound = 2,
        FileNotFound = 3,
        FileExists = 4,
        RowNotFound = 5,
        RowExists = 6,
        NoRoom = 7,
        WriteProtected = 8,
        InUse = 9,
        Reserved = 10,
        AtStart = 11,
        AtEnd = 12,
        InvalidKey = 13,
        WrongPassword = 14,
        Cancelled = 15,
        CorruptData = 16,
        IncompatibleFile = 17,
        SecurityViolation = 18,
        TooManyOpenFiles = 19,
        DataConflict = 20,
    };

    // Raw codes of the flat face, by name. Plain shorts, as the flat face
    // answers them.
    static constexpr short IO_VALID = 0;
    static constexpr short IO_ERROR = 1;
    static constexpr short DEVICE_NOT_FOUND = 2;
    static constexpr short FILE_NOT_FOUND = 3;
    static constexpr short FILE_EXISTS = 4;
    static constexpr short NO_ROOM = 5;
    static constexpr short WRITE_PROTECT = 6;
    static constexpr short IN_USE = 7;
    static constexpr short AT_START = 9;
    static constexpr short AT_END = 10;
    static constexpr short INVALID_KEY = 11;
    static constexpr short WRONG_PASSWORD = 12;
    static constexpr short IO_VOID = 13;
    static constexpr short CORRUPT_DATA = 14;
    static constexpr short INCOMPATIBLE_FILE = 15;
    static constexpr short SECURITY_VIOLATION = 16;
    static constexpr short TOO_MANY_OPEN_FILES = 17;
    static constexpr short INCONSISTENT_KEY = 18;

    static Status ConvertToOxio(short raw);

    // The name of a raw code as the dictionary import prints it ("IO_VALID",
    // ..., "INCONSISTENT_KEY"); "" for a code without a name.
    static const char* RawName(short raw);
};

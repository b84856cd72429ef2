#pragma once
// Raw status codes of the flat record face, with the names that the
// dictionary import prints. kConflict is the store's own answer to a
// version-checked write that lost a race; the class face turns it into its
// status 20, and the flat face never returns it.

namespace oxdm::store::raw {

inline constexpr short IO_VALID = 0;
inline constexpr short IO_ERROR = 1;
inline constexpr short DEVICE_NOT_FOUND = 2;
inline constexpr short FILE_NOT_FOUND = 3;
inline constexpr short FILE_EXISTS = 4;
inline constexpr short NO_ROOM = 5;
inline constexpr short WRITE_PROTECT = 6;
inline constexpr short IN_USE = 7;
inline constexpr short AT_START = 9;
inline constexpr short AT_END = 10;
inline constexpr short INVALID_KEY = 11;
inline constexpr short WRONG_PASSWORD = 12;
inline constexpr short IO_VOID = 13;
inline constexpr short CORRUPT_DATA = 14;
inline constexpr short INCOMPATIBLE_FILE = 15;
inline constexpr short SECURITY_VIOLATION = 16;
inline constexpr short TOO_MANY_OPEN_FILES = 17;
inline constexpr short INCONSISTENT_KEY = 18;

inline constexpr short kConflict = 1020;

}  // namespace oxdm::store::raw

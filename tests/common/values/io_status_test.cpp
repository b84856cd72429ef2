// The raw codes of the flat face against the status of the class face.
#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

#include "oxdm/common/values/io_status.h"

namespace {

TEST(ValuesIoStatus, EveryNamedRawCodeMapsToItsCondition) {
    // Raw name -> the status that means the same condition.
    const std::map<std::string, oxioStatus::Status> same = {
        {"IO_VALID", oxioStatus::Success},
        {"IO_ERROR", oxioStatus::IOError},
        {"DEVICE_NOT_FOUND", oxioStatus::DeviceNotFound},
        {"FILE_NOT_FOUND", oxioStatus::FileNotFound},
        {"FILE_EXISTS", oxioStatus::FileExists},
        {"NO_ROOM", oxioStatus::NoRoom},
        {"WRITE_PROTECT", oxioStatus::WriteProtected},
        {"IN_USE", oxioStatus::InUse},
        {"AT_START", oxioStatus::AtStart},
        {"AT_END", oxioStatus::AtEnd},
        {"INVALID_KEY", oxioStatus::InvalidKey},
        {"WRONG_PASSWORD", oxioStatus::WrongPassword},
        {"IO_VOID", oxioStatus::Cancelled},
        {"CORRUPT_DATA", oxioStatus::CorruptData},
        {"INCOMPATIBLE_FILE", oxioStatus::IncompatibleFile},
        {"SECURITY_VIOLATION", oxioStatus::SecurityViolation},
        {"TOO_MANY_OPEN_FILES", oxioStatus::TooManyOpenFiles},
        {"INCONSISTENT_KEY", oxioStatus::DataConflict},
    };
    std::set<int> statuses;
    int named = 0;
    for (short raw = -5; raw < 40; ++raw) {
        const std::string name = oxioStatus::RawName(raw);
        if (name.empty()) {
            // The one unnamed code inside the numbering keeps its place; the
            // codes outside it are IO errors.
            EXPECT_EQ(oxioStatus::ConvertToOxio(raw), raw == 8 ? oxioStatus::Reserved : oxioStatus::IOError) << raw;
            continue;
        }
        ++named;
        ASSERT_TRUE(same.count(name)) << name;
        EXPECT_EQ(oxioStatus::ConvertToOxio(raw), same.at(name)) << name;
        statuses.insert(oxioStatus::ConvertToOxio(raw));
    }
    EXPECT_EQ(named, 18);
    EXPECT_EQ(statuses.size(), 18u);  // no two raw codes share a status
}

TEST(ValuesIoStatus, TheStatedCorrespondences) {
    EXPECT_EQ(oxioStatus::ConvertToOxio(11), 13);
    EXPECT_EQ(oxioStatus::ConvertToOxio(9), 11);
    EXPECT_EQ(oxioStatus::ConvertToOxio(10), 12);
    EXPECT_EQ(oxioStatus::ConvertToOxio(0), 0);
    EXPECT_EQ(oxioStatus::DataConflict, 20);
    EXPECT_STREQ(oxioStatus::RawName(0), "IO_VALID");
    EXPECT_STREQ(oxioStatus::RawName(18), "INCONSISTENT_KEY");
    EXPECT_STREQ(oxioStatus::RawName(8), "");
}

}  // namespace

#pragma once
// A small dictionary "tsl" written into a scratch directory, and a record
// file of it opened through the class face.
//
// Table 1 Line: ORDNO alpha key, LINENO numeric key, ITEM alpha, QTY numeric
// (2 decimals), SHIPPED date, AT time, RUSH boolean, KIND choice, then the
// operator, date and time stamps. Key 1 orders table 1 by ITEM.
// Table 2 Note: NOTENO alpha key, BODY alpha.

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "store_fixture.h"

#include <fstream>

namespace oxdm::store::testing {

inline const char* kLineDictionary = R"(
[file]
abbreviation = "ts"
letter = "l"
code = 7

[[table]]
description = "Line"
  [[table.field]]
  name = "ORDNO"
  type = "alpha"
  length = 10
  key = true
  [[table.field]]
  name = "LINENO"
  type = "numeric"
  length = 4
  key = true
  [[table.field]]
  name = "ITEM"
  type = "alpha"
  length = 20
  [[table.field]]
  name = "QTY"
  type = "numeric"
  length = 8
  decimals = 2
  [[table.field]]
  name = "SHIPPED"
  type = "date"
  length = 8
  [[table.field]]
  name = "AT"
  type = "time"
  length = 6
  [[table.field]]
  name = "RUSH"
  type = "boolean"
  length = 1
  [[table.field]]
  name = "KIND"
  type = "choice"
  length = 2
  items = ["Part", "Labour", "Fee"]
  [[table.field]]
  name = "OPERID"
  type = "alpha"
  length = 8
  operator_stamp = true
  [[table.field]]
  name = "DSTAMP"
  type = "date"
  length = 8
  date_stamp = true
  [[table.field]]
  name = "TSTAMP"
  type = "time"
  length = 6
  time_stamp = true

[[table]]
description = "Note"
  [[table.field]]
  name = "NOTENO"
  type = "alpha"
  length = 8
  key = true
  [[table.field]]
  name = "BODY"
  type = "alpha"
  length = 60

[[key]]
table = 1
fields = ["ITEM"]
)";

// The scratch directory holds tsl.toml and is the dictionary search path
// for the life of the fixture.
class LineFileTest : public ::testing::Test {
protected:
    void SetUp() override {
        std::ofstream(dir_.File("tsl.toml")) << kLineDictionary;
        setenv("OXDM_DICT_PATH", dir_.File("").c_str(), 1);
        setenv("OXDM_OPERATOR", "TESTER", 1);
        file_ = OpenFile();
        ASSERT_NE(file_, nullptr);
    }
    void TearDown() override { unsetenv("OXDM_DICT_PATH"); }

    std::string Path() const { return dir_.File("lines.tsl"); }
    std::unique_ptr<oxioDataFile> OpenFile() {
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec(Path().c_str()), true, status, error);
        EXPECT_EQ(status, oxioStatus::Success) << error;
        return file;
    }

    ScratchDir dir_;
    std::unique_ptr<oxioDataFile> file_;
};

}  // namespace oxdm::store::testing

#pragma once
// Sample data in a record file of the dictionary "ord": orders written
// through the store's class face, and a walk that lists the order numbers a
// cursor delivers.

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"

struct OrderRow {
    const char* ordno;
    const char* custno;
    double total;
    oxDate date;
};

inline std::unique_ptr<oxioDataFile> OpenOrdFile(const std::string& path) {
    oxioStatus::Status status = oxioStatus::IOError;
    CString error;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec(path.c_str()), true, status, error);
    EXPECT_EQ(status, oxioStatus::Success) << error;
    return file;
}

inline void WriteOrders(const oxioDataFile& file, const std::vector<OrderRow>& rows) {
    oxioCursor cursor(file, 2, 0);
    oxAlpha ordno, custno;
    oxDouble total(0.0, 2);
    oxDate date;
    cursor.AttachColumn("ORDNO", ordno);
    cursor.AttachColumn("CUSTNO", custno);
    cursor.AttachColumn("TOTAL", total);
    cursor.AttachColumn("ODATE", date);
    for (const OrderRow& row : rows) {
        cursor.Clear();
        ordno.SetVal(CString(row.ordno));
        custno.SetVal(CString(row.custno));
        total.SetVal(row.total);
        date = row.date;
        ASSERT_EQ(cursor.Insert(nullptr), oxioStatus::Success) << row.ordno;
    }
}

// The order numbers that `cursor` (on table 2) delivers from first to last.
inline std::vector<std::string> OrderNumbers(oxioCursor& cursor) {
    std::vector<std::string> out;
    oxAlpha ordno;
    for (auto status = cursor.FetchFirst(false); status == oxioStatus::Success; status = cursor.FetchNext(false)) {
        cursor.GetColumnData("ORDNO", ordno);
        out.push_back(ordno.GetVal().str());
    }
    return out;
}

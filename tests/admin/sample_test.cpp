#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <numeric>
#include <set>

#include "admin_run.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"
#include "sample_data.h"
#include "sample_plan.h"
#include "sample_random.h"

namespace {

using oxdm::admin::testing::ExamplesDir;
using oxdm::admin::testing::TempDir;

TEST(SampleSplit, SharesVaryStayUnderTheCapAndSumToTheTotal) {
    struct Case {
        long long total, parts, cap;
    };
    for (Case c : {Case{200000, 50000, 9999}, Case{50000, 10000, 50000}, Case{7, 10, 9999}, Case{30, 3, 10},
                   Case{12, 4, 3}, Case{10, 10, 9999}, Case{0, 5, 9999}, Case{0, 0, 0}}) {
        oxSampleRandom random(42);
        std::vector<long long> shares = oxSplitTotal(c.total, c.parts, c.cap, random);
        ASSERT_EQ(static_cast<long long>(shares.size()), c.parts);
        EXPECT_EQ(std::accumulate(shares.begin(), shares.end(), 0LL), c.total);
        long long least = c.total >= c.parts && c.parts > 0 ? 1 : 0;
        for (long long share : shares) EXPECT_TRUE(share >= least && share <= c.cap) << share;
        if (c.total > c.parts && c.total < c.parts * c.cap) {
            EXPECT_GT(std::set<long long>(shares.begin(), shares.end()).size(), 1u);
        }
    }
}

TEST(SampleSplit, TheSameSeedGivesTheSameShares) {
    oxSampleRandom a(7), b(7), c(8);
    std::vector<long long> first = oxSplitTotal(1000, 100, 9999, a);
    EXPECT_EQ(first, oxSplitTotal(1000, 100, 9999, b));
    EXPECT_NE(first, oxSplitTotal(1000, 100, 9999, c));
}

TEST(SampleCounts, CountsThatTheKeysCannotHoldAreRefused) {
    EXPECT_TRUE(oxSampleCountsProblem(oxSampleCounts{}).IsEmpty());
    EXPECT_TRUE(oxSampleCountsProblem({0, 0, 0}).IsEmpty());
    EXPECT_FALSE(oxSampleCountsProblem({0, 5, 0}).IsEmpty());
    EXPECT_FALSE(oxSampleCountsProblem({5, 0, 3}).IsEmpty());
    EXPECT_FALSE(oxSampleCountsProblem({1, 1, 10000}).IsEmpty());
    EXPECT_TRUE(oxSampleCountsProblem({1, 1, 9999}).IsEmpty());
    EXPECT_FALSE(oxSampleCountsProblem({-1, 0, 0}).IsEmpty());
    EXPECT_FALSE(oxSampleCountsProblem({kSampleMaxCustomers + 1, 0, 0}).IsEmpty());
}

// Walks a whole table, handing each record's attached values to `visit`.
template <typename Visit>
long long Walk(oxioCursor& cursor, Visit visit) {
    long long count = 0;
    for (auto status = cursor.FetchFirst(false); status == oxioStatus::Success; status = cursor.FetchNext(false)) {
        ++count;
        visit();
    }
    return count;
}

TEST(SampleData, OrdersBelongToCustomersAndTotalTheirLines) {
    TempDir dir;
    setenv("OXDM_DICT_PATH", ExamplesDir().c_str(), 1);
    oxioStatus::Status status;
    CString error;
    auto file = oxioDataFile::Open(oxioFileSpec(CString(dir / "sample.ord")), true, status, error);
    ASSERT_TRUE(file) << error;
    oxSampleCounts counts{20, 70, 300};
    ASSERT_EQ(oxGenerateSample(*file, counts, error), oxioStatus::Success) << error;

    std::set<std::string> customers;
    oxioCursor custCursor(*file, 1, 0);
    oxAlpha custNo;
    custCursor.AttachColumn("CUSTNO", custNo);
    EXPECT_EQ(Walk(custCursor, [&] { customers.insert(custNo.GetVal().str()); }), counts.customers);

    std::map<std::string, long long> orderCents;
    oxioCursor orderCursor(*file, 2, 0);
    oxAlpha ordNo, ordCust;
    oxDouble total(0, 2);
    orderCursor.AttachColumn("ORDNO", ordNo);
    orderCursor.AttachColumn("CUSTNO", ordCust);
    orderCursor.AttachColumn("TOTAL", total);
    EXPECT_EQ(Walk(orderCursor,
                   [&] {
                       EXPECT_TRUE(customers.count(ordCust.GetVal().str())) << ordNo.GetVal();
                       orderCents[ordNo.GetVal().str()] = std::llround(total.GetVal() * 100);
                   }),
              counts.orders);

    std::map<std::string, long long> lineCents;
    oxioCursor lineCursor(*file, 3, 0);
    oxAlpha lineOrd;
    oxDouble qty(0, 0), price(0, 2);
    lineCursor.AttachColumn("ORDNO", lineOrd);
    lineCursor.AttachColumn("QTY", qty);
    lineCursor.AttachColumn("PRICE", price);
    EXPECT_EQ(Walk(lineCursor,
                   [&] {
                       lineCents[lineOrd.GetVal().str()] +=
                           std::llround(qty.GetVal()) * std::llround(price.GetVal() * 100);
                   }),
              counts.lines);
    for (const auto& [order, cents] : orderCents) {
        auto lines = lineCents.find(order);
        EXPECT_EQ(cents, lines == lineCents.end() ? 0 : lines->second) << order;
    }
    // Some customers have several orders, some orders several lines.
    EXPECT_LT(lineCents.size(), static_cast<size_t>(counts.lines));

    // A second run into the same file refuses and writes nothing more.
    EXPECT_EQ(oxGenerateSample(*file, {1, 0, 0}, error), oxioStatus::FileExists);
    EXPECT_EQ(Walk(custCursor, [] {}), counts.customers);
}

}  // namespace

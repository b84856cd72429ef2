// The memory table of typed cells: cloning, freeing, parsing and the order
// of typed values, null cells included.

#include <gtest/gtest.h>

#include <memory>

#include "ds_recorder.h"
#include "oxdm/common/values/date_value.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/datasource/oxdata_mem_data_source.h"

namespace {

using TypedRow = std::vector<oxData*>;

// A row of values owned by the test; the table only ever holds clones.
struct OwnedRows {
    std::vector<std::unique_ptr<oxData>> values;
    std::vector<TypedRow> rows;
    void Add(std::initializer_list<oxData*> cells) {
        TypedRow row;
        for (oxData* cell : cells) {
            if (cell) values.emplace_back(cell);
            row.push_back(cell);
        }
        rows.push_back(row);
    }
};

TEST(TypedMemory, RowsAreClonedAndTheCallerKeepsItsOwn) {
    OwnedRows data;
    data.Add({new oxAlpha("Ann"), new oxDouble(3.5, 1)});
    data.Add({new oxAlpha("Bob"), new oxDouble(1.25, 2)});
    oxdmOXDataMemDataSource source(data.rows, {"Name", "Amount"}, {nullptr, nullptr}, "entry", false);
    EXPECT_NE(source.GetCellValueAbsolute(0, 0), data.rows[0][0]);
    EXPECT_EQ(source.CellValueAsString(0, 0), "Ann");

    std::unique_ptr<oxData> name(new oxAlpha("Cy"));
    std::unique_ptr<oxData> amount(new oxDouble(2.0, 1));
    TypedRow appended{name.get(), amount.get()};
    ASSERT_TRUE(source.AppendNewRow(appended));
    EXPECT_NE(source.GetCellValueAbsolute(2, 0), name.get());
    EXPECT_EQ(source.GetCellValueAbsolute(2, 0)->Format(), "Cy");
    source.SetFocusAbsolute(2, 0, true);
    EXPECT_TRUE(source.DeleteRow(0, true));  // the default presenter answers Yes
    EXPECT_EQ(source.TotalRows(), 2);
    EXPECT_EQ(name->Format(), "Cy");  // still the caller's, untouched

    std::vector<std::vector<oxData*>> raw = source.GetRawDS();
    ASSERT_FALSE(raw.empty());
    EXPECT_EQ(raw[0][0], source.GetCellValueAbsolute(0, 0));  // shared, not cloned
}

TEST(TypedMemory, EditsParseThroughTheCellAndRefuseBadText) {
    OwnedRows data;
    data.Add({new oxDate(1, 2, 2026)});
    oxdmOXDataMemDataSource source(data.rows, {"When"}, {nullptr}, "date", false);
    EXPECT_TRUE(source.ObserverSetNewValue(0, "3/4/2026", 0, true));
    EXPECT_EQ(source.NewValueAsString(0), "03/04/2026");
    EXPECT_FALSE(source.ObserverSetNewValue(0, "not a date", 0, true));
    EXPECT_EQ(source.NewValueAsString(0), "03/04/2026");
    ASSERT_TRUE(source.ValidateRow(0, true));
    EXPECT_EQ(source.GetCellValueAbsolute(0, 0)->Format(), "03/04/2026");
    EXPECT_EQ(data.rows[0][0]->Format(), "01/02/2026");
}

TEST(TypedMemory, ANullCellSortsNeitherBeforeNorAfter) {
    oxdmOXDataMemDataSource source({}, {"N"}, {nullptr}, "n", false);
    oxDouble one(1.0, 0);
    EXPECT_FALSE(source.StringCellCompare(nullptr, &one));
    EXPECT_FALSE(source.StringCellCompare(&one, nullptr));
    EXPECT_FALSE(source.IntCellCompare(nullptr, &one));

    OwnedRows data;
    data.Add({new oxDouble(10.0, 0)});
    data.Add({new oxDouble(9.0, 0)});
    data.Add({new oxDouble(9.0, 0)});
    oxdmOXDataMemDataSource numbers(data.rows, {"N"}, {nullptr}, "n", false);
    numbers.Sort(0, true);  // by the values' own order, not the text
    EXPECT_EQ(numbers.GetAbsoluteRow(0), 2);
    EXPECT_EQ(numbers.GetAbsoluteRow(1), 1);
    EXPECT_EQ(numbers.GetAbsoluteRow(2), 0);
}

TEST(TypedMemory, FindComparesTheTextFormsAndANullCellTakesText) {
    OwnedRows data;
    data.Add({new oxAlpha("pear"), new oxDouble(12.0, 0)});
    data.Add({new oxAlpha("Plum"), new oxDouble(7.0, 0)});
    oxdmOXDataMemDataSource source(data.rows, {"Fruit", "Count"}, {nullptr, nullptr}, "fruit", false);
    EXPECT_TRUE(source.SetFindValue(1, "7"));
    EXPECT_EQ(source.GetFindValueAsString(1), "7");
    EXPECT_FALSE(source.FindSubstr(0, "PL"));  // the searched column must equal its find value too
    EXPECT_TRUE(source.SetFindValue(0, "Plum"));
    EXPECT_TRUE(source.FindSubstr(0, "PL"));
    EXPECT_EQ(source.FocusRowAbsolute(), 1);
    EXPECT_TRUE(source.SetFindValue(0, ""));
    EXPECT_TRUE(source.SetFindValue(1, "10"));
    EXPECT_TRUE(source.FindGE());  // 12 >= 10 numerically, "pear" >= "" as text
    EXPECT_EQ(source.FocusRowAbsolute(), 0);
}

}  // namespace

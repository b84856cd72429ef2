// The table dictionary over the sample dictionary "ord" and small ones
// written by the tests: import, lookups and their failures, values by field
// type, descriptions, choices, join texts and the refresh of custom fields.

#include <cstring>
#include <memory>

#include "oxdm/base/exception.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/partial_dates.h"
#include "oxdm/common/values/small_values.h"
#include "oxdm/common/values/text_values.h"
#include "oxdm/common/values/time_value.h"
#include "oxdm/record/dictionary_manager.h"
#include "record_test_support.h"

namespace {

class DictionaryTest : public RecordTestBase {
protected:
    oxdmTableDef* Ord(short num) { return dicts_.Table("ord", num); }

    // The message of the oxdmException that f throws; fails when none.
    template <class F>
    static CString ThrownMessage(F&& f) {
        try {
            f();
        } catch (const oxdmException& e) {
            return e.Message();
        }
        ADD_FAILURE() << "no oxdmException";
        return CString();
    }

    static xio_fld_def Field(const char* name, short type, const char* desc = "") {
        xio_fld_def def{};
        std::strncpy(def.name, name, sizeof def.name - 1);
        std::strncpy(def.description, desc, sizeof def.description - 1);
        def.type = type;
        return def;
    }

    oxdmDictionaryManager dicts_;
};

TEST_F(DictionaryTest, ImportBuildsTablesColumnsAndIndexes) {
    oxdmTableDef* line = Ord(3);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(dicts_.Tables().size(), 4u);
    EXPECT_EQ(line->Name(), "Line");
    EXPECT_EQ(line->FileExt(), "ord");
    ASSERT_EQ(line->Columns().size(), 8u);
    EXPECT_EQ(line->Columns()[2]->Name(), "ITEM");
    EXPECT_EQ(line->Columns()[2]->Table(), line);

    // Index 0 is the key flag's columns in table order; key 1 is global and
    // lands on the table it names.
    const oxdmSortIndex& own = line->Index(0);
    ASSERT_EQ(own.Columns().size(), 2u);
    EXPECT_EQ(own[0]->Name(), "ORDNO");
    EXPECT_EQ(own[1]->Name(), "LINENO");
    EXPECT_EQ(own[2], nullptr);
    EXPECT_EQ(own[-1], nullptr);
    EXPECT_EQ(own.KeyDef(), nullptr);

    const oxdmSortIndex& byCustomer = Ord(2)->Index(1);
    ASSERT_NE(byCustomer.KeyDef(), nullptr);
    ASSERT_EQ(byCustomer.Columns().size(), 2u);
    EXPECT_EQ(byCustomer[0]->Name(), "CUSTNO");
    EXPECT_EQ(byCustomer[1]->Name(), "ORDNO");
    EXPECT_EQ(byCustomer.Table(), Ord(2));

    // Field numbers are global: the first field of Line follows the 9 of
    // Customer and the 7 of Order.
    EXPECT_EQ(line->ColumnByNum(17)->Name(), "ORDNO");
    EXPECT_EQ(line->ColumnByNum(16), nullptr);
    EXPECT_EQ(line->ColumnByNum(25), nullptr);
    EXPECT_EQ(dicts_.FindTable("Order"), Ord(2));
    EXPECT_EQ(dicts_.FindTable("order"), nullptr);
}

TEST_F(DictionaryTest, ImportHappensOnceAndPointersStayValid) {
    oxdmTableDef* first = Ord(1);
    oxdmColumnDef* name = first->Column("NAME");
    EXPECT_EQ(Ord(1), first);
    EXPECT_EQ(Ord(1)->Column("name"), name);
    EXPECT_EQ(dicts_.Tables().size(), 4u);
}

TEST_F(DictionaryTest, LookupFailuresThrowTheirSentences) {
    EXPECT_EQ(ThrownMessage([&] { Ord(9); }), "Couldn't find table 9 in dictionary ord");
    EXPECT_EQ(ThrownMessage([&] { Ord(1)->Column("NOPE"); }), "'NOPE' is not a column in table 'Customer'.");
    EXPECT_EQ(ThrownMessage([&] { (*Ord(1))["NOPE"]; }), "'NOPE' is not a column in table 'Customer'.");
    EXPECT_EQ(ThrownMessage([&] { Ord(1)->Index(7); }), "7 is not an index for table 'Customer'");
    // The dictionary name compares with its case.
    EXPECT_EQ(ThrownMessage([&] { dicts_.Table("ORD", 1); }),
              "Couldn't import dictionary ORD because FILE_NOT_FOUND");
}

TEST_F(DictionaryTest, FailedImportShowsABoxThrowsAndIsTriedAgain) {
    const CString expected = "Couldn't import dictionary nosuch because FILE_NOT_FOUND";
    EXPECT_EQ(ThrownMessage([&] { dicts_.Table("nosuch", 1); }), expected);
    ASSERT_EQ(Boxes().size(), 1u);
    EXPECT_EQ(Boxes()[0].text, expected);
    EXPECT_EQ(Boxes()[0].title, "Error!");
    EXPECT_EQ(Boxes()[0].style, 64u);

    // Not recorded: once the dictionary exists the next use imports it.
    WriteDict("nosuch", "[[table]]\ndescription = \"Plain\"\n"
                        "  [[table.field]]\n  name = \"A\"\n  type = \"alpha\"\n  length = 4\n");
    oxdmTableDef* plain = dicts_.Table("nosuch", 1);
    ASSERT_NE(plain, nullptr);
    EXPECT_EQ(Boxes().size(), 1u);
    // A table with no key columns has an index 0 with none.
    EXPECT_TRUE(plain->Index(0).Columns().empty());
}

TEST_F(DictionaryTest, CorruptDictionaryNamesItsStatus) {
    WriteDict("broken", "[[table]]\ndescription = 5\n");
    EXPECT_EQ(ThrownMessage([&] { dicts_.Table("broken", 1); }),
              "Couldn't import dictionary broken because CORRUPT_DATA");
}

TEST_F(DictionaryTest, CreateDataByFieldType) {
    oxdmTableDef* customer = Ord(1);
    std::unique_ptr<oxData> custno(customer->Column("CUSTNO")->CreateData());
    auto* key = dynamic_cast<oxAlpha*>(custno.get());
    ASSERT_NE(key, nullptr);
    EXPECT_FALSE(key->CaseSensitive());  // key columns fold case
    std::unique_ptr<oxData> name(customer->Column("NAME")->CreateData());
    EXPECT_TRUE(dynamic_cast<oxAlpha&>(*name).CaseSensitive());

    std::unique_ptr<oxData> status(customer->Column("STATUS")->CreateData());
    ASSERT_NE(dynamic_cast<oxChoice*>(status.get()), nullptr);
    EXPECT_EQ(dynamic_cast<oxChoice&>(*status).GetVal(), 1);

    std::unique_ptr<oxData> balance(customer->Column("BALANCE")->CreateData());
    ASSERT_NE(dynamic_cast<oxDouble*>(balance.get()), nullptr);
    EXPECT_EQ(dynamic_cast<oxDouble&>(*balance).Decimals(), 2);

    std::unique_ptr<oxData> since(customer->Column("SINCE")->CreateData());
    EXPECT_EQ(oxDataClassName(*since), "oxDate");
    std::unique_ptr<oxData> tstamp(customer->Column("TSTAMP")->CreateData());
    EXPECT_NE(dynamic_cast<oxTime*>(tstamp.get()), nullptr);

    // A date of default width 5 holds month and day; the month-year flag wins.
    xio_fld_def date = Field("D", XIO_DATE);
    date.default_width = 5;
    EXPECT_NE(dynamic_cast<oxDateMonthDay*>(std::unique_ptr<oxData>(oxdmColumnDef(nullptr, date).CreateData()).get()),
              nullptr);
    date.month_year = 1;
    EXPECT_NE(dynamic_cast<oxDateMonthYear*>(std::unique_ptr<oxData>(oxdmColumnDef(nullptr, date).CreateData()).get()),
              nullptr);

    // A numeric default goes through the value's own parse.
    xio_fld_def number = Field("N", XIO_NUMERIC);
    number.decimal = 1;
    number.default_value = 7;
    std::unique_ptr<oxData> seven(oxdmColumnDef(nullptr, number).CreateData());
    EXPECT_DOUBLE_EQ(dynamic_cast<oxDouble&>(*seven).GetVal(), 7.0);

    xio_fld_def memo = Field("M", XIO_ALPHA);
    memo.multi_line = 1;
    EXPECT_NE(dynamic_cast<oxText*>(std::unique_ptr<oxData>(oxdmColumnDef(nullptr, memo).CreateData()).get()), nullptr);

    EXPECT_EQ(ThrownMessage([] { oxdmColumnDef(nullptr, Field("ODD", 12)).CreateData(); }),
              "Column ODD has unknown type.");
}

TEST_F(DictionaryTest, NameOverrideAndJustification) {
    oxdmColumnDef imported(nullptr, Field("AMT", XIO_NUMERIC));
    EXPECT_EQ(imported.Name(), "AMT");
    EXPECT_EQ(oxdmColumnDef(nullptr, Field("AMT", XIO_NUMERIC), "").Name(), "AMT");
    EXPECT_EQ(oxdmColumnDef(nullptr, Field("AMT", XIO_NUMERIC), "Amount").Name(), "Amount");

    EXPECT_TRUE(imported.RightJustify());
    EXPECT_TRUE(oxdmColumnDef(nullptr, Field("T", XIO_TIME)).RightJustify());
    EXPECT_FALSE(oxdmColumnDef(nullptr, Field("A", XIO_ALPHA)).RightJustify());
    xio_fld_def right = Field("A", XIO_ALPHA);
    right.right_justify = 1;
    EXPECT_TRUE(oxdmColumnDef(nullptr, right).RightJustify());
    right.type = XIO_PHONE;  // the alpha flag means nothing to other types
    EXPECT_FALSE(oxdmColumnDef(nullptr, right).RightJustify());
}

TEST_F(DictionaryTest, DescriptionForms) {
    // The sample's "Ordered %1" names field code 1, "Item number".
    const oxdmColumnDef* item = Ord(3)->Column("ITEM");
    EXPECT_EQ(item->Desc(false), "Ordered <1I>");
    EXPECT_EQ(item->Desc(true), "Ordered item number");

    auto desc = [](const char* text, bool expand) { return oxdmColumnDef(nullptr, Field("F", 0, text)).Desc(expand); };
    EXPECT_EQ(desc("%", true), "%");
    EXPECT_EQ(desc("%", false), "%");
    EXPECT_EQ(desc("100%%", true), "100%");
    EXPECT_EQ(desc("%12.3 total", false), "<12.3I> total");
    EXPECT_EQ(desc("%1.2.3.4.5x", false), "<1.2.3.I>4.5x");
    EXPECT_EQ(desc("50% off", false), "50% off");
    // Section 2 of code 1 has a description of its own.
    EXPECT_EQ(desc("Serial %1.2", true), "Serial item serial");
    // A dot with no digit behind it is text.
    EXPECT_EQ(desc("%1. done", true), "item number. done");
    // A code without a description empties the whole text.
    EXPECT_EQ(desc("Lost %99 here", true), "");
    // Longer than 25 characters after expansion: shortened to 25.
    const CString longer = desc("Very long %1 of this row", true);
    EXPECT_LE(longer.GetLength(), 25);
    EXPECT_EQ(longer.Left(1), "V");
}

TEST_F(DictionaryTest, ChoiceLookupsAreOneBasedAndExact) {
    auto* status = dynamic_cast<oxdmChoiceColumnDef*>(Ord(1)->Column("STATUS"));
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(status->Choices().size(), 3u);
    EXPECT_EQ(status->ChoiceForIndex(0), "");
    EXPECT_EQ(status->ChoiceForIndex(-2), "");
    EXPECT_EQ(status->ChoiceForIndex(1), "Active");
    EXPECT_EQ(status->ChoiceForIndex(3), "Closed");
    EXPECT_EQ(status->ChoiceForIndex(4), "<Invalid>");
    EXPECT_EQ(status->IndexForChoice("On hold"), 2);
    EXPECT_EQ(status->IndexForChoice("on hold"), 0);
    std::vector<CString> out{"first"};
    status->Choices(out);
    EXPECT_EQ(out.size(), 4u);
    EXPECT_EQ(out[3], "Closed");
}

TEST_F(DictionaryTest, JoinTextDecidesTheKindOfJoin) {
    oxdmTableDef* customer = Ord(1);
    oxdmTableDef* order = Ord(2);
    oxdmTableDef* line = Ord(3);
    oxdmTableDef* extra = Ord(4);

    // Blanks are ignored; the whole key of the child's index is one-to-one.
    oxdmTableRelation* rel = dicts_.NewRel();
    EXPECT_EQ(rel->ParseString(customer, extra, 0, " CUSTNO =  custno "), 1);
    ASSERT_EQ(rel->SourceColumns().size(), 1u);
    EXPECT_EQ(rel->SourceColumns()[0], customer->Column("CUSTNO"));
    EXPECT_EQ(rel->DestColumns()[0], extra->Column("CUSTNO"));

    // Part of the key: one-to-many.
    EXPECT_EQ(dicts_.NewRel()->ParseString(order, line, 0, "ORDNO=ORDNO"), 2);
    EXPECT_EQ(dicts_.NewRel()->ParseString(customer, order, 1, "CUSTNO=CUSTNO"), 2);
    // Every key column plus an extra pair is still one-to-one.
    EXPECT_EQ(dicts_.NewRel()->ParseString(order, extra, 0, "CUSTNO=CUSTNO,TOTAL=CREDIT"), 1);

    // Malformed: 0, pairs read so far kept, the relation stays.
    const size_t rels = dicts_.Rels().size();
    oxdmTableRelation* bad = dicts_.NewRel();
    EXPECT_EQ(bad->ParseString(order, line, 0, "ORDNO=ORDNO,LINENO"), 0);
    EXPECT_EQ(bad->SourceColumns().size(), 1u);
    EXPECT_EQ(dicts_.Rels().size(), rels + 1);
    EXPECT_EQ(dicts_.NewRel()->ParseString(order, line, 0, "=ORDNO"), 0);
    EXPECT_EQ(dicts_.NewRel()->ParseString(order, line, 0, "ORDNO="), 0);
    EXPECT_EQ(dicts_.NewRel()->ParseString(order, line, 0, ""), 0);
    EXPECT_EQ(dicts_.NewRel()->ParseString(order, line, 0, "ORDNO=ORDNO,"), 0);
    EXPECT_EQ(ThrownMessage([&] { dicts_.NewRel()->ParseString(order, line, 0, "ORDNO=NOPE"); }),
              "'NOPE' is not a column in table 'Line'.");
}

TEST_F(DictionaryTest, RefreshAppendsCustomFieldsAndKeepsPointers) {
    const std::string head =
        "[[table]]\ndescription = \"Extra\"\ncustom_fields = 1\n"
        "  [[table.field]]\n  name = \"ID\"\n  type = \"alpha\"\n  length = 4\n  key = true\n";
    const std::string region = "  [[table.field]]\n  name = \"REGION\"\n  type = \"alpha\"\n  length = 8\n";
    WriteDict("cust", head);
    oxdmTableDef* extra = dicts_.Table("cust", 1);
    ASSERT_EQ(extra->Columns().size(), 1u);
    oxdmColumnDef* id = extra->Columns()[0];

    WriteDict("cust", head + region +
                          "  [[table.field]]\n  name = \"KIND\"\n  type = \"choice\"\n  items = [\"A\", \"B\"]\n");
    ASSERT_TRUE(extra->RefreshColumns());
    ASSERT_EQ(extra->Columns().size(), 3u);
    EXPECT_EQ(extra->Columns()[0], id);
    EXPECT_EQ(extra->Column("REGION")->Length(), 8);
    auto* kind = dynamic_cast<oxdmChoiceColumnDef*>(extra->Column("KIND"));
    ASSERT_NE(kind, nullptr);
    EXPECT_EQ(kind->ChoiceForIndex(2), "B");
    EXPECT_EQ(extra->RecDef().field_count, 3);

    // A changed definition overwrites in place; nothing is removed.
    WriteDict("cust", head + "  [[table.field]]\n  name = \"REGION\"\n  type = \"alpha\"\n  length = 20\n");
    oxdmColumnDef* regionColumn = extra->Column("REGION");
    ASSERT_TRUE(extra->RefreshColumns());
    EXPECT_EQ(extra->Columns().size(), 3u);
    EXPECT_EQ(extra->Column("REGION"), regionColumn);
    EXPECT_EQ(regionColumn->Length(), 20);

    // Without the dictionary: false and nothing changed.
    RemoveDict("cust");
    EXPECT_FALSE(extra->RefreshColumns());
    EXPECT_EQ(extra->Columns().size(), 3u);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(DictionaryTest, RefreshOfATableWithoutCustomFieldsTakesOnlyFormattedCodes) {
    oxdmTableDef* line = Ord(3);
    oxdmColumnDef* qty = line->Column("QTY");
    const xio_fld_def before = qty->FldDef();
    ASSERT_TRUE(line->RefreshColumns());
    EXPECT_EQ(line->Columns().size(), 8u);
    EXPECT_EQ(line->Column("QTY"), qty);
    EXPECT_EQ(std::memcmp(&before, &qty->FldDef(), sizeof before), 0);
}

}  // namespace

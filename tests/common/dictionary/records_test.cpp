// The compiled records of the sample dictionary and of small sources, checked
// byte by byte at the offsets that callers read.

#include <gtest/gtest.h>

#include <set>

#include "dict_test_support.h"
#include "oxdm/common/dictionary/dictionary_compiler.h"

using dicttest::ShortAt;
using dicttest::TextAt;

namespace {

std::shared_ptr<const oxDictionary> CompileOrd() {
    oxDictCompileResult r = oxDictionaryCompiler::CompileFile(dicttest::kOrdPath);
    EXPECT_TRUE(r.Ok()) << r.Message().c_str();
    return r.dictionary;
}

std::shared_ptr<const oxDictionary> CompileSource(const char* text, const char* name = "tst") {
    oxDictCompileResult r = oxDictionaryCompiler::CompileText(name, text, "test.toml");
    EXPECT_TRUE(r.Ok()) << r.Message().c_str();
    return r.dictionary;
}

// Expects every byte of `record` outside the named ranges to be zero.
void ExpectOnlyNamedBytes(const void* record, std::size_t size,
                          const std::set<std::pair<std::size_t, std::size_t>>& named) {
    const auto* bytes = static_cast<const unsigned char*>(record);
    for (std::size_t i = 0; i < size; ++i) {
        bool inNamed = false;
        for (const auto& [offset, width] : named) inNamed = inNamed || (i >= offset && i < offset + width);
        if (!inNamed) {
            EXPECT_EQ(bytes[i], 0) << "byte " << i;
        }
    }
}

}  // namespace

TEST(DictionaryRecords, FileDefinitionOfOrd) {
    auto dict = CompileOrd();
    ASSERT_TRUE(dict);
    const xio_file_def& f = dict->FileDef();
    EXPECT_EQ(ShortAt(&f, 23), 4);  // tables
    EXPECT_EQ(ShortAt(&f, 25), 1);  // keys
    EXPECT_EQ(TextAt(&f, 29), "or");
    EXPECT_EQ(reinterpret_cast<const char*>(&f)[43], 'd');
    EXPECT_EQ(ShortAt(&f, 44), 1);  // file code
    EXPECT_EQ(dict->Name(), "ord");
    ExpectOnlyNamedBytes(&f, sizeof f, {{23, 4}, {29, 14}, {43, 1}, {44, 2}});
}

TEST(DictionaryRecords, TablesOfOrdAreNumberedWithTheirFieldRanges) {
    auto dict = CompileOrd();
    ASSERT_TRUE(dict);
    ASSERT_EQ(dict->TableCount(), 4);
    struct Want { const char* desc; short audit, custom, first, count, stored; };
    const Want want[] = {{"Customer", 1, 0, 1, 9, 0},
                         {"Order", 1, 0, 10, 7, 0},
                         {"Line", 0, 0, 17, 8, 0},
                         {"CustomerExtra", 0, 1, 25, 3, 0}};
    for (short t = 1; t <= 4; ++t) {
        const xio_rec_def* rec = dict->RecDef(t);
        ASSERT_NE(rec, nullptr);
        const Want& w = want[t - 1];
        EXPECT_EQ(TextAt(rec, 0), w.desc);
        EXPECT_EQ(ShortAt(rec, 60), w.audit) << w.desc;
        EXPECT_EQ(ShortAt(rec, 74), w.custom) << w.desc;
        EXPECT_EQ(ShortAt(rec, 76), w.first) << w.desc;
        EXPECT_EQ(ShortAt(rec, 78), w.count) << w.desc;
        EXPECT_EQ(ShortAt(rec, 82), w.stored) << w.desc;
        ExpectOnlyNamedBytes(rec, sizeof *rec, {{0, 60}, {60, 2}, {74, 6}, {82, 2}});
        for (short f = w.first; f < w.first + w.count; ++f) EXPECT_EQ(dict->TableOfField(f), t);
    }
    EXPECT_EQ(dict->FieldCount(), 27);
    EXPECT_EQ(dict->RecDef(0), nullptr);
    EXPECT_EQ(dict->RecDef(5), nullptr);
}

TEST(DictionaryRecords, FieldAttributesSitAtTheirOffsets) {
    auto dict = CompileOrd();
    ASSERT_TRUE(dict);
    const xio_fld_def* custno = dict->FldDef(dict->FieldNum(1, "CUSTNO"));
    ASSERT_NE(custno, nullptr);
    EXPECT_EQ(TextAt(custno, 0), "CUSTNO");
    EXPECT_EQ(TextAt(custno, 8), "Customer number");
    EXPECT_EQ(ShortAt(custno, 34), XIO_ALPHA);
    EXPECT_EQ(ShortAt(custno, 36), 8);
    EXPECT_EQ(ShortAt(custno, 42), 1);   // key
    EXPECT_EQ(ShortAt(custno, 60), 8);   // default width
    EXPECT_EQ(ShortAt(custno, 76), 1);   // required
    EXPECT_EQ(ShortAt(custno, 84), 1);   // capitalize
    ExpectOnlyNamedBytes(custno, sizeof *custno,
                         {{0, 8}, {8, 26}, {34, 4}, {42, 2}, {60, 2}, {76, 2}, {84, 2}});

    const xio_fld_def* balance = dict->FldDef(dict->FieldNum(1, "BALANCE"));
    ASSERT_NE(balance, nullptr);
    EXPECT_EQ(ShortAt(balance, 34), XIO_NUMERIC);
    EXPECT_EQ(ShortAt(balance, 36), 10);
    EXPECT_EQ(ShortAt(balance, 70), 1);   // protected
    EXPECT_EQ(ShortAt(balance, 92), 2);   // decimal
    EXPECT_EQ(ShortAt(balance, 96), 1);   // signed
    EXPECT_EQ(ShortAt(balance, 102), 1);  // commas
    EXPECT_EQ(ShortAt(balance, 104), 1);  // zero shown

    const xio_fld_def* status = dict->FldDef(dict->FieldNum(1, "STATUS"));
    ASSERT_NE(status, nullptr);
    EXPECT_EQ(ShortAt(status, 34), XIO_CHOICE);
    EXPECT_EQ(ShortAt(status, 118), 3);  // items
    EXPECT_EQ(ShortAt(status, 120), 1);  // default value
    const short statusNum = dict->FieldNum(1, "STATUS");
    EXPECT_EQ(dict->Item(statusNum, 2)->text, "On hold");
    EXPECT_EQ(dict->Item(statusNum, 4), nullptr);

    const xio_fld_def* item = dict->FldDef(dict->FieldNum(3, "ITEM"));
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(ShortAt(item, 36), 20);
    EXPECT_EQ(ShortAt(item, 44), 1);  // code
    EXPECT_EQ(ShortAt(item, 46), 1);  // formatted
    EXPECT_EQ(ShortAt(item, 48), 0);  // section
    EXPECT_EQ(TextAt(item, 8), "Ordered %1");
}

TEST(DictionaryRecords, StampsAreTheLastFieldsOfEveryStoredTable) {
    auto dict = CompileOrd();
    ASSERT_TRUE(dict);
    for (short t = 1; t <= 3; ++t) {
        const xio_rec_def* rec = dict->RecDef(t);
        const short last = static_cast<short>(rec->first_field + rec->field_count - 1);
        const xio_fld_def* oper = dict->FldDef(static_cast<short>(last - 2));
        const xio_fld_def* date = dict->FldDef(static_cast<short>(last - 1));
        const xio_fld_def* time = dict->FldDef(last);
        EXPECT_NE(ShortAt(oper, 90), 0) << "table " << t;
        EXPECT_EQ(ShortAt(date, 34), XIO_DATE);
        EXPECT_NE(ShortAt(date, 112), 0) << "table " << t;
        EXPECT_EQ(ShortAt(time, 34), XIO_TIME);
        EXPECT_NE(ShortAt(time, 116), 0) << "table " << t;
        // No other field of the table is a stamp.
        for (short f = rec->first_field; f < last - 2; ++f) {
            const xio_fld_def* d = dict->FldDef(f);
            EXPECT_EQ(ShortAt(d, 90) | ShortAt(d, 112) | ShortAt(d, 116), 0) << d->name;
        }
    }
}

TEST(DictionaryRecords, KeysAndIndexZero) {
    auto dict = CompileOrd();
    ASSERT_TRUE(dict);
    const xio_key_def* key = dict->KeyDef(1);
    ASSERT_NE(key, nullptr);
    EXPECT_EQ(ShortAt(key, 97), 2);  // table
    EXPECT_EQ(ShortAt(key, 99), 2);  // field count
    EXPECT_EQ(ShortAt(key, 51), dict->FieldNum(2, "CUSTNO"));
    EXPECT_EQ(ShortAt(key, 53), dict->FieldNum(2, "ORDNO"));
    ExpectOnlyNamedBytes(key, sizeof *key, {{51, 4}, {97, 4}});
    EXPECT_EQ(dict->KeyDef(2), nullptr);

    EXPECT_EQ(dict->KeysOfTable(2), std::vector<short>{1});
    EXPECT_TRUE(dict->KeysOfTable(1).empty());
    EXPECT_EQ(dict->KeyFields(3), (std::vector<short>{17, 18}));
    EXPECT_EQ(dict->KeyFields(1), std::vector<short>{1});
}

TEST(DictionaryRecords, FieldCodeOfTwoSections) {
    auto dict = CompileOrd();
    ASSERT_TRUE(dict);
    const tsfield_def* code = dict->FieldCode(1);
    ASSERT_NE(code, nullptr);
    EXPECT_EQ(code->sections, 2);
    EXPECT_STREQ(code->description, "Item number");
    EXPECT_STREQ(code->mask, "AAAA-999999");
    EXPECT_EQ(code->section[0].width, 4);
    EXPECT_EQ(code->section[0].punctuation, '-');
    EXPECT_EQ(code->section[0].capitals, 1);
    EXPECT_EQ(code->section[1].width, 6);
    EXPECT_EQ(code->section[1].right_justify, 1);
    EXPECT_EQ(code->section[1].digits_only, 1);
    EXPECT_EQ(code->section[2].width, 0);
    EXPECT_EQ(dict->FieldCode(2), nullptr);
}

TEST(DictionaryRecords, WhatIsNotWrittenIsZero) {
    auto dict = CompileSource(R"(
[[table]]
description = "Bare"
  [[table.field]]
  name = "A"
  type = "alpha"
  length = 3
)");
    ASSERT_TRUE(dict);
    ExpectOnlyNamedBytes(&dict->FileDef(), sizeof(xio_file_def), {{23, 4}});
    const xio_fld_def* a = dict->FldDef(1);
    ExpectOnlyNamedBytes(a, sizeof *a, {{0, 8}, {34, 4}});
    EXPECT_EQ(ShortAt(a, 36), 3);
}

TEST(DictionaryRecords, EveryFlagAndNumberLandsAtItsOwnOffset) {
    // Each attribute gets a distinct value, so a swapped offset shows.
    auto dict = CompileSource(R"(
[[code]]
number = 9
[[table]]
description = "All"
  [[table.field]]
  name = "F"
  type = 1
  length = 30
  key = 2
  code = 9
  formatted = 3
  section = 4
  label_break = 5
  default_width = 6
  min_head_width = 7
  hidden = 8
  protected = 9
  required = 10
  multi_line = 11
  right_justify = 12
  capitalize = 13
  has_choices = 14
  operator_stamp = 15
  decimals = 16
  signed = 17
  commas = 18
  zero_shown = 19
  month_year = 20
  date_stamp = 21
  time_stamp = 22
  default = -23
  help = true
)");
    ASSERT_TRUE(dict);
    const xio_fld_def* f = dict->FldDef(1);
    const std::pair<std::size_t, short> want[] = {
        {34, 1},  {36, 30}, {42, 2},  {44, 9},  {46, 3},  {48, 4},  {58, 5},  {60, 6},
        {62, 7},  {66, 8},  {70, 9},  {76, 10}, {80, 11}, {82, 12}, {84, 13}, {88, 14},
        {90, 15}, {92, 16}, {96, 17}, {102, 18}, {104, 19}, {110, 20}, {112, 21}, {116, 22},
        {120, -23}, {124, 1}};
    std::set<std::pair<std::size_t, std::size_t>> named = {{0, 8}};
    for (const auto& [offset, value] : want) {
        EXPECT_EQ(ShortAt(f, offset), value) << "byte " << offset;
        named.insert({offset, 2});
    }
    ExpectOnlyNamedBytes(f, sizeof *f, named);
}

TEST(DictionaryRecords, ChoiceItemsWithCodesAndCustomListAsArray) {
    auto dict = CompileSource(R"(
[[code]]
number = 3
custom_list = ["North", "South", "East"]
[[table]]
description = "T"
  [[table.field]]
  name = "C"
  type = 9
  items = [{ code = "Y", text = "Yes" }, "Maybe", { text = "No" }]
)");
    ASSERT_TRUE(dict);
    EXPECT_EQ(dict->FldDef(1)->type, XIO_CHOICE9);
    EXPECT_EQ(dict->FldDef(1)->items, 3);
    EXPECT_EQ(dict->Item(1, 1)->code, "Y");
    EXPECT_EQ(dict->Item(1, 1)->text, "Yes");
    EXPECT_EQ(dict->Item(1, 2)->code, "");
    EXPECT_EQ(dict->Item(1, 2)->text, "Maybe");
    EXPECT_EQ(dict->Item(1, 3)->text, "No");
    EXPECT_STREQ(dict->FieldCode(3)->custom_list, "North,South,East");
}

TEST(DictionaryRecords, FieldNamesAreFoundWithoutRegardToCase) {
    auto dict = CompileOrd();
    ASSERT_TRUE(dict);
    EXPECT_EQ(dict->FieldNum(2, "custno"), 11);
    EXPECT_EQ(dict->FieldNum(0, "CustNo"), 1);  // first in the file
    EXPECT_EQ(dict->FieldNum(0, "LINENO"), 18);
    EXPECT_EQ(dict->FieldNum(1, "LINENO"), 0);
    EXPECT_EQ(dict->FieldNum(9, "CUSTNO"), 0);
    EXPECT_EQ(dict->FieldNum(0, "CUSTN"), 0);
}

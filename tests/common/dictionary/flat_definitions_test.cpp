// The flat definition face over the table of open files.

#include <gtest/gtest.h>

#include <cstring>

#include "dict_test_support.h"
#include "oxdm/common/dictionary/dictionary_compiler.h"
#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/dictionary/open_file_table.h"
#include "oxdm/common/values/io_status.h"

namespace {

// Opens `name` through the flat face; the raw status, and the number in *file.
short Open(const char* name, short* file) {
    xio_open_dict_def def;
    std::memset(&def, 0, sizeof def);
    std::strncpy(def.name, name, sizeof def.name - 1);
    def.mode = 1;
    def.file = -7;
    const short status = xio_open_dictionary(&def);
    *file = def.file;
    return status;
}

class FlatDefinitions : public ::testing::Test {
protected:
    dicttest::ScopedEnv env_{"OXDM_DICT_PATH", OXDM_EXAMPLES_DIR};
};

// A data file as the store registers it: counts its destruction.
class CountingFile : public oxOpenFile {
public:
    CountingFile(std::shared_ptr<const oxDictionary> dict, int* destroyed)
        : oxOpenFile(std::move(dict)), destroyed_(destroyed) {}
    ~CountingFile() override { ++*destroyed_; }

private:
    int* destroyed_;
};

std::shared_ptr<const oxDictionary> Ord() {
    return oxDictionaryCompiler::CompileFile(dicttest::kOrdPath).dictionary;
}

}  // namespace

TEST_F(FlatDefinitions, OpenReadEveryKindOfDefinitionAndClose) {
    short file = 0;
    ASSERT_EQ(Open("ord", &file), oxioStatus::IO_VALID);
    ASSERT_GT(file, 0);

    xio_file_def fdef;
    ASSERT_EQ(xio_get_def(file, &fdef, 1), oxioStatus::IO_VALID);
    EXPECT_EQ(short{fdef.tables}, 4);  // packed: compare copies
    EXPECT_EQ(short{fdef.keys}, 1);
    EXPECT_STREQ(fdef.appl_abbr, "or");

    xio_rec_def rdef;
    ASSERT_EQ(xio_get_rec_def(file, 2, &rdef, 1), oxioStatus::IO_VALID);
    EXPECT_STREQ(rdef.description, "Order");

    const short custno = xio_num(file, 2, 2, "CUSTNO");
    EXPECT_EQ(custno, rdef.first_field + 1);
    xio_fld_def fld;
    ASSERT_EQ(xio_get_fld_def(file, custno, &fld, 1, false), oxioStatus::IO_VALID);
    EXPECT_STREQ(fld.name, "CUSTNO");
    EXPECT_EQ(fld.length, 8);
    xio_fld_def partial;
    ASSERT_EQ(xio_get_fld_def(file, custno, &partial, 0, true), oxioStatus::IO_VALID);
    EXPECT_EQ(std::memcmp(&partial, &fld, sizeof fld), 0);

    xio_key_def key;
    ASSERT_EQ(xio_get_key_def(file, 1, &key, 1), oxioStatus::IO_VALID);
    EXPECT_EQ(short{key.table}, 2);
    EXPECT_EQ(short{key.fields[0]}, custno);

    EXPECT_EQ(xio_cls_file(file), oxioStatus::IO_VALID);
    EXPECT_EQ(xio_get_def(file, &fdef, 1), oxioStatus::FILE_NOT_FOUND);
    EXPECT_EQ(xio_cls_file(file), oxioStatus::FILE_NOT_FOUND);
}

TEST_F(FlatDefinitions, ChoiceItemTexts) {
    short file = 0;
    ASSERT_EQ(Open("ord", &file), oxioStatus::IO_VALID);
    const short status = xio_num(file, 0, 0, "status");
    ASSERT_GT(status, 0);
    char code[XIO_ITEM_CODE_SIZE];
    char text[XIO_ITEM_TEXT_SIZE];
    const char* want[] = {"Active", "On hold", "Closed"};
    for (short item = 1; item <= 3; ++item) {
        std::memset(text, 'x', sizeof text);
        ASSERT_EQ(xio_get_item_alpha(file, status, item, code, text), oxioStatus::IO_VALID);
        EXPECT_STREQ(text, want[item - 1]);
        EXPECT_STREQ(code, "");
    }
    EXPECT_EQ(xio_get_item_alpha(file, status, 2, nullptr, text), oxioStatus::IO_VALID);
    EXPECT_EQ(xio_get_item_alpha(file, status, 0, code, text), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_item_alpha(file, status, 4, code, text), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_item_alpha(file, 1, 1, code, text), oxioStatus::IO_VOID);  // not a choice
    xio_cls_file(file);
}

TEST_F(FlatDefinitions, FieldNumbersByName) {
    short file = 0;
    ASSERT_EQ(Open("ord", &file), oxioStatus::IO_VALID);
    EXPECT_EQ(xio_num(file, 0, 0, "CUSTNO"), 1);  // first of the file
    EXPECT_EQ(xio_num(file, 2, 2, "custno"), 11);
    EXPECT_EQ(xio_num(file, 2, 3, "ITEM"), 19);
    EXPECT_EQ(xio_num(file, 2, 1, "ITEM"), 0);
    EXPECT_EQ(xio_num(file, 0, 0, "NOSUCH"), 0);
    EXPECT_EQ(xio_num(file, 2, 0, "CUSTNO"), 0);
    EXPECT_EQ(xio_num(file, 1, 0, "CUSTNO"), -1);
    EXPECT_EQ(xio_num(file, 0, 0, nullptr), 0);
    xio_cls_file(file);
    EXPECT_EQ(xio_num(file, 0, 0, "CUSTNO"), -1);
}

TEST_F(FlatDefinitions, NumbersOutsideTheFileAnswerARawError) {
    short file = 0;
    ASSERT_EQ(Open("ord", &file), oxioStatus::IO_VALID);
    xio_file_def fdef;
    xio_rec_def rdef;
    xio_fld_def fld;
    xio_key_def key;
    char text[XIO_ITEM_TEXT_SIZE];
    for (short bad : {short{0}, short{-1}, short{250}}) {
        EXPECT_EQ(xio_get_def(bad, &fdef, 1), oxioStatus::FILE_NOT_FOUND);
        EXPECT_EQ(xio_get_rec_def(bad, 1, &rdef, 1), oxioStatus::FILE_NOT_FOUND);
        EXPECT_EQ(xio_get_fld_def(bad, 1, &fld, 1, false), oxioStatus::FILE_NOT_FOUND);
        EXPECT_EQ(xio_get_key_def(bad, 1, &key, 1), oxioStatus::FILE_NOT_FOUND);
        EXPECT_EQ(xio_get_item_alpha(bad, 4, 1, nullptr, text), oxioStatus::FILE_NOT_FOUND);
        EXPECT_EQ(xio_cls_file(bad), oxioStatus::FILE_NOT_FOUND);
    }
    EXPECT_EQ(xio_get_rec_def(file, 0, &rdef, 1), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_rec_def(file, 5, &rdef, 1), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_fld_def(file, 0, &fld, 1, false), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_fld_def(file, 28, &fld, 1, false), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_key_def(file, 0, &key, 1), oxioStatus::IO_VOID);
    EXPECT_EQ(xio_get_key_def(file, 2, &key, 1), oxioStatus::IO_VOID);
    xio_cls_file(file);
}

TEST_F(FlatDefinitions, AFailedOpenLeavesTheNumberAloneAndKeepsTheMessage) {
    dicttest::TempDir dir;
    const std::string path = dir.Write("broken.toml", "[[table]]\ndescription = 5\n");
    dicttest::ScopedEnv env("OXDM_DICT_PATH", dir.Path());
    short file = 0;
    EXPECT_EQ(Open("broken", &file), oxioStatus::CORRUPT_DATA);
    EXPECT_EQ(file, -7);
    const CString& message = oxDictionaryLoader::LastError();
    EXPECT_NE(message.Find((path + ":2: table 1: 'description' must be a string").c_str()), -1)
        << message.c_str();
    EXPECT_EQ(Open("absent", &file), oxioStatus::FILE_NOT_FOUND);
    EXPECT_EQ(file, -7);
}

TEST_F(FlatDefinitions, NumbersAreDistinctAndTheLowestFreeIsReused) {
    short a = 0, b = 0, c = 0;
    ASSERT_EQ(Open("ord", &a), oxioStatus::IO_VALID);
    ASSERT_EQ(Open((std::string(OXDM_EXAMPLES_DIR) + "/ord.toml").c_str(), &b), oxioStatus::IO_VALID);
    EXPECT_NE(a, b);
    const short openBefore = oxOpenFileTable::Instance().OpenCount();
    ASSERT_EQ(xio_cls_file(a), oxioStatus::IO_VALID);
    EXPECT_EQ(oxOpenFileTable::Instance().OpenCount(), openBefore - 1);
    ASSERT_EQ(Open("ord", &c), oxioStatus::IO_VALID);
    EXPECT_EQ(c, a);
    xio_rec_def rdef;
    EXPECT_EQ(xio_get_rec_def(b, 3, &rdef, 1), oxioStatus::IO_VALID);
    xio_cls_file(b);
    xio_cls_file(c);
}

TEST_F(FlatDefinitions, ARegisteredDataFileAnswersAndIsDestroyedOnClose) {
    int destroyed = 0;
    short file = 0;
    ASSERT_EQ(oxOpenFileTable::Instance().Open(std::make_unique<CountingFile>(Ord(), &destroyed),
                                               &file),
              oxioStatus::IO_VALID);
    oxOpenFile* open = oxOpenFileTable::Instance().Find(file);
    ASSERT_NE(dynamic_cast<CountingFile*>(open), nullptr);
    EXPECT_EQ(open->FileNum(), file);
    xio_rec_def rdef;
    EXPECT_EQ(xio_get_rec_def(file, 4, &rdef, 1), oxioStatus::IO_VALID);
    EXPECT_STREQ(rdef.description, "CustomerExtra");
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(xio_cls_file(file), oxioStatus::IO_VALID);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(oxOpenFileTable::Instance().Find(file), nullptr);
}

TEST_F(FlatDefinitions, AFullTableRefusesAndDestroysTheNewFile) {
    auto dict = Ord();
    std::vector<short> opened;
    int destroyed = 0;
    short status = oxioStatus::IO_VALID;
    while (status == oxioStatus::IO_VALID) {
        short file = 0;
        status = oxOpenFileTable::Instance().Open(std::make_unique<CountingFile>(dict, &destroyed),
                                                  &file);
        if (status == oxioStatus::IO_VALID) opened.push_back(file);
        ASSERT_LE(opened.size(), static_cast<std::size_t>(oxOpenFileTable::MaxOpenFiles));
    }
    EXPECT_EQ(status, oxioStatus::TOO_MANY_OPEN_FILES);
    EXPECT_EQ(destroyed, 1);
    EXPECT_EQ(oxOpenFileTable::Instance().OpenCount(), oxOpenFileTable::MaxOpenFiles);
    for (short f : opened) EXPECT_EQ(xio_cls_file(f), oxioStatus::IO_VALID);
    EXPECT_EQ(destroyed, 1 + static_cast<int>(opened.size()));
}

// Finding dictionary sources on the search path and loading them.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include "dict_test_support.h"
#include "oxdm/common/dictionary/dictionary_compiler.h"
#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/values/io_status.h"

namespace {

std::string OneTable(const char* description) {
    return std::string("[[table]]\ndescription = \"") + description +
           "\"\n  [[table.field]]\n  name = \"A\"\n  type = 2\n";
}

std::vector<std::string> Strings(const std::vector<CString>& v) {
    std::vector<std::string> out;
    for (const CString& s : v) out.push_back(s.c_str());
    return out;
}

}  // namespace

TEST(DictionaryLoader, SearchPathDefaultsToTheCurrentDirectory) {
    {
        dicttest::ScopedEnv env("OXDM_DICT_PATH", std::nullopt);
        EXPECT_EQ(Strings(oxDictionaryLoader::SearchPath()), std::vector<std::string>{"."});
    }
    {
        dicttest::ScopedEnv env("OXDM_DICT_PATH", "");
        EXPECT_EQ(Strings(oxDictionaryLoader::SearchPath()), std::vector<std::string>{"."});
    }
    dicttest::ScopedEnv env("OXDM_DICT_PATH", "/a::/b/c:");
    EXPECT_EQ(Strings(oxDictionaryLoader::SearchPath()),
              (std::vector<std::string>{"/a", ".", "/b/c", "."}));
}

TEST(DictionaryLoader, TheFirstDirectoryThatHoldsTheSourceWins) {
    dicttest::TempDir one, two;
    two.Write("shop.toml", OneTable("Second"));
    dicttest::ScopedEnv env("OXDM_DICT_PATH", one.Path() + ":" + two.Path());
    EXPECT_EQ(std::string(oxDictionaryLoader::FindSource("shop").c_str()), two.Path() + "/shop.toml");

    one.Write("shop.toml", OneTable("First"));
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    ASSERT_EQ(oxDictionaryLoader::Load("shop", dict, error), oxioStatus::IO_VALID) << error.c_str();
    EXPECT_EQ(std::string(dict->RecDef(1)->description), "First");
    EXPECT_EQ(dict->Name(), "shop");
    EXPECT_EQ(std::string(dict->SourcePath().c_str()), one.Path() + "/shop.toml");
    EXPECT_TRUE(error.IsEmpty());
}

TEST(DictionaryLoader, TheCurrentDirectoryIsSearchedWhenNoPathIsSet) {
    dicttest::TempDir dir;
    dir.Write("cur.toml", OneTable("Here"));
    dicttest::ScopedEnv env("OXDM_DICT_PATH", std::nullopt);
    dicttest::ScopedCwd cwd(dir.Path());
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    ASSERT_EQ(oxDictionaryLoader::Load("cur", dict, error), oxioStatus::IO_VALID) << error.c_str();
    EXPECT_EQ(std::string(dict->RecDef(1)->description), "Here");
}

TEST(DictionaryLoader, APathIsLoadedAsItStandsAndNamesTheDictionary) {
    dicttest::TempDir dir;
    const std::string path = dir.Write("inv.toml", OneTable("Stock"));
    dicttest::ScopedEnv env("OXDM_DICT_PATH", "/nonexistent");
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    ASSERT_EQ(oxDictionaryLoader::Load(path.c_str(), dict, error), oxioStatus::IO_VALID);
    EXPECT_EQ(dict->Name(), "inv");
    EXPECT_EQ(oxDictionaryLoader::FindSource((dir.Path() + "/none.toml").c_str()), "");
}

TEST(DictionaryLoader, AMissingDictionaryIsNotFoundAndSaysWhereItLooked) {
    dicttest::TempDir dir;
    dicttest::ScopedEnv env("OXDM_DICT_PATH", dir.Path());
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    EXPECT_EQ(oxDictionaryLoader::Load("nothere", dict, error), oxioStatus::FILE_NOT_FOUND);
    EXPECT_EQ(dict, nullptr);
    EXPECT_NE(error.Find("'nothere'"), -1) << error.c_str();
    EXPECT_NE(error.Find(dir.Path().c_str()), -1) << error.c_str();
    EXPECT_EQ(oxDictionaryLoader::LastError(), error);
    EXPECT_EQ(oxDictionaryLoader::Load("", dict, error), oxioStatus::FILE_NOT_FOUND);
}

TEST(DictionaryLoader, ABrokenSourceIsCorruptAndItsMessageIsKept) {
    dicttest::TempDir dir;
    const std::string path = dir.Write("bad.toml", OneTable("T") + "  type = 3\n");
    dicttest::ScopedEnv env("OXDM_DICT_PATH", dir.Path());
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    EXPECT_EQ(oxDictionaryLoader::Load("bad", dict, error), oxioStatus::CORRUPT_DATA);
    EXPECT_EQ(dict, nullptr);
    EXPECT_NE(error.Find((path + ":6: syntax error").c_str()), -1) << error.c_str();
    EXPECT_EQ(oxDictionaryLoader::LastError(), error);

    // A later success leaves the last failure readable.
    dir.Write("good.toml", OneTable("T"));
    CString none;
    EXPECT_EQ(oxDictionaryLoader::Load("good", dict, none), oxioStatus::IO_VALID);
    EXPECT_EQ(oxDictionaryLoader::LastError(), error);
}

TEST(DictionaryLoader, EachLoadReadsTheSourceAgain) {
    dicttest::TempDir dir;
    dicttest::ScopedEnv env("OXDM_DICT_PATH", dir.Path());
    dir.Write("grow.toml", OneTable("Before"));
    std::shared_ptr<const oxDictionary> before, after;
    CString error;
    ASSERT_EQ(oxDictionaryLoader::Load("grow", before, error), oxioStatus::IO_VALID);
    dir.Write("grow.toml", OneTable("After") + "  [[table.field]]\n  name = \"B\"\n  type = 3\n");
    ASSERT_EQ(oxDictionaryLoader::Load("grow", after, error), oxioStatus::IO_VALID);
    EXPECT_EQ(before->FieldCount(), 1);
    EXPECT_EQ(after->FieldCount(), 2);
    EXPECT_EQ(std::string(after->RecDef(1)->description), "After");
}

TEST(DictionaryLoader, AnUnreadableSourceIsAnIoError) {
    if (::geteuid() == 0) GTEST_SKIP() << "permissions do not bind the super-user";
    dicttest::TempDir dir;
    const std::string path = dir.Write("locked.toml", OneTable("T"));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    dicttest::ScopedEnv env("OXDM_DICT_PATH", dir.Path());
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    EXPECT_EQ(oxDictionaryLoader::Load("locked", dict, error), oxioStatus::IO_ERROR);
    EXPECT_NE(error.Find("cannot be read"), -1) << error.c_str();
}

TEST(DictionaryLoader, SourceTextCompilesAgainToTheSameRecords) {
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    ASSERT_EQ(oxDictionaryLoader::Load(dicttest::kOrdPath, dict, error), oxioStatus::IO_VALID);
    std::ifstream in(dicttest::kOrdPath);
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_EQ(std::string(dict->SourceText().c_str()), text.str());

    const oxDictCompileResult again =
        oxDictionaryCompiler::CompileText(dict->Name(), dict->SourceText(), "kept");
    ASSERT_TRUE(again.Ok()) << again.Message().c_str();
    ASSERT_EQ(again.dictionary->FieldCount(), dict->FieldCount());
    for (short f = 1; f <= dict->FieldCount(); ++f) {
        EXPECT_EQ(std::memcmp(again.dictionary->FldDef(f), dict->FldDef(f), sizeof(xio_fld_def)), 0);
    }
    EXPECT_EQ(std::memcmp(&again.dictionary->FileDef(), &dict->FileDef(), sizeof(xio_file_def)), 0);
}

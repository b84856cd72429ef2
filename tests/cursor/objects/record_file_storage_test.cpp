// The object store over a table of a record file: the tables it refuses,
// and objects shared by two programs that open the same file.

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <unistd.h>

#include "oxdm/common/store/data_file.h"
#include "oxdm/cursor/objects/record_file_storage.h"
#include "po_fixture.h"

using namespace po_test;

namespace {

// Table 1 fits the customer properties; each other table has one fault.
const char kDictionary[] = R"(
[file]
abbreviation = "po"
letter = "c"
code = 7

[[table]]
description = "Customer"
field = [{ name = "ID", type = "numeric", length = 8, key = true },
         { name = "VERSION", type = "numeric", length = 8 },
         { name = "NAME", type = "alpha", length = 20 },
         { name = "CITY", type = "alpha", length = 20 },
         { name = "BALANCE", type = "numeric", length = 10, decimals = 2 },
         { name = "KIND", type = "choice", length = 2, items = ["Retail", "Wholesale"] }]

[[table]]
description = "No city"
field = [{ name = "ID", type = "numeric", length = 8, key = true },
         { name = "VERSION", type = "numeric", length = 8 },
         { name = "NAME", type = "alpha", length = 20 }]

[[table]]
description = "Name as the key"
field = [{ name = "ID", type = "numeric", length = 8 },
         { name = "VERSION", type = "numeric", length = 8 },
         { name = "NAME", type = "alpha", length = 20, key = true }]

[[table]]
description = "Text version"
field = [{ name = "ID", type = "numeric", length = 8, key = true },
         { name = "VERSION", type = "alpha", length = 8 }]
)";

class RecordFileStorageTest : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/oxdm-po-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir_ = pattern;
        std::ofstream(dir_ / "poc.toml") << kDictionary;
        setenv("OXDM_DICT_PATH", (dir_.string() + "/").c_str(), 1);
    }
    void TearDown() override {
        unsetenv("OXDM_DICT_PATH");
        std::filesystem::remove_all(dir_);
    }

    // One program's handle on the file.
    std::unique_ptr<oxioDataFile> OpenFile() {
        oxioStatus::Status status = oxioStatus::IOError;
        CString error;
        auto file = oxioDataFile::Open(oxioFileSpec((dir_ / "customers.poc").c_str()), true, status, error);
        EXPECT_EQ(status, oxioStatus::Success) << error;
        return file;
    }
    std::shared_ptr<oxPORecordFileStorage> Storage(const oxioDataFile& file, short table = 1) {
        CString error;
        auto storage = oxPORecordFileStorage::Open(CustomerProperties(), file, table, error);
        EXPECT_NE(storage, nullptr) << error;
        return storage;
    }
    static oxPOMemoryObject* Named(oxPOMemorySet* set, const char* name) {
        for (oxPOMemoryObject* object : set->View())
            if (object->Value("Name") == ATL::CComVariant(name)) return object;
        return nullptr;
    }

    std::filesystem::path dir_;
};

TEST_F(RecordFileStorageTest, RefusesATableThatDoesNotFitNamingWhatIsWrong) {
    auto file = OpenFile();
    const std::string path = (dir_ / "customers.poc").string();
    const struct {
        short table;
        std::string words;
    } cases[] = {
        {2, "has no field City"},
        {3, "has the field ID outside its key"},
        {4, "has the field VERSION of type 0 where type 1 is needed"},
        {9, "does not exist"},
    };
    for (const auto& c : cases) {
        CString error;
        EXPECT_EQ(oxPORecordFileStorage::Open(CustomerProperties(), *file, c.table, error), nullptr);
        EXPECT_EQ(std::string(error.c_str()),
                  "The table " + std::to_string(c.table) + " of " + path + " " + c.words + ".");
    }
}

TEST_F(RecordFileStorageTest, TwoProgramsShareTheObjectsWithConflictsAndDeletions) {
    auto fileA = OpenFile();
    auto storageA = Storage(*fileA);
    AddCustomers(*storageA);
    auto fileB = OpenFile();
    auto storageB = Storage(*fileB);
    auto mine = Open(storageA), theirs = Open(storageB);
    std::vector<CString> names;
    for (oxPOMemoryObject* object : theirs->View()) names.push_back(object->Value("Name").Text());
    EXPECT_EQ(names, (std::vector<CString>{"Adams", "Baker", "Clark"}));
    EXPECT_TRUE(Named(theirs, "Adams")->Value("Balance") == ATL::CComVariant(20.0));
    EXPECT_TRUE(Named(theirs, "Adams")->Value("Kind") == ATL::CComVariant(std::int32_t{1}));

    // They save Adams first: our save of the version we read conflicts.
    ASSERT_EQ(Named(theirs, "Adams")->SetProperty("City", ATL::CComVariant("Reno")), S_OK);
    ASSERT_EQ(Named(theirs, "Adams")->Save(), S_OK);
    ASSERT_EQ(Named(mine, "Adams")->SetProperty("Balance", ATL::CComVariant(99.0)), S_OK);
    EXPECT_EQ(Named(mine, "Adams")->Save(), PO_E_CONFLICT);
    Named(mine, "Adams")->SetCheck(false);
    ASSERT_EQ(Named(mine, "Adams")->Reread(), S_OK);
    ASSERT_EQ(Named(mine, "Adams")->Save(), S_OK);
    const auto* adams = storageB->Find(Named(theirs, "Adams")->Id());
    ASSERT_NE(adams, nullptr);
    EXPECT_TRUE(adams->values[1] == ATL::CComVariant("Reno"));
    EXPECT_TRUE(adams->values[2] == ATL::CComVariant(99.0));

    // They delete Clark, the last id: our save finds it gone, and an object
    // stored afresh gets an id never given before.
    oxPOMemoryObject* clark = Named(mine, "Clark");
    const long clarkId = clark->Id();
    ASSERT_EQ(theirs->Remove(static_cast<IPOObject*>(Named(theirs, "Clark"))), S_OK);
    ASSERT_EQ(clark->SetProperty("City", ATL::CComVariant("Lima")), S_OK);
    EXPECT_EQ(clark->Save(), PO_E_GONE);
    ATL::CComPtr<IUnknown> made;
    ASSERT_EQ(mine->Create(&made), S_OK);
    auto* dixon = dynamic_cast<oxPOMemoryObject*>(static_cast<IPOObject*>(made.get()));
    ASSERT_EQ(dixon->SetProperty("Name", ATL::CComVariant("Dixon")), S_OK);
    ASSERT_EQ(dixon->Save(), S_OK);
    EXPECT_GT(dixon->Id(), clarkId);
    EXPECT_EQ(storageB->Ids().size(), 3u);

    // What was written is in the file for the next program.
    mine.Release();
    theirs.Release();
    storageA.reset();
    storageB.reset();
    fileA.reset();
    fileB.reset();
    auto again = OpenFile();
    auto later = Open(Storage(*again));
    names.clear();
    for (oxPOMemoryObject* object : later->View()) names.push_back(object->Value("Name").Text());
    EXPECT_EQ(names, (std::vector<CString>{"Adams", "Baker", "Dixon"}));
}

}  // namespace

// Writes of the SQLite engine: keys, versions, stamps, attachments, and
// files that are damaged or do not match their tables.

#include "oxdm/common/values/io_status.h"
#include "store_fixture.h"

#include <fstream>

namespace oxdm::store::testing {
namespace {

TEST(SqliteWrite, InsertRefusesADuplicateKeyAndFillsStamps) {
    ScratchDir dir;
    setenv("OXDM_OPERATOR", "JANE", 1);
    auto store = OpenLines(dir.File("write.oxd"));
    RowImage first = Line("A", 1, "BOLT", 2);
    ASSERT_EQ(store->Insert(1, first), 0);
    EXPECT_GT(first.rowid, 0);
    EXPECT_EQ(first.version, 1);
    RowImage again = Line("A", 1, "NUT", 3);
    EXPECT_EQ(store->Insert(1, again), oxioStatus::INVALID_KEY);

    RowImage read;
    ASSERT_EQ(store->Read(1, first.rowid, read), 0);
    EXPECT_EQ(Text(read, 2), "BOLT");
    EXPECT_EQ(Text(read, 4), "JANE");
    std::int64_t date = Whole(read, 5), time = Whole(read, 6);
    EXPECT_GT(date, 20000101);
    EXPECT_LT(date % 10000, 1232);
    EXPECT_LT(time, 240000);

    setenv("OXDM_OPERATOR", "JOHN", 1);
    read.fields[2] = std::string("WASHER");
    ASSERT_EQ(store->Update(1, read, true), 0);
    EXPECT_EQ(read.version, 2);
    RowImage after;
    ASSERT_EQ(store->Read(1, first.rowid, after), 0);
    EXPECT_EQ(Text(after, 4), "JOHN");
    EXPECT_EQ(after.version, 2);
    unsetenv("OXDM_OPERATOR");
}

TEST(SqliteWrite, CheckedUpdateAnswersConflictOnAStaleVersion) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("conflict.oxd"));
    RowImage row = Line("A", 1, "BOLT", 2);
    ASSERT_EQ(store->Insert(1, row), 0);
    RowImage stale = row;
    row.fields[3] = 5.0;
    ASSERT_EQ(store->Update(1, row, true), 0);
    stale.fields[3] = 9.0;
    EXPECT_EQ(store->Update(1, stale, true), oxioStatus::INCONSISTENT_KEY);
    RowImage read;
    ASSERT_EQ(store->Read(1, row.rowid, read), 0);
    EXPECT_EQ(std::get<double>(read.fields[3]), 5.0);
    // The unchecked write overwrites whatever is there.
    EXPECT_EQ(store->Update(1, stale, false), 0);
    ASSERT_EQ(store->Read(1, row.rowid, read), 0);
    EXPECT_EQ(std::get<double>(read.fields[3]), 9.0);
    // A key change onto another record's key is a duplicate.
    RowImage other = Line("B", 1, "NUT", 1);
    ASSERT_EQ(store->Insert(1, other), 0);
    read.fields[0] = std::string("B");
    EXPECT_EQ(store->Update(1, read, false), oxioStatus::INVALID_KEY);
    // A record that is gone: checked or not, the key is invalid.
    ASSERT_EQ(store->Delete(1, other.rowid), 0);
    EXPECT_EQ(store->Delete(1, other.rowid), oxioStatus::INVALID_KEY);
    EXPECT_EQ(store->Update(1, other, true), oxioStatus::INVALID_KEY);
    EXPECT_EQ(store->Update(1, other, false), oxioStatus::INVALID_KEY);
    EXPECT_EQ(store->Read(1, other.rowid, read), oxioStatus::INVALID_KEY);
}

TEST(SqliteWrite, AttachmentsBelongToOneRecordAndGoWithIt) {
    ScratchDir dir;
    auto store = OpenLines(dir.File("attach.oxd"));
    RowImage a = Line("A", 1, "X", 1), b = Line("B", 1, "Y", 1);
    ASSERT_EQ(store->Insert(1, a), 0);
    ASSERT_EQ(store->Insert(1, b), 0);
    std::vector<RecordStore::Attachment> docs = {{"note.txt", "hello"}, {"blob", std::string("\0\1\2", 3)}};
    ASSERT_EQ(store->WriteAttachments(1, a.rowid, docs), 0);
    std::vector<RecordStore::Attachment> read;
    ASSERT_EQ(store->ReadAttachments(1, a.rowid, read), 0);
    ASSERT_EQ(read.size(), 2u);
    EXPECT_EQ(read[1].data, std::string("\0\1\2", 3));
    ASSERT_EQ(store->ReadAttachments(1, b.rowid, read), 0);
    EXPECT_TRUE(read.empty());
    ASSERT_EQ(store->Delete(1, a.rowid), 0);
    ASSERT_EQ(store->ReadAttachments(1, a.rowid, read), 0);
    EXPECT_TRUE(read.empty());
}

TEST(SqliteWrite, AFileOlderThanItsTablesIsRefusedUntilUpgraded) {
    ScratchDir dir;
    std::string path = dir.File("old.oxd");
    TableSpec small = LinesTable();
    small.columns.resize(4);
    short status = -1;
    std::string error;
    ASSERT_NE(OpenSqliteStore(path, {small}, OpenMode::CreateIfMissing, status, error), nullptr);
    EXPECT_EQ(OpenSqliteStore(path, {LinesTable()}, OpenMode::OpenExisting, status, error), nullptr);
    EXPECT_EQ(status, oxioStatus::INCOMPATIBLE_FILE);
    EXPECT_NE(error.find("OPER"), std::string::npos) << error;
    EXPECT_NE(error.find(path), std::string::npos) << error;
    EXPECT_NE(OpenSqliteStore(path, {LinesTable()}, OpenMode::CreateIfMissing, status, error), nullptr);
    EXPECT_NE(OpenSqliteStore(path, {LinesTable()}, OpenMode::OpenExisting, status, error), nullptr);
    EXPECT_EQ(OpenSqliteStore(dir.File("none.oxd"), {LinesTable()}, OpenMode::OpenExisting, status, error), nullptr);
    EXPECT_EQ(status, oxioStatus::FILE_NOT_FOUND);
}

// Opens `path` and reads every record of both indexes until a status; never crashes.
short ReadEverything(const std::string& path) {
    short status = -1;
    std::string error;
    std::unique_ptr<RecordStore> store = OpenSqliteStore(path, {LinesTable()}, OpenMode::OpenExisting, status, error);
    if (!store) {
        EXPECT_FALSE(error.empty());
        return status;
    }
    for (short index : {0, 1}) {
        RowImage row;
        short rc = store->Seek({1, index, SeekKind::First}, row);
        while (rc == 0) {
            std::vector<FieldValue> key = {row.fields[static_cast<size_t>(index == 0 ? 0 : 2)]};
            if (index == 0) key.push_back(row.fields[1]);
            rc = store->Seek({1, index, SeekKind::Next, key, row.rowid}, row);
        }
        if (rc != oxioStatus::AT_END) return rc;
        if (short write = store->Insert(1, row = Line("ZZ", 1, "Z", 0)); write != 0) return write;
    }
    return 0;
}

TEST(SqliteWrite, ADamagedFileGivesAStatusNeverACrash) {
    ScratchDir dir;
    std::string path = dir.File("damaged.oxd");
    {
        auto store = OpenLines(path);
        for (int i = 0; i < 3000; ++i) {
            RowImage row = Line("O" + std::to_string(i), i, std::string(40, 'x') + std::to_string(i % 7), i);
            ASSERT_EQ(store->Insert(1, row), 0);
        }
    }
    std::ifstream in(path, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), {});
    ASSERT_GT(bytes.size(), 40000u);
    auto write = [&](const std::string& content) {
        std::ofstream out(path, std::ios::binary | std::ios::trunc);
        out << content;
    };
    // Cut short at several places.
    for (size_t keep : {bytes.size() / 2, bytes.size() / 5, size_t{100}}) {
        write(bytes.substr(0, keep));
        short rc = ReadEverything(path);
        EXPECT_TRUE(rc == oxioStatus::CORRUPT_DATA || rc == oxioStatus::INCOMPATIBLE_FILE) << "kept " << keep << ": " << rc;
    }
    // Pages overwritten with noise.
    std::string noisy = bytes;
    for (size_t at = 4096; at + 512 < noisy.size(); at += 4096)
        for (size_t i = 0; i < 512; ++i) noisy[at + i] = static_cast<char>((at + i * 31) & 0xff);
    write(noisy);
    EXPECT_EQ(ReadEverything(path), oxioStatus::CORRUPT_DATA);
    // Not a record file at all.
    write(std::string(5000, 'n'));
    EXPECT_EQ(ReadEverything(path), oxioStatus::CORRUPT_DATA);
}

}  // namespace
}  // namespace oxdm::store::testing

namespace oxdm::store::testing {
namespace {

TEST(SqliteCaches, DropCachesEmptiesThePageCacheAndReadsSeeOtherWriters) {
    ScratchDir dir;
    std::string path = dir.File("cache.oxd");
    auto store = OpenLines(path);
    for (int i = 0; i < 2000; ++i) {
        RowImage row = Line("O" + std::to_string(i), i, std::string(100, 'c'), i);
        ASSERT_EQ(store->Insert(1, row), 0);
    }
    RowImage row;
    for (short rc = store->Seek({1, 1, SeekKind::First}, row); rc == 0;
         rc = store->Seek({1, 1, SeekKind::Next, {row.fields[2]}, row.rowid}, row)) {
    }
    auto cacheUsed = [&] {
        int current = 0, highest = 0;
        sqlite3_db_status(store->db().handle(), SQLITE_DBSTATUS_CACHE_USED, &current, &highest, 0);
        return current;
    };
    int before = cacheUsed();
    store->DropCaches();
    EXPECT_LT(cacheUsed(), before / 4);

    // Another connection's write is what the next read finds.
    auto other = OpenLines(path);
    ASSERT_EQ(store->Seek({1, 0, SeekKind::First}, row), 0);
    RowImage theirs = row;
    theirs.fields[2] = std::string("CHANGED");
    ASSERT_EQ(other->Update(1, theirs, true), 0);
    ASSERT_EQ(store->Read(1, row.rowid, row), 0);
    EXPECT_EQ(Text(row, 2), "CHANGED");
}

}  // namespace
}  // namespace oxdm::store::testing

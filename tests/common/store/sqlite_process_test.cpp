// Two processes on one record file: conflicts, locks of processes that
// died, and a writer killed in the middle of its work.

#include "oxdm/common/values/io_status.h"
#include "store_fixture.h"

#include <csignal>
#include <sys/wait.h>
#include <thread>

namespace oxdm::store::testing {
namespace {

// Runs `body` in a child process on its own connection; answers its exit code.
template <typename Body>
int InChild(Body body) {
    pid_t pid = fork();
    if (pid == 0) _exit(body());
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 100;
}

TEST(SqliteProcesses, SecondCheckedUpdateOfARecordChangedByAnotherProcessConflicts) {
    ScratchDir dir;
    std::string path = dir.File("shared.oxd");
    auto store = OpenLines(path);
    RowImage mine = Line("A", 1, "BOLT", 1);
    ASSERT_EQ(store->Insert(1, mine), 0);
    ASSERT_EQ(InChild([&] {
                  auto theirs = OpenLines(path);
                  RowImage row;
                  if (theirs->Seek({1, 0, SeekKind::EQ, {std::string("A"), std::int64_t{1}}}, row) != 0) return 1;
                  row.fields[2] = std::string("THEIRS");
                  return theirs->Update(1, row, true) == 0 ? 0 : 2;
              }),
              0);
    mine.fields[2] = std::string("MINE");
    EXPECT_EQ(store->Update(1, mine, true), oxioStatus::INCONSISTENT_KEY);
    RowImage read;
    ASSERT_EQ(store->Read(1, mine.rowid, read), 0);
    EXPECT_EQ(Text(read, 2), "THEIRS");
    // Having read it again, the write goes through.
    read.fields[2] = std::string("MINE");
    EXPECT_EQ(store->Update(1, read, true), 0);
}

TEST(SqliteProcesses, ALockBlocksOthersWhileItsOwnerLivesAndNobodyAfter) {
    ScratchDir dir;
    std::string path = dir.File("locks.oxd");
    auto store = OpenLines(path);
    RowImage held = Line("A", 1, "X", 1), free = Line("B", 1, "Y", 1);
    ASSERT_EQ(store->Insert(1, held), 0);
    ASSERT_EQ(store->Insert(1, free), 0);
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    pid_t pid = fork();
    if (pid == 0) {
        auto theirs = OpenLines(path);
        char ok = theirs->Lock(1, held.rowid) == 0 ? 'y' : 'n';
        if (write(ready[1], &ok, 1) != 1) _exit(1);
        pause();
        _exit(0);
    }
    char ok = 0;
    ASSERT_EQ(read(ready[0], &ok, 1), 1);
    ASSERT_EQ(ok, 'y');
    EXPECT_EQ(store->Lock(1, held.rowid), oxioStatus::IN_USE);
    EXPECT_EQ(store->Update(1, held, false), oxioStatus::IN_USE);
    EXPECT_EQ(store->Delete(1, held.rowid), oxioStatus::IN_USE);
    // Only that record is held.
    EXPECT_EQ(store->Lock(1, free.rowid), 0);
    EXPECT_EQ(store->Update(1, free, true), 0);
    EXPECT_EQ(store->Unlock(1, free.rowid), 0);

    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    EXPECT_EQ(store->Update(1, held, true), 0);
    EXPECT_EQ(store->Lock(1, held.rowid), 0);
    // Now this process holds it against a new one.
    EXPECT_EQ(InChild([&] {
                  auto theirs = OpenLines(path);
                  return theirs->Lock(1, held.rowid) == oxioStatus::IN_USE ? 0 : 1;
              }),
              0);
    EXPECT_EQ(store->Unlock(1, held.rowid), 0);
    EXPECT_EQ(InChild([&] {
                  auto theirs = OpenLines(path);
                  return theirs->Lock(1, held.rowid) == 0 ? 0 : 1;
              }),
              0);
}

TEST(SqliteProcesses, AWriterKilledMidWriteLeavesOldOrNewRecords) {
    ScratchDir dir;
    std::string path = dir.File("killed.oxd");
    constexpr int kRecords = 40;
    {
        auto store = OpenLines(path);
        for (int i = 0; i < kRecords; ++i) {
            RowImage row = Line("R" + std::to_string(i), i, "0", 0);
            ASSERT_EQ(store->Insert(1, row), 0);
        }
    }
    for (int round = 0; round < 3; ++round) {
        pid_t pid = fork();
        if (pid == 0) {
            auto store = OpenLines(path);
            RowImage row;
            for (std::int64_t n = 1;; ++n)
                for (short rc = store->Seek({1, 0, SeekKind::First}, row); rc == 0;
                     rc = store->Seek({1, 0, SeekKind::Next, {row.fields[0], row.fields[1]}, row.rowid}, row)) {
                    // ITEM and QTY always change together.
                    row.fields[2] = std::to_string(n) + std::string(200, '.');
                    row.fields[3] = static_cast<double>(n);
                    store->Update(1, row, false);
                }
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(60 + 40 * round));
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);

        auto store = OpenLines(path);
        sqlite3_stmt* check = nullptr;
        ASSERT_EQ(sqlite3_prepare_v2(store->db().handle(), "PRAGMA integrity_check", -1, &check, nullptr), SQLITE_OK);
        ASSERT_EQ(sqlite3_step(check), SQLITE_ROW);
        EXPECT_STREQ(reinterpret_cast<const char*>(sqlite3_column_text(check, 0)), "ok");
        sqlite3_finalize(check);
        int count = 0;
        RowImage row;
        for (short rc = store->Seek({1, 0, SeekKind::First}, row); rc == 0;
             rc = store->Seek({1, 0, SeekKind::Next, {row.fields[0], row.fields[1]}, row.rowid}, row), ++count) {
            double qty = std::get<double>(row.fields[3]);
            std::string expected = qty == 0 ? "0" : std::to_string(static_cast<std::int64_t>(qty)) + std::string(200, '.');
            EXPECT_EQ(Text(row, 2), expected);
        }
        EXPECT_EQ(count, kRecords);
    }
}

}  // namespace
}  // namespace oxdm::store::testing

// Two processes on one record file through the class face, and a random
// walk of a cursor checked against a std::map model after every step.

#include "face_fixture.h"
#include "oxdm/base/exception.h"
#include "oxdm/common/store/file_manager.h"
#include "oxdm/common/store/record_functions.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"

#include <csignal>
#include <map>
#include <optional>
#include <random>
#include <sys/wait.h>

namespace oxdm::store::testing {
namespace {

class FaceProcessTest : public LineFileTest {
protected:
    void SetUp() override {
        LineFileTest::SetUp();
        cursor_ = std::make_unique<oxioCursor>(*file_, 1, 0);
        cursor_->AttachColumn("ORDNO", ordno_);
        cursor_->AttachColumn("LINENO", lineno_);
        cursor_->AttachColumn("ITEM", item_);
    }
    oxioStatus::Status Add(const char* order, int line, const char* item) {
        ordno_.SetVal(CString(order));
        lineno_.SetVal(static_cast<double>(line));
        item_.SetVal(CString(item));
        return cursor_->Insert(nullptr);
    }
    // Runs `body` in a child with its own open of the file; its exit code.
    template <typename Body>
    int InChild(Body body) {
        pid_t pid = fork();
        if (pid == 0) {
            std::unique_ptr<oxioDataFile> file = OpenFile();
            oxioCursor cursor(*file, 1, 0);
            oxAlpha ordno, item;
            oxDouble lineno;
            cursor.AttachColumn("ORDNO", ordno);
            cursor.AttachColumn("LINENO", lineno);
            cursor.AttachColumn("ITEM", item);
            _exit(body(cursor, item));
        }
        int status = 0;
        waitpid(pid, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 100;
    }

    std::unique_ptr<oxioCursor> cursor_;
    oxAlpha ordno_, item_;
    oxDouble lineno_;
};

TEST_F(FaceProcessTest, UpdateOfARecordAnotherProcessChangedAnswersDataConflict) {
    ASSERT_EQ(Add("A", 1, "BOLT"), oxioStatus::Success);
    ASSERT_EQ(cursor_->FetchFirst(false), oxioStatus::Success);
    ASSERT_EQ(InChild([](oxioCursor& cursor, oxAlpha& item) {
                  if (cursor.FetchFirst(false) != oxioStatus::Success) return 1;
                  item.SetVal(CString("THEIRS"));
                  return cursor.Update(nullptr, oxioCursor::CheckConflict) == oxioStatus::Success ? 0 : 2;
              }),
              0);
    item_.SetVal(CString("MINE"));
    ASSERT_EQ(cursor_->SeekEQ(), oxioStatus::Success);
    ASSERT_EQ(cursor_->Lock(), oxioStatus::Success);
    EXPECT_EQ(cursor_->Update(nullptr, oxioCursor::CheckConflict), oxioStatus::DataConflict);
    ASSERT_EQ(cursor_->Unlock(1), oxioStatus::Success);
    ASSERT_EQ(cursor_->FetchCurrent(false), oxioStatus::Success);
    EXPECT_EQ(std::string(item_.GetVal()), "THEIRS");
}

TEST_F(FaceProcessTest, ALockOfAKilledProcessBlocksNobody) {
    ASSERT_EQ(Add("A", 1, "BOLT"), oxioStatus::Success);
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    pid_t pid = fork();
    if (pid == 0) {
        std::unique_ptr<oxioDataFile> file = OpenFile();
        oxioCursor cursor(*file, 1, 0);
        char ok = cursor.FetchFirst(true) == oxioStatus::Success && cursor.Locked() ? 'y' : 'n';
        if (write(ready[1], &ok, 1) != 1) _exit(1);
        pause();
        _exit(0);
    }
    char ok = 0;
    ASSERT_EQ(read(ready[0], &ok, 1), 1);
    ASSERT_EQ(ok, 'y');
    ASSERT_EQ(cursor_->FetchFirst(false), oxioStatus::Success);
    EXPECT_EQ(cursor_->Lock(), oxioStatus::InUse);
    EXPECT_EQ(cursor_->Update(nullptr, oxioCursor::CheckConflict), oxioStatus::InUse);
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
    EXPECT_EQ(cursor_->Lock(), oxioStatus::Success);
    EXPECT_EQ(cursor_->Update(nullptr, oxioCursor::CheckConflict), oxioStatus::Success);
    EXPECT_EQ(cursor_->Unlock(1), oxioStatus::Success);
}

TEST_F(FaceProcessTest, RandomCursorMovesAndEditsMatchAMapModel) {
    std::map<std::pair<std::string, int>, std::string> model;
    std::mt19937 random(77);
    auto pick = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    using Key = std::pair<std::string, int>;
    auto current = [&] { return Key(std::string(ordno_.GetVal()), static_cast<int>(lineno_.GetVal())); };
    bool on = false;
    Key at;
    for (int step = 0; step < 1500; ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        int action = pick(10);
        std::optional<Key> expected;
        oxioStatus::Status status = oxioStatus::Success;
        Key probe(std::string(1, static_cast<char>('A' + pick(5))), pick(6));
        switch (action) {
            case 0:
                status = cursor_->FetchFirst(false);
                if (!model.empty()) expected = model.begin()->first;
                break;
            case 1:
                status = cursor_->FetchLast(false);
                if (!model.empty()) expected = model.rbegin()->first;
                break;
            case 2:
            case 3: {
                if (!on) continue;
                status = cursor_->FetchNext(false);
                auto it = model.upper_bound(at);
                if (it != model.end()) expected = it->first;
                break;
            }
            case 4: {
                if (!on) continue;
                status = cursor_->FetchPrev(false);
                auto it = model.lower_bound(at);
                if (it != model.begin()) expected = std::prev(it)->first;
                break;
            }
            case 5: {
                cursor_->Clear();
                ordno_.SetVal(CString(probe.first.c_str()));
                bool partial = pick(2) == 0;
                if (!partial) lineno_.SetVal(static_cast<double>(probe.second));
                status = cursor_->FetchGE(false);
                auto it = model.lower_bound(partial ? Key(probe.first, -1) : probe);
                if (it != model.end()) expected = it->first;
                break;
            }
            case 6:
            case 7: {
                std::string item = "I" + std::to_string(step);
                status = Add(probe.first.c_str(), probe.second, item.c_str());
                if (model.count(probe)) {
                    EXPECT_EQ(status, oxioStatus::InvalidKey);
                    if (on && model.count(at)) {
                        ASSERT_EQ(cursor_->FetchCurrent(false), oxioStatus::Success);
                    }
                    continue;
                }
                ASSERT_EQ(status, oxioStatus::Success);
                model[probe] = item;
                expected = probe;
                break;
            }
            case 8: {
                if (!on || !model.count(at)) continue;
                std::string item = "U" + std::to_string(step);
                item_.SetVal(CString(item.c_str()));
                ASSERT_EQ(cursor_->Update(nullptr, oxioCursor::CheckConflict), oxioStatus::Success);
                model[at] = item;
                expected = at;
                break;
            }
            default: {
                if (!on || !model.count(at)) continue;
                ASSERT_EQ(cursor_->Delete(), oxioStatus::Success);
                model.erase(at);
                EXPECT_EQ(cursor_->FetchCurrent(false), oxioStatus::InvalidKey);
                continue;  // stands where the record was; Next and Prev go on from there
            }
        }
        if (!expected) {
            EXPECT_NE(status, oxioStatus::Success);
            // A failed move leaves the table where it stood.
            if (on && model.count(at)) {
                ASSERT_EQ(cursor_->FetchCurrent(false), oxioStatus::Success);
                EXPECT_EQ(current(), at);
            }
            continue;
        }
        ASSERT_EQ(status, oxioStatus::Success);
        on = true;
        at = current();
        EXPECT_EQ(at, *expected);
        EXPECT_EQ(std::string(item_.GetVal()), model[at]);
    }
    EXPECT_GT(model.size(), 10u);
}

TEST_F(FaceProcessTest, FileManagerOwnsItsFilesAndRemovesThem) {
    oxioFileManager manager(3);
    EXPECT_EQ(manager.TransactionGroup(), 3);
    oxioFileSpec spec(dir_.File("managed.tsl").c_str());
    ASSERT_EQ(manager.Open(spec, oxioFileManager::Create, oxioFileManager::Required, oxioFile::ReadWrite),
              oxioStatus::Success);
    ASSERT_EQ(manager.Open(oxioFileSpec(Path().c_str()), oxioFileManager::NoCreate, oxioFileManager::Required,
                           oxioFile::ReadWrite),
              oxioStatus::Success);
    EXPECT_EQ(manager.Open(oxioFileSpec(dir_.File("absent.tsl").c_str()), oxioFileManager::NoCreate,
                           oxioFileManager::Required, oxioFile::ReadWrite),
              oxioStatus::FileNotFound);
    oxioDataFile& managed = manager.File(spec);
    EXPECT_TRUE(oxioFileSpec(dir_.File("./managed.tsl").c_str()).IsMatchingFile(managed));
    EXPECT_EQ(&manager.File(managed.FileNum()), &managed);
    EXPECT_EQ(oxioFileInfo(managed).ApplAbbr(), CString("ts"));
    EXPECT_EQ(oxioFileInfo(managed).Description(), CString("tsl"));
    int visited = 0;
    manager.ForEach([&](oxioDataFile*) { return ++visited < 1; });
    EXPECT_EQ(visited, 1);
    EXPECT_THROW(manager.File(static_cast<short>(999)), oxdmException);
    EXPECT_THROW(manager.File(oxioFileSpec("elsewhere.tsl")), oxdmException);
}

// Reaches the manager's protected closing and removing.
class OpenManager : public oxioFileManager {
public:
    using oxioFileManager::Close;
    using oxioFileManager::oxioFileManager;
    using oxioFileManager::Remove;
};

TEST_F(FaceProcessTest, ClosingFreesTheFileNumberAndRemovingDeletesTheFile) {
    OpenManager manager(0);
    std::string path = dir_.File("gone.tsl");
    ASSERT_EQ(manager.Open(oxioFileSpec(path.c_str()), oxioFileManager::Create, oxioFileManager::Required,
                           oxioFile::ReadWrite),
              oxioStatus::Success);
    oxioDataFile& file = manager.File(oxioFileSpec(path.c_str()));
    short number = file.FileNum();
    EXPECT_EQ(xio_rd_record(number, 1, 0, 1), oxioStatus::INVALID_KEY);  // open, on no record
    ASSERT_EQ(manager.Remove(file), oxioStatus::Success);
    EXPECT_EQ(xio_rd_record(number, 1, 0, 1), oxioStatus::FILE_NOT_FOUND);
    EXPECT_FALSE(std::filesystem::exists(path));

    ASSERT_EQ(manager.Open(oxioFileSpec(Path().c_str()), oxioFileManager::NoCreate, oxioFileManager::Required,
                           oxioFile::ReadWrite),
              oxioStatus::Success);
    oxioDataFile& kept = manager.File(oxioFileSpec(Path().c_str()));
    number = kept.FileNum();
    ASSERT_EQ(manager.Close(kept), oxioStatus::Success);
    EXPECT_EQ(xio_rd_record(number, 1, 0, 1), oxioStatus::FILE_NOT_FOUND);
    EXPECT_TRUE(std::filesystem::exists(Path()));
}

}  // namespace
}  // namespace oxdm::store::testing

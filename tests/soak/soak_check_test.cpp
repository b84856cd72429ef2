// The checker over a real soak run: the run is sound, and every kind of
// damage to the file or the journals is caught and named.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <memory>

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "oxdm/common/store/io_cursor.h"
#include "oxdm/common/values/double_value.h"
#include "oxdm/common/values/text_values.h"
#include "soak_check.h"
#include "soak_run.h"

namespace {

class SoakCheckTest : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 1);
        options_.processes = 2;
        options_.edits = 80;
        options_.seed = 7;
        options_.customers = 6;  // few customers: conflicts are likely
        options_.orders = 12;
        options_.lines = 30;
        // A folder of this test process's own: test runners may run the
        // tests of this suite side by side.
        dir_ = std::string(OXDM_SOAK_TEST_DIR) + "/" + std::to_string(::getpid());
        std::string error;
        initial_ = std::make_unique<FileImage>();
        ASSERT_TRUE(PrepareSoak(options_, dir_, *initial_, error)) << error;
        run_ = RunSoakProcesses(options_, dir_, *initial_);
        outcome_ = std::make_unique<SoakOutcome>(CheckSoakRun(options_, dir_, *initial_));
        final_ = std::make_unique<FileImage>();
        std::unique_ptr<oxioDataFile> file = Open();
        ASSERT_TRUE(file && ReadFileImage(*file, *final_, error)) << error;
    }
    static void TearDownTestSuite() {
        initial_.reset();
        final_.reset();
        outcome_.reset();
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }

    static std::unique_ptr<oxioDataFile> Open() {
        oxioStatus::Status status = oxioStatus::Success;
        CString error;
        return oxioDataFile::Open(oxioFileSpec(SoakFilePath(dir_).c_str()), false, status, error);
    }
    // The first entry of type T in any journal, with its journal; null when none.
    template <class T>
    static std::pair<T*, Journal*> First(std::vector<Journal>& journals) {
        for (Journal& journal : journals)
            for (JournalEntry& entry : journal.entries)
                if (auto* found = std::get_if<T>(&entry)) return {found, &journal};
        return {nullptr, nullptr};
    }
    static bool Mentions(const std::vector<std::string>& problems, const std::string& words) {
        return std::any_of(problems.begin(), problems.end(),
                           [&](const std::string& p) { return p.find(words) != std::string::npos; });
    }

    static inline std::string dir_;
    static inline SoakOptions options_;
    static inline SoakRun run_;
    static inline std::unique_ptr<FileImage> initial_, final_;
    static inline std::unique_ptr<SoakOutcome> outcome_;
};

}  // namespace

TEST_F(SoakCheckTest, RunIsSoundAndEveryEditIsAccounted) {
    EXPECT_EQ(run_.failedProcesses, 0);
    for (const std::string& problem : outcome_->problems) ADD_FAILURE() << problem;
    EXPECT_EQ(outcome_->total.edits, options_.processes * options_.edits);
    EXPECT_GT(outcome_->total.committed, 0);
    // An edit is committed, refused after a conflict, or given up.
    EXPECT_LE(outcome_->total.committed + outcome_->total.givenUp, outcome_->total.edits);
    EXPECT_EQ(outcome_->overwrites + outcome_->kept + outcome_->notices, outcome_->total.conflicts);
}

// Each change to the file or the journals that a fault of the library (or a
// lying process) would cause, and the words the checker must find for it.
TEST_F(SoakCheckTest, EveryKindOfDamageIsCaught) {
    struct Case {
        const char* what;
        // False: the run made nothing of the kind to damage.
        std::function<bool(FileImage&, std::vector<Journal>&, std::vector<AuditRow>&)> damage;
        const char* words;
    };
    const Case cases[] = {
        {"a customer's NAME without its CITY",
         [](FileImage& file, std::vector<Journal>&, std::vector<AuditRow>&) {
             file.customers.begin()->second.name += "x";
             return true;
         },
         "is half written"},
        {"the last committed change of a customer undone",
         [](FileImage& file, std::vector<Journal>& journals, std::vector<AuditRow>&) {
             auto [commit, journal] = First<CustomerCommit>(journals);
             if (!commit) return false;
             // The last commit on that customer, undone on file.
             for (Journal& j : journals)
                 for (JournalEntry& e : j.entries)
                     if (auto* c = std::get_if<CustomerCommit>(&e); c && c->custno == commit->custno)
                         if (file.customers[c->custno].city == c->token) file.customers[c->custno].city = c->pred;
             return true;
         },
         "but the last committed change wrote"},
        {"a commit journaled twice",
         [](FileImage&, std::vector<Journal>& journals, std::vector<AuditRow>&) {
             auto [commit, journal] = First<CustomerCommit>(journals);
             if (!commit) return false;
             journal->entries.push_back(*commit);
             return true;
         },
         "is journaled as committed twice"},
        {"a write over another without a conflict",
         [](FileImage&, std::vector<Journal>& journals, std::vector<AuditRow>&) {
             auto [commit, journal] = First<CustomerCommit>(journals);
             if (!commit) return false;
             CustomerCommit blind{commit->custno, commit->pred, commit->pred, "p9-0000001"};
             journal->entries.push_back(blind);
             return true;
         },
         "without a data conflict being reported"},
        {"a conflict with nothing in between",
         [](FileImage&, std::vector<Journal>& journals, std::vector<AuditRow>&) {
             auto [commit, journal] = First<CustomerCommit>(journals);
             if (!commit) return false;
             journal->entries.push_back(ConflictSeen{commit->custno, commit->token, commit->token, ConflictAnswer::Kept});
             return true;
         },
         "no committed change came in between"},
        {"a committed line lost",
         [](FileImage& file, std::vector<Journal>&, std::vector<AuditRow>&) {
             if (file.lines.empty()) return false;
             file.lines.erase(file.lines.begin());
             return true;
         },
         "was committed but is not on file"},
        {"an order's total without its line",
         [](FileImage& file, std::vector<Journal>&, std::vector<AuditRow>&) {
             file.orders.begin()->second.totalCents += 1;
             return true;
         },
         "is inconsistent with its lines"},
        {"an order doubled",
         [](FileImage& file, std::vector<Journal>&, std::vector<AuditRow>&) {
             file.orders["O999999999"] = file.orders.begin()->second;
             return true;
         },
         "no committed change leaves it there"},
        {"a line without its order",
         [](FileImage& file, std::vector<Journal>&, std::vector<AuditRow>&) {
             file.lines[{"O999999998", 1}] = LineImage{"SOAK000001", 1, 100};
             return true;
         },
         "has no order on file"},
        {"a committed change missing from the audit log",
         [](FileImage&, std::vector<Journal>&, std::vector<AuditRow>& logged) {
             if (logged.empty()) return false;
             logged.erase(logged.begin() + static_cast<long>(logged.size() / 2));
             return true;
         },
         "The audit log lacks 1 row(s) of a committed change"},
        {"an audit row no change made",
         [](FileImage&, std::vector<Journal>&, std::vector<AuditRow>& logged) {
             if (logged.empty()) return false;
             logged.push_back(logged.front());
             return true;
         },
         "The audit log holds 1 row(s) that no committed change made"},
        {"a process that did not finish",
         [](FileImage&, std::vector<Journal>& journals, std::vector<AuditRow>&) {
             journals.back().complete = false;
             return true;
         },
         "has no closing line"},
    };
    ASSERT_TRUE(CheckSoak(*initial_, outcome_->journals, *final_, outcome_->logged, options_.processes).empty());
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        FileImage file = *final_;
        std::vector<Journal> journals = outcome_->journals;
        std::vector<AuditRow> logged = outcome_->logged;
        ASSERT_TRUE(c.damage(file, journals, logged)) << "the run made no change of this kind";
        const std::vector<std::string> problems = CheckSoak(*initial_, journals, file, logged, options_.processes);
        EXPECT_TRUE(Mentions(problems, c.words)) << (problems.empty() ? "no problem found" : problems.front());
    }
}

// Behind the soak's back: a committed line deleted from the record file and
// a customer given a CITY nobody committed. The check of the file names both.
TEST_F(SoakCheckTest, TamperedRecordFileFailsTheCheck) {
    auto [added, journal] = First<LineAdded>(outcome_->journals);
    ASSERT_NE(added, nullptr) << "the run added no line";
    // The first added line that is still on file.
    LineKey victim{};
    for (const Journal& j : outcome_->journals)
        for (const JournalEntry& e : j.entries)
            if (const auto* a = std::get_if<LineAdded>(&e); a && final_->lines.count({a->ordno, a->lineNo}))
                victim = {a->ordno, a->lineNo};
    ASSERT_FALSE(victim.first.empty());
    const std::string custno = final_->customers.begin()->first;
    {
        std::unique_ptr<oxioDataFile> file = Open();
        ASSERT_NE(file, nullptr);
        oxioCursor lines(*file, 3, 0);
        oxAlpha ordno(CString(victim.first.c_str()));
        oxDouble lineNo;
        lineNo.SetVal(static_cast<double>(victim.second));
        lines.AttachColumn("ORDNO", ordno);
        lines.AttachColumn("LINENO", lineNo);
        ASSERT_EQ(lines.FetchEQ(false), oxioStatus::Success);
        ASSERT_EQ(lines.Delete(), oxioStatus::Success);

        oxioCursor customers(*file, 1, 0);
        oxAlpha key(CString(custno.c_str())), city;
        customers.AttachColumn("CUSTNO", key);
        customers.AttachColumn("CITY", city);
        ASSERT_EQ(customers.FetchEQ(false), oxioStatus::Success);
        city.SetVal(CString("Elsewhere"));
        ASSERT_EQ(customers.Update(nullptr, oxioCursor::Overwrite), oxioStatus::Success);
    }
    const SoakOutcome outcome = CheckSoakRun(options_, dir_, *initial_);
    const std::string line = "Line " + victim.first + "/" + std::to_string(victim.second);
    EXPECT_TRUE(Mentions(outcome.problems, line + " was committed but is not on file")) << line;
    EXPECT_TRUE(Mentions(outcome.problems, "Customer " + custno + ": the file holds 'Elsewhere'"));
    EXPECT_TRUE(Mentions(outcome.problems, "Customer " + custno + " is half written"));
}

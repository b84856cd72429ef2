#pragma once
// The journal of one soak process: one line of text for each change the
// process believes it committed and for each data conflict it was told of,
// written and flushed as it happens, and a closing line with its figures.
// The checker reads every journal back and holds them against the file.
//
//   cust C0000003 Bergen Bergen p1-000007 customer written: read, replaced, token
//   conflict C0000003 Bergen p2-000004 overwrite   base read, seen on file, answer
//   inuse C0000003 Bergen                 a save refused: the record was in use
//   line+ O000000012 5 SOAK000042 3 1299 48750     order, line, item, qty, price, new total
//   line- O000000012 2 31200                      order, line, new total
//   rekey O000000012 R100000001                   order renumbered, its lines deleted
//   end 200 150 12 3 0                            edits, committed, conflicts, retries, given up

#include <cstdio>
#include <string>
#include <variant>
#include <vector>

#include "file_image.h"

// A customer update that was saved: `base` is the token (the CITY) that the
// process read, `pred` the one its write replaced on file (other than
// `base` after a conflict answered "overwrite"), `token` the one it wrote.
struct CustomerCommit {
    std::string custno, base, pred, token;
};

// How the question of a data conflict was answered.
enum class ConflictAnswer {
    Overwrite,  // "No": the process's changes were written over the other's
    Kept,       // "Yes": the other program's data were kept, nothing written
    Notice      // the conflict was only reported (no choice offered)
};

// A data conflict the process was told of: the token it had read (`base`)
// and the token on file while the question was on screen (`seen`).
struct ConflictSeen {
    std::string custno, base, seen;
    ConflictAnswer answer = ConflictAnswer::Notice;
};

// A customer save refused because another process held the record; the
// edit was reverted and made again. `base` is the token it had read.
struct CustomerInUse {
    std::string custno, base;
};

struct LineAdded {
    std::string ordno;
    long long lineNo = 0;
    LineImage line;
    long long totalCents = 0;  // the order's total as written with the line
};

struct LineRemoved {
    std::string ordno;
    long long lineNo = 0;
    long long totalCents = 0;
};

struct OrderRekeyed {
    std::string from, to;
};

struct WorkerFigures {
    long long edits = 0, committed = 0, conflicts = 0, retries = 0, givenUp = 0;
};

using JournalEntry = std::variant<CustomerCommit, ConflictSeen, CustomerInUse, LineAdded, LineRemoved, OrderRekeyed, WorkerFigures>;

std::string FormatEntry(const JournalEntry& entry);
// False with a sentence in `why` when the line is not an entry.
bool ParseEntry(const std::string& line, JournalEntry& entry, std::string& why);

// Appends entries to a journal file and flushes after each one.
// Invariant: file_ is open for writing from construction to destruction, or
// null when the open failed (Ok() false).
class JournalWriter {
public:
    explicit JournalWriter(const std::string& path);
    ~JournalWriter();
    JournalWriter(const JournalWriter&) = delete;
    JournalWriter& operator=(const JournalWriter&) = delete;

    bool Ok() const { return file_ != nullptr; }
    // REQUIRES: Ok()
    void Write(const JournalEntry& entry);

private:
    std::FILE* file_ = nullptr;
};

// One process's journal as read back.
struct Journal {
    int process = 0;
    std::vector<JournalEntry> entries;  // in the order written, the figures excluded
    WorkerFigures figures;
    bool complete = false;  // the closing line was there
};

// Reads the journal at `path`; false with a sentence naming the file and the
// line when it cannot be read or a line is not an entry.
bool ReadJournal(const std::string& path, int process, Journal& journal, std::string& error);

// The journal file of process `index` in `dir`.
std::string JournalPath(const std::string& dir, int index);

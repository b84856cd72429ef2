#include "journal.h"

#include <cassert>
#include <fstream>
#include <sstream>

namespace {

const char* AnswerWord(ConflictAnswer answer) {
    switch (answer) {
        case ConflictAnswer::Overwrite:
            return "overwrite";
        case ConflictAnswer::Kept:
            return "kept";
        case ConflictAnswer::Notice:
            break;
    }
    return "notice";
}

bool AnswerFromWord(const std::string& word, ConflictAnswer& answer) {
    for (ConflictAnswer a : {ConflictAnswer::Overwrite, ConflictAnswer::Kept, ConflictAnswer::Notice}) {
        if (word == AnswerWord(a)) {
            answer = a;
            return true;
        }
    }
    return false;
}

struct Formatter {
    std::ostringstream out;
    void operator()(const CustomerCommit& c) { out << "cust " << c.custno << ' ' << c.base << ' ' << c.pred << ' ' << c.token; }
    void operator()(const ConflictSeen& c) {
        out << "conflict " << c.custno << ' ' << c.base << ' ' << c.seen << ' ' << AnswerWord(c.answer);
    }
    void operator()(const CustomerInUse& c) { out << "inuse " << c.custno << ' ' << c.base; }
    void operator()(const LineAdded& l) {
        out << "line+ " << l.ordno << ' ' << l.lineNo << ' ' << l.line.item << ' ' << l.line.qty << ' '
            << l.line.priceCents << ' ' << l.totalCents;
    }
    void operator()(const LineRemoved& l) { out << "line- " << l.ordno << ' ' << l.lineNo << ' ' << l.totalCents; }
    void operator()(const OrderRekeyed& r) { out << "rekey " << r.from << ' ' << r.to; }
    void operator()(const WorkerFigures& f) {
        out << "end " << f.edits << ' ' << f.committed << ' ' << f.conflicts << ' ' << f.retries << ' ' << f.givenUp;
    }
};

}  // namespace

std::string FormatEntry(const JournalEntry& entry) {
    Formatter formatter;
    std::visit(formatter, entry);
    return formatter.out.str();
}

bool ParseEntry(const std::string& line, JournalEntry& entry, std::string& why) {
    std::istringstream in(line);
    std::string kind;
    in >> kind;
    bool ok = false;
    if (kind == "cust") {
        CustomerCommit c;
        ok = static_cast<bool>(in >> c.custno >> c.base >> c.pred >> c.token);
        entry = c;
    } else if (kind == "conflict") {
        ConflictSeen c;
        std::string answer;
        ok = (in >> c.custno >> c.base >> c.seen >> answer) && AnswerFromWord(answer, c.answer);
        entry = c;
    } else if (kind == "inuse") {
        CustomerInUse c;
        ok = static_cast<bool>(in >> c.custno >> c.base);
        entry = c;
    } else if (kind == "line+") {
        LineAdded l;
        ok = static_cast<bool>(in >> l.ordno >> l.lineNo >> l.line.item >> l.line.qty >> l.line.priceCents >>
                               l.totalCents);
        entry = l;
    } else if (kind == "line-") {
        LineRemoved l;
        ok = static_cast<bool>(in >> l.ordno >> l.lineNo >> l.totalCents);
        entry = l;
    } else if (kind == "rekey") {
        OrderRekeyed r;
        ok = static_cast<bool>(in >> r.from >> r.to);
        entry = r;
    } else if (kind == "end") {
        WorkerFigures f;
        ok = static_cast<bool>(in >> f.edits >> f.committed >> f.conflicts >> f.retries >> f.givenUp);
        entry = f;
    } else {
        why = "unknown entry '" + kind + "'";
        return false;
    }
    std::string extra;
    if (ok && in >> extra) ok = false;
    if (!ok) why = "malformed '" + kind + "' entry";
    return ok;
}

JournalWriter::JournalWriter(const std::string& path) : file_(std::fopen(path.c_str(), "w")) {}

JournalWriter::~JournalWriter() {
    if (file_) std::fclose(file_);
}

void JournalWriter::Write(const JournalEntry& entry) {
    assert(Ok());
    std::fprintf(file_, "%s\n", FormatEntry(entry).c_str());
    std::fflush(file_);
}

bool ReadJournal(const std::string& path, int process, Journal& journal, std::string& error) {
    journal = Journal{};
    journal.process = process;
    std::ifstream in(path);
    if (!in) {
        error = "Cannot read the journal " + path + ".";
        return false;
    }
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
        JournalEntry entry;
        std::string why;
        if (journal.complete || !ParseEntry(line, entry, why)) {
            error = path + ", line " + std::to_string(number) + ": " +
                    (journal.complete ? std::string("an entry after the closing line") : why) + ".";
            return false;
        }
        if (const auto* figures = std::get_if<WorkerFigures>(&entry)) {
            journal.figures = *figures;
            journal.complete = true;
        } else {
            journal.entries.push_back(std::move(entry));
        }
    }
    return true;
}

std::string JournalPath(const std::string& dir, int index) {
    return dir + "/journal-" + std::to_string(index) + ".txt";
}

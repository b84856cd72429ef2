// load, dump and generate: the records of one table, or the sample.
#include <charconv>
#include <chrono>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <sstream>

#include "commands.h"
#include "oxdm/common/dictionary/flat_definitions.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "sample_data.h"
#include "table_csv.h"
#include "table_fields.h"

namespace oxdm::admin {

namespace {

// Opens an existing record file; prints why not to `err`.
std::unique_ptr<oxioDataFile> OpenExisting(const std::string& path, std::ostream& err) {
    oxioStatus::Status status;
    CString error;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec(CString(path)), false, status, error);
    if (!file) err << "oxdm-admin: " << error << "\n";
    return file;
}

// The table named on the command line; prints the file's tables when there
// is no such table.
short NamedTable(const oxioDataFile& file, const std::string& name, std::ostream& err) {
    short table = FindTable(file.FileNum(), CString(name));
    if (table != 0) return table;
    err << "oxdm-admin: the record file '" << file.Spec().FilePath() << "' has no table '" << name
        << "'; its tables are";
    xio_file_def def{};
    xio_get_def(file.FileNum(), &def, 1);
    for (short t = 1; t <= def.tables; ++t)
        err << (t > 1 ? "," : "") << " " << t << " " << TableDescription(file.FileNum(), t);
    err << ".\n";
    return 0;
}

bool ReadWholeFile(const std::string& path, std::string& text) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

// A count given on the command line: digits only.
bool ParseCount(const std::string& text, long long& count) {
    auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), count);
    return ec == std::errc() && end == text.data() + text.size() && !text.empty() && text[0] != '-';
}

}  // namespace

int LoadCommand(const Words& args, std::ostream& out, std::ostream& err) {
    if (args.size() != 3) return kExitUsage;
    std::string text;
    if (!ReadWholeFile(args[2], text)) {
        err << "oxdm-admin: the CSV file '" << args[2] << "' cannot be read.\n";
        return kExitFailure;
    }
    std::unique_ptr<oxioDataFile> file = OpenExisting(args[0], err);
    if (!file) return kExitFailure;
    short table = NamedTable(*file, args[1], err);
    if (table == 0) return kExitFailure;
    long long loaded = 0;
    std::vector<CString> errors;
    if (!LoadTable(*file, table, text, CString(args[2]), loaded, errors)) {
        for (const CString& error : errors) err << error << "\n";
        err << "oxdm-admin: nothing was loaded.\n";
        return kExitFailure;
    }
    out << "Loaded " << loaded << (loaded == 1 ? " record" : " records") << " into table " << table << " ("
        << TableDescription(file->FileNum(), table) << ").\n";
    return kExitOk;
}

int DumpCommand(const Words& args, std::ostream& out, std::ostream& err) {
    bool withStamps = true;
    Words plain;
    for (const std::string& arg : args) {
        if (arg == "--no-stamps")
            withStamps = false;
        else
            plain.push_back(arg);
    }
    if (plain.size() < 2 || plain.size() > 3) return kExitUsage;
    std::unique_ptr<oxioDataFile> file = OpenExisting(plain[0], err);
    if (!file) return kExitFailure;
    short table = NamedTable(*file, plain[1], err);
    if (table == 0) return kExitFailure;
    std::ofstream csv;
    if (plain.size() == 3) {
        csv.open(plain[2], std::ios::binary | std::ios::trunc);
        if (!csv) {
            err << "oxdm-admin: the CSV file '" << plain[2] << "' cannot be written.\n";
            return kExitFailure;
        }
    }
    CString error;
    if (!DumpTable(*file, table, withStamps, plain.size() == 3 ? csv : out, error)) {
        err << "oxdm-admin: " << error << "\n";
        return kExitFailure;
    }
    return kExitOk;
}

int GenerateCommand(const Words& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) return kExitUsage;
    oxSampleCounts counts;
    for (size_t i = 1; i < args.size(); i += 2) {
        long long* count = args[i] == "--customers" ? &counts.customers
                           : args[i] == "--orders"  ? &counts.orders
                           : args[i] == "--lines"   ? &counts.lines
                                                    : nullptr;
        if (!count || i + 1 >= args.size() || !ParseCount(args[i + 1], *count)) return kExitUsage;
    }
    CString error = oxSampleCountsProblem(counts);
    if (!error.IsEmpty()) {
        err << "oxdm-admin: " << error << "\n";
        return kExitFailure;
    }
    oxioStatus::Status status;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec(CString(args[0])), true, status, error);
    if (!file) {
        err << "oxdm-admin: " << error << "\n";
        return kExitFailure;
    }
    auto start = std::chrono::steady_clock::now();
    if (oxGenerateSample(*file, counts, error) != oxioStatus::Success) {
        err << "oxdm-admin: " << error << "\n";
        return kExitFailure;
    }
    std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    std::ostringstream seconds;
    seconds.precision(1);
    seconds << std::fixed << took.count();
    out << "Wrote " << counts.customers << " customers, " << counts.orders << " orders and " << counts.lines
        << " lines to " << file->Spec().FilePath() << " in " << seconds.str() << " s.\n";
    return kExitOk;
}

}  // namespace oxdm::admin

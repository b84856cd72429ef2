// The buffer's finds, saves and screen opening on a record file of
// 1,000,000 customers, each against the least raw SQLite work that does the
// same job (raw_sales.h), measured in the same run:
//
//   FindGE       the buffer's seek on the customer number, window of 30,
//                against one raw seek on the same index
//   FindSubstr   the incremental search of a six-letter prefix, against the
//                same raw seek on the prefix
//   ValidateRow  the save of a focus row whose city was edited, against one
//                raw UPDATE of that record by its id
//   Open screen  a data manager over customers (window 30) with their orders
//                and the orders' lines as child buffers (windows 10), made
//                and filled, against a raw connection opened, its
//                statements prepared, and the three queries that fill the
//                same windows
//
// Each figure is the median over repetitions on different records; records
// read and written are counted at the engine (engine_counter.h) and given
// per operation: records of the record tables, and other rows (the schema
// and column lists read on opening a file, the lock table). Prints a Markdown table. Not run by ctest.
//
// Usage: buffered_ops_bench [cache folder]   (default: the temporary folder)

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <memory>
#include <vector>

#include "engine_counter.h"
#include "median.h"
#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/datasource/buffered/data_manager.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"
#include "raw_sales.h"
#include "sales_file.h"

namespace {

constexpr long kCustomers = 1000000;
constexpr int kRepeats = 301;
constexpr int kAllRights = 0x0f;

// The timings and engine counts of one side of a comparison.
struct Side {
    std::vector<double> micros;
    EngineCount counted;

    template <typename Body>
    void Time(Body body) {
        const EngineCount before = EngineCounted();
        const auto start = std::chrono::steady_clock::now();
        body();
        micros.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count());
        counted += EngineCounted() - before;
    }
    double PerOp(long total) const { return static_cast<double>(total) / static_cast<double>(micros.size()); }
};

void PrintRow(const char* what, const Side& buffer, const Side& raw) {
    const double ours = Median(buffer.micros), floor = Median(raw.micros);
    std::printf("| %s | %.1f | %.1f | %.2f | %.1f / %.1f | %.1f / %.1f | %.1f / %.1f | %.1f |\n", what, ours, floor,
                ours / floor, buffer.PerOp(buffer.counted.rowsRead), raw.PerOp(raw.counted.rowsRead),
                buffer.PerOp(buffer.counted.otherRead), raw.PerOp(raw.counted.otherRead),
                buffer.PerOp(buffer.counted.rowsWritten), raw.PerOp(raw.counted.rowsWritten),
                buffer.PerOp(buffer.counted.lockWrites));
}

// The customer numbers the repetitions work on, spread over the file.
std::string KeyOf(int repeat) { return CustomerNumber((static_cast<long>(repeat) * 9901L + 4321L) % kCustomers); }

// A customer buffer on the customer number, window of 30.
struct CustomerBuffer {
    explicit CustomerBuffer(const std::string& path) : query("bench") {
        oxdmQueryNode* node = query.SetRoot(oxioFileSpec(path.c_str()), 1, 0, "cust", kAllRights);
        node->AddAllColumns(true, true, false);
        buffer = std::make_unique<oxdmBufferedFileDataSource>(&query, &task, static_cast<oxdmFileManager*>(nullptr));
        buffer->SetWindowSize(30);
        buffer->ReQuery();
        custno = buffer->IndexForColumn("CUSTNO");
        city = buffer->IndexForColumn("CITY");
    }
    void Seek(const std::string& key) {
        buffer->SetFindValue(custno, CString(key.c_str()));
        if (!buffer->FindGE()) std::fprintf(stderr, "FindGE %s failed\n", key.c_str());
    }

    oxTask task{1, "Bench"};
    oxdmQuery query;  // outlives the buffer
    std::unique_ptr<oxdmBufferedFileDataSource> buffer;
    short custno = -1, city = -1;
};

void Finds(const std::string& path, RawSales& raw) {
    CustomerBuffer customers(path);
    Side seek, rawSeek, substr, rawSubstr;
    for (int r = 0; r < kRepeats; ++r) {
        const std::string key = KeyOf(r);
        seek.Time([&] { customers.Seek(key); });
        rawSeek.Time([&] { raw.SeekCustomer(key); });
        // A prefix typed in lower case: "c" and the first five digits.
        const std::string prefix = "c" + key.substr(1, 5);
        substr.Time([&] {
            if (!customers.buffer->FindSubstr(customers.custno, CString(prefix.c_str())))
                std::fprintf(stderr, "FindSubstr %s failed\n", prefix.c_str());
        });
        rawSubstr.Time([&] { raw.SeekCustomer(prefix); });
    }
    PrintRow("FindGE", seek, rawSeek);
    PrintRow("FindSubstr (prefix)", substr, rawSubstr);
}

void Saves(const std::string& path, RawSales& raw) {
    CustomerBuffer customers(path);
    Side save, rawSave;
    for (int r = 0; r < kRepeats; ++r) {
        const std::string key = KeyOf(r);
        // New on every run, so that the edit changes the record.
        const std::string city = "City " + std::to_string(getpid()) + "-" + std::to_string(r);
        customers.Seek(key);
        customers.buffer->ObserverSetNewValue(customers.city, CString(city.c_str()), 0, true);
        save.Time([&] {
            if (!customers.buffer->ValidateRow(0, true)) std::fprintf(stderr, "ValidateRow %s failed\n", key.c_str());
        });
        const long long id = raw.CustomerId(CustomerNumber((r * 7L + 11L) % kCustomers));
        rawSave.Time([&] { raw.SetCity(id, city); });
    }
    PrintRow("ValidateRow (one field edited)", save, rawSave);
}

// The records a buffer's window shows, the new row left out.
long Records(oxdmBufferedFileDataSource& buffer) {
    long records = 0;
    for (short row = 0; row < buffer.NumWindowDataRows(); ++row) records += buffer.IsNewRow(row) ? 0 : 1;
    return records;
}

void Screens(const std::string& path) {
    Side open, rawOpen;
    long orders = 0, lines = 0;
    EngineCount phases[3];  // making the manager, sizing the windows, ReQuery
    for (int r = 0; r < kRepeats; ++r) {
        oxTask task(1, "Bench");
        oxdmQuery query("screen");
        oxdmQueryNode* customers = query.SetRoot(oxioFileSpec(path.c_str()), 1, 0, "cust", kAllRights);
        customers->AddAllColumns(true, true, false);
        oxdmQueryNode* orderNode = customers->AddChildNode(oxioFileSpec(path.c_str()), 2, "CUSTNO=CUSTNO", 1, "orders", kAllRights);
        orderNode->AddAllColumns(true, true, false);
        orderNode->AddChildNode(oxioFileSpec(path.c_str()), 3, "ORDNO=ORDNO", 0, "lines", kAllRights)->AddAllColumns(true, true, false);
        open.Time([&] {
            EngineCount before = EngineCounted();
            oxdmDataManager manager(&query, &task, nullptr);
            oxdmBufferedFileDataSource* root = manager.RootBuffer();
            phases[0] += EngineCounted() - before;
            before = EngineCounted();
            root->SetWindowSize(30);
            root->BufferForNode(CString("orders"))->SetWindowSize(10);
            root->BufferForNode(CString("lines"))->SetWindowSize(10);
            phases[1] += EngineCounted() - before;
            before = EngineCounted();
            root->ReQuery();
            phases[2] += EngineCounted() - before;
            orders = Records(*root->BufferForNode(CString("orders")));
            lines = Records(*root->BufferForNode(CString("lines")));
        });
        rawOpen.Time([&] { RawSales(path).OpenScreen(30, 10); });
    }
    PrintRow("Open customer screen (orders, lines)", open, rawOpen);
    std::printf("\nThe screen showed %ld orders and %ld lines of its first customer.\n", orders, lines);
    std::printf("Records read per opening: %.1f making the manager, %.1f sizing the three windows, %.1f by ReQuery.\n",
                open.PerOp(phases[0].rowsRead), open.PerOp(phases[1].rowsRead), open.PerOp(phases[2].rowsRead));
}

}  // namespace

int main(int argc, char** argv) {
    const std::filesystem::path dir =
        argc > 1 ? std::filesystem::path(argv[1]) : std::filesystem::temp_directory_path() / "oxdm-buffered-bench";
    std::filesystem::create_directories(dir);
    ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 0);
    const std::string path = SalesFile(dir, kCustomers);
    RawSales raw(path);
    std::printf("%ld customers, %d repetitions; times are medians in microseconds; records per operation.\n\n",
                kCustomers, kRepeats);
    std::printf("| operation | oxdm µs | raw µs | ratio | records read (oxdm / raw) | other rows read (oxdm / raw) |"
                " records written (oxdm / raw) | lock rows written |\n");
    std::printf("|---|---:|---:|---:|---:|---:|---:|---:|\n");
    Finds(path, raw);
    Saves(path, raw);
    Screens(path);
    return 0;
}

// The row window of a buffer over tables of 10,000 and 1,000,000 customers,
// window of 30: for each operation the time, the records read and the
// resident memory. A program that prints its figures; not run by ctest.
//
//   ReQuery; SetWindowScroll(ScrollBottom); SetWindowScrollPercent(0.5);
//   100 x MoveDown(1); SetWindowScroll(ScrollDown, 30) x 100 (3,000 rows)
//
// Records read are counted at the engine (engine_counter.h); the record
// files are those of sales_file.h, kept in a cache folder for later runs.
//
// Usage: buffered_bench [cache folder]   (default: the temporary folder)

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "oxdm/common/shell/task.h"
#include "oxdm/common/store/data_file.h"
#include "oxdm/datasource/buffered/buffered_data_source.h"
#include "oxdm/query/query.h"
#include "oxdm/query/query_node.h"
#include "engine_counter.h"
#include "resident.h"
#include "sales_file.h"

namespace {

template <typename Body>
void Measure(const char* what, Body body) {
    const EngineCount before = EngineCounted();
    const auto start = std::chrono::steady_clock::now();
    body();
    const double ms = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    std::printf("  %-38s %10.3f ms %8ld read %8ld KiB\n", what, ms, (EngineCounted() - before).rowsRead, ResidentKiB());
}

void Run(const std::filesystem::path& dir, long customers) {
    const std::string path = SalesFile(dir, customers);
    std::printf("%ld customers, window of 30 (resident at start %ld KiB)\n", customers, ResidentKiB());
    oxTask task(1, "Bench");
    oxdmQuery query("bench");
    oxdmQueryNode* node = query.SetRoot(oxioFileSpec(path.c_str()), 1, 0, "cust", 0x0f);
    node->AddAllColumns(true, true, false);
    oxdmBufferedFileDataSource buffer(&query, &task, static_cast<oxdmFileManager*>(nullptr));
    buffer.SetWindowSize(30);
    Measure("ReQuery", [&] { buffer.ReQuery(); });
    Measure("SetWindowScroll(ScrollBottom)", [&] { buffer.SetWindowScroll(oxdmDataSource::ScrollBottom, 0); });
    Measure("SetWindowScrollPercent(0.5)", [&] { buffer.SetWindowScrollPercent(0.5); });
    buffer.SetFocus(0, 0, true);
    Measure("100 x MoveDown(1)", [&] {
        for (int i = 0; i < 100; ++i) buffer.MoveDown(1, 0, true, false);
    });
    Measure("100 x SetWindowScroll(ScrollDown, 30)", [&] {
        for (int i = 0; i < 100; ++i) buffer.SetWindowScroll(oxdmDataSource::ScrollDown, 30);
    });
    std::printf("  window rows %ld, focus %s\n", buffer.NumWindowDataRows(),
                buffer.NewValueAsString(buffer.IndexForColumn("CUSTNO")).c_str());
}

}  // namespace

int main(int argc, char** argv) {
    const std::filesystem::path dir =
        argc > 1 ? std::filesystem::path(argv[1]) : std::filesystem::temp_directory_path() / "oxdm-buffered-bench";
    std::filesystem::create_directories(dir);
    ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 0);
    for (const long customers : {10000L, 1000000L}) Run(dir, customers);
    return 0;
}

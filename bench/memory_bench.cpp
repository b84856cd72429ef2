// Memory table: Sort against the straight insertion sort that defines its
// order, and the linear finds, over large tables.

#include <benchmark/benchmark.h>

#include <random>
#include <vector>

#include "oxdm/datasource/string_mem_data_source.h"

namespace {

using Table = std::vector<std::vector<CString>>;

// Rows of a name with many repeats (ties), a number and a code.
Table MakeTable(long rows) {
    std::mt19937 random(7);
    Table table;
    table.reserve(static_cast<size_t>(rows));
    for (long r = 0; r < rows; ++r) {
        CString name;
        name.Format("name%05u", static_cast<unsigned>(random() % 5000));
        CString number;
        number.Format("%u", static_cast<unsigned>(random() % 1000000));
        CString code;
        code.Format("C%06ld", r);
        table.push_back({name, number, code});
    }
    return table;
}

void BM_Sort(benchmark::State& state) {
    oxdmStringMemDataSource source(MakeTable(state.range(0)), {"Name", "Number", "Code"}, {}, "row", false);
    bool ascending = true;
    for (auto _ : state) {
        source.Sort(0, ascending);
        ascending = !ascending;
        benchmark::DoNotOptimize(source.GetAbsoluteRow(0));
    }
}
BENCHMARK(BM_Sort)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The straight insertion sort over an index, with the same compare on copies
// of the cells that the table's sort function receives.
void BM_InsertionSort(benchmark::State& state) {
    const Table table = MakeTable(state.range(0));
    const CBFunctor2wRet<CString, CString, bool> less([](CString a, CString b) { return a.Compare(b) < 0; });
    for (auto _ : state) {
        std::vector<long> index(table.size());
        for (size_t i = 0; i < index.size(); ++i) index[i] = static_cast<long>(i);
        for (size_t i = 0; i < index.size(); ++i) {
            const long held = index[i];
            size_t j = i;
            while (j > 0 && !less(table[static_cast<size_t>(index[j - 1])][0], table[static_cast<size_t>(held)][0])) {
                index[j] = index[j - 1];
                --j;
            }
            index[j] = held;
        }
        benchmark::DoNotOptimize(index.data());
    }
}
BENCHMARK(BM_InsertionSort)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_InsertionSort)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

// Finds whose match is the last row: the whole table is walked.
void BM_FindGE(benchmark::State& state) {
    Table table = MakeTable(state.range(0));
    oxdmStringMemDataSource source(table, {"Name", "Number", "Code"}, {}, "row", false);
    source.SetWindowSize(20);
    source.SetFindValue(2, table.back()[2]);
    for (auto _ : state) {
        benchmark::DoNotOptimize(source.FindGE());
    }
}
BENCHMARK(BM_FindGE)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_FindSubstr(benchmark::State& state) {
    Table table = MakeTable(state.range(0));
    oxdmStringMemDataSource source(table, {"Name", "Number", "Code"}, {}, "row", false);
    source.SetWindowSize(20);
    const std::vector<CString>& last = table.back();
    for (short col = 0; col < 3; ++col) source.SetFindValue(col, last[static_cast<size_t>(col)]);
    const CString prefix = last[2].Left(4);
    for (auto _ : state) {
        benchmark::DoNotOptimize(source.FindSubstr(2, prefix));
    }
}
BENCHMARK(BM_FindSubstr)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

// The record cursor tree against hand-written SQLite on the same record
// files. A program that prints its figures; not run by ctest.
//
//   tree walk   customers, their orders (one-to-many on CUSTNO) and the
//               orders' lines (one-to-many on ORDNO), walked depth first with
//               First(true)/Next(true), against one LEFT JOIN statement that
//               returns the same rows in the same order.
//   NumRows     a root over 1,000,000 customers against SELECT count(*).
//
// Records read are counted at the engine: this program defines sqlite3_step
// (exported, so the library's calls come here too) and counts every row a
// statement returns, and every step. The data are generated here, from a
// fixed seed, straight into the record files.
//
// Usage: cursor_bench [customers] [numrows-records]   (defaults 5000, 1000000)

#include <dlfcn.h>
#include <sqlite3.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include "oxdm/common/store/data_file.h"
#include "oxdm/cursor/oxio_cursor_node.h"
#include "oxdm/query/query.h"
#include "oxdm/record/table_def.h"

namespace {

long g_steps = 0;
long g_rows = 0;

}  // namespace

extern "C" int sqlite3_step(sqlite3_stmt* stmt) {
    using Step = int (*)(sqlite3_stmt*);
    static Step real = reinterpret_cast<Step>(dlsym(RTLD_NEXT, "sqlite3_step"));
    int rc = real(stmt);
    ++g_steps;
    if (rc == SQLITE_ROW) ++g_rows;
    return rc;
}

namespace {

struct Counts {
    long steps, rows;
    double seconds;
};

template <typename Body>
Counts Measure(Body body) {
    long steps = g_steps, rows = g_rows;
    auto start = std::chrono::steady_clock::now();
    body();
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return {g_steps - steps, g_rows - rows, seconds};
}

// A fixed-seed generator, so that every run sees the same data.
struct Random {
    unsigned long long state = 88172645463325252ULL;
    unsigned Next(unsigned n) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return static_cast<unsigned>(state % n);
    }
};

std::unique_ptr<oxioDataFile> OpenRecordFile(const std::string& path) {
    oxioStatus::Status status = oxioStatus::IOError;
    CString error;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec(path.c_str()), true, status, error);
    if (!file) {
        std::fprintf(stderr, "%s\n", error.c_str());
        std::exit(1);
    }
    return file;
}

sqlite3* OpenRaw(const std::string& path) {
    sqlite3* raw = nullptr;
    if (sqlite3_open_v2(path.c_str(), &raw, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK) {
        std::fprintf(stderr, "can't open %s\n", path.c_str());
        std::exit(1);
    }
    sqlite3_exec(raw, "PRAGMA journal_mode=WAL", nullptr, nullptr, nullptr);
    return raw;
}

void Exec(sqlite3* raw, const char* sql, const std::string& a, const std::string& b = "", double c = 0) {
    sqlite3_stmt* stmt = nullptr;
    sqlite3_prepare_v2(raw, sql, -1, &stmt, nullptr);
    sqlite3_bind_text(stmt, 1, a.c_str(), -1, SQLITE_TRANSIENT);
    if (sqlite3_bind_parameter_count(stmt) >= 2) sqlite3_bind_text(stmt, 2, b.c_str(), -1, SQLITE_TRANSIENT);
    if (sqlite3_bind_parameter_count(stmt) >= 3) sqlite3_bind_double(stmt, 3, c);
    sqlite3_step(stmt);
    sqlite3_finalize(stmt);
}

std::string Numbered(char letter, long n) {
    char text[32];
    std::snprintf(text, sizeof text, "%c%07ld", letter, n);
    return text;
}

// Customers with 0 to 4 orders each, orders with 0 to 5 lines each.
void FillSales(sqlite3* raw, long customers) {
    Random random;
    long order = 0;
    sqlite3_exec(raw, "BEGIN", nullptr, nullptr, nullptr);
    for (long c = 0; c < customers; ++c) {
        std::string custno = Numbered('C', c);
        Exec(raw, "INSERT INTO t1(CUSTNO, NAME) VALUES(?, ?)", custno, "Customer " + custno);
        for (unsigned o = random.Next(5); o > 0; --o) {
            std::string ordno = Numbered('O', order++);
            Exec(raw, "INSERT INTO t2(ORDNO, CUSTNO) VALUES(?, ?)", ordno, custno);
            for (unsigned l = random.Next(6); l > 0; --l)
                Exec(raw, "INSERT INTO t3(ORDNO, LINENO, QTY) VALUES(?, ?, ?)", ordno, std::to_string(l), l);
        }
    }
    sqlite3_exec(raw, "COMMIT", nullptr, nullptr, nullptr);
}

void FillCustomers(sqlite3* raw, long customers) {
    sqlite3_exec(raw, "BEGIN", nullptr, nullptr, nullptr);
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(raw, "INSERT INTO t1(CUSTNO, NAME) VALUES(?, 'Customer')", -1, &insert, nullptr);
    for (long c = 0; c < customers; ++c) {
        std::string custno = Numbered('C', c);
        sqlite3_bind_text(insert, 1, custno.c_str(), -1, SQLITE_TRANSIENT);
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    sqlite3_exec(raw, "COMMIT", nullptr, nullptr, nullptr);
}

void Attach(oxdmCursorNode& node, const oxdmTableDef* table, const char* name) {
    node.AddColumn(table->Column(name));
}

void TreeWalk(const std::filesystem::path& dir, long customers) {
    std::string path = (dir / "walk.ord").string();
    std::unique_ptr<oxioDataFile> schema = OpenRecordFile(path);
    sqlite3* raw = OpenRaw(path);
    FillSales(raw, customers);

    oxioFileSpec spec(path.c_str());
    oxdmQuery query("walk");
    oxdmQueryNode* root = query.SetRoot(spec, 1, 0, "cust", 0x0f);
    oxdmQueryNode* orders = root->AddChildNode(spec, 2, "CUSTNO=CUSTNO", 1, "orders", 0x0f);
    orders->AddChildNode(spec, 3, "ORDNO=ORDNO", 0, "lines", 0x0f);
    oxdmOXIOCursorNode tree(*root, nullptr, nullptr);
    Attach(tree, root->Table(), "NAME");
    oxdmCursorNode& orderNode = *tree.OneToManys()[0];
    oxdmCursorNode& lineNode = *tree.OneToManys()[0]->OneToManys()[0];
    Attach(orderNode, orders->Table(), "ORDNO");
    Attach(lineNode, orders->OneToManys()[0]->Table(), "LINENO");
    Attach(lineNode, orders->OneToManys()[0]->Table(), "QTY");

    long treeRows = 0;
    Counts walk = Measure([&] {
        for (bool on = tree.First(true); on; on = tree.Next(true)) ++treeRows;
    });

    long joinRows = 0;
    Counts join = Measure([&] {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(raw,
                           "SELECT c.CUSTNO, c.NAME, o.ORDNO, l.LINENO, l.QTY FROM t1 c "
                           "LEFT JOIN t2 o ON o.CUSTNO = c.CUSTNO LEFT JOIN t3 l ON l.ORDNO = o.ORDNO "
                           "ORDER BY c.CUSTNO, o.ORDNO, l.LINENO",
                           -1, &stmt, nullptr);
        while (sqlite3_step(stmt) == SQLITE_ROW) ++joinRows;
        sqlite3_finalize(stmt);
    });
    sqlite3_close(raw);

    std::printf("tree walk over %ld customers: %ld rows delivered (join: %ld)\n", customers, treeRows, joinRows);
    std::printf("  records read per row:  tree %.2f  join %.2f  ratio %.2f\n", double(walk.rows) / treeRows,
                double(join.rows) / joinRows, double(walk.rows) / join.rows);
    std::printf("  statements stepped per row:  tree %.2f  join %.2f\n", double(walk.steps) / treeRows,
                double(join.steps) / joinRows);
    std::printf("  time:  tree %.3f s  join %.3f s  ratio %.1f\n", walk.seconds, join.seconds,
                walk.seconds / join.seconds);
}

void NumRows(const std::filesystem::path& dir, long customers) {
    std::string path = (dir / "count.ord").string();
    std::unique_ptr<oxioDataFile> schema = OpenRecordFile(path);
    sqlite3* raw = OpenRaw(path);
    FillCustomers(raw, customers);

    oxdmQuery query("count");
    oxdmQueryNode* root = query.SetRoot(oxioFileSpec(path.c_str()), 1, 0, "cust", 0x0f);
    oxdmOXIOCursorNode node(*root, nullptr, nullptr);
    Attach(node, root->Table(), "NAME");
    long counted = 0;
    Counts cursor = Measure([&] { counted = node.NumRows(false); });
    long selected = 0;
    Counts sql = Measure([&] {
        sqlite3_stmt* stmt = nullptr;
        sqlite3_prepare_v2(raw, "SELECT count(*) FROM t1", -1, &stmt, nullptr);
        if (sqlite3_step(stmt) == SQLITE_ROW) selected = sqlite3_column_int64(stmt, 0);
        sqlite3_finalize(stmt);
    });
    sqlite3_close(raw);
    std::printf("NumRows over %ld records: %ld (count(*): %ld)\n", customers, counted, selected);
    std::printf("  time:  NumRows %.3f s  count(*) %.4f s  ratio %.0f\n", cursor.seconds, sql.seconds,
                cursor.seconds / sql.seconds);
    std::printf("  records read:  NumRows %ld  count(*) %ld\n", cursor.rows, sql.rows);
}

}  // namespace

int main(int argc, char** argv) {
    long customers = argc > 1 ? std::atol(argv[1]) : 5000;
    long records = argc > 2 ? std::atol(argv[2]) : 1000000;
    std::filesystem::path dir = std::filesystem::temp_directory_path() / ("oxdm-cursor-bench-" + std::to_string(getpid()));
    std::filesystem::create_directories(dir);
    ::setenv("OXDM_DICT_PATH", OXDM_EXAMPLES_DIR, 1);
    TreeWalk(dir, customers);
    NumRows(dir, records);
    std::filesystem::remove_all(dir);
    return 0;
}

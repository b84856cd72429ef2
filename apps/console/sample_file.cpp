#include "sample_file.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

#include "oxdm/common/store/data_file.h"
#include "oxdm/common/store/file_spec.h"
#include "sample_data.h"

namespace fs = std::filesystem;

namespace {

// The record file and the journal files that go with it.
void RemoveRecordFile(const std::string& path) {
    std::error_code ec;
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) fs::remove(path + suffix, ec);
}

}  // namespace

std::string PrepareSampleFile(const std::string& dataDir, bool fresh, std::string& error) {
    std::error_code ec;
    fs::create_directories(dataDir, ec);
    if (ec) {
        error = "Can't make the data folder " + dataDir + ": " + ec.message();
        return {};
    }
    const std::string path = (fs::path(dataDir) / "sales.ord").string();
    if (fresh) RemoveRecordFile(path);
    if (fs::exists(path)) return path;

    oxioStatus::Status status = oxioStatus::Success;
    CString openError;
    std::unique_ptr<oxioDataFile> file = oxioDataFile::Open(oxioFileSpec(path.c_str()), true, status, openError);
    if (!file) {
        error = openError.str();
        return {};
    }
    CString sampleError;
    if (oxGenerateSample(*file, oxSampleCounts{kConsoleCustomers, kConsoleOrders, kConsoleLines}, sampleError) !=
        oxioStatus::Success) {
        error = sampleError.str();
        // A half-written sample would be taken for a whole one next time.
        file.reset();
        RemoveRecordFile(path);
        return {};
    }
    std::printf("generated %lld customers, %lld orders and %lld lines in %s\n", kConsoleCustomers, kConsoleOrders,
                kConsoleLines, path.c_str());
    return path;
}

#pragma once
// Shared set-up of the record and query tests: the sample dictionary "ord"
// of examples/ on the search path, behind a scratch directory where a test
// may write dictionaries of its own; and the headless presenter, cleared.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

#include "oxdm/common/shell/presenter.h"

class RecordTestBase : public ::testing::Test {
protected:
    void SetUp() override {
        scratch_ = std::filesystem::temp_directory_path() /
                   ("oxdm-record-" + std::to_string(::getpid()) + "-" +
                    ::testing::UnitTest::GetInstance()->current_test_info()->name());
        std::filesystem::remove_all(scratch_);
        std::filesystem::create_directories(scratch_);
        const std::string path = scratch_.string() + ":" + OXDM_EXAMPLES_DIR;
        ::setenv("OXDM_DICT_PATH", path.c_str(), 1);
        oxdmSetPresenter(nullptr);
        oxdmDefaultPresenter().Clear();
    }
    void TearDown() override {
        oxdmDefaultPresenter().Clear();
        std::filesystem::remove_all(scratch_);
    }

    // Writes <scratch>/<name>.toml.
    void WriteDict(const std::string& name, const std::string& text) {
        std::ofstream(scratch_ / (name + ".toml")) << text;
    }
    void RemoveDict(const std::string& name) { std::filesystem::remove(scratch_ / (name + ".toml")); }

    const std::filesystem::path& Scratch() const { return scratch_; }
    static const std::vector<oxdmShownBox>& Boxes() { return oxdmDefaultPresenter().Boxes(); }

private:
    std::filesystem::path scratch_;
};

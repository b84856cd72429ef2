#pragma once
// Helpers of the field-code tests: the sample dictionary "ord" (field code 1,
// "Item number", AAAA-999999) and a free-form code 9 ("Account", sections of
// 6 digits then '.' and 2 digits only, mask 999999.99), both loaded into the
// process-wide field codes.

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "oxdm/common/dictionary/dictionary.h"
#include "oxdm/common/dictionary/dictionary_compiler.h"
#include "oxdm/common/dictionary/dictionary_loader.h"
#include "oxdm/common/dictionary/field_codes.h"
#include "oxdm/common/values/io_status.h"

namespace fctest {

inline std::shared_ptr<const oxDictionary> LoadOrd() {
    std::shared_ptr<const oxDictionary> dict;
    CString error;
    EXPECT_EQ(oxDictionaryLoader::Load(OXDM_EXAMPLES_DIR "/ord.toml", dict, error), oxioStatus::IO_VALID)
        << error.c_str();
    return dict;
}

inline void LoadAccountCode() {
    const char* source = R"(
[[code]]
number = 9
description = "Account"
mask = "999999.99"
  [[code.section]]
  width = 6
  punctuation = "."
  [[code.section]]
  width = 2
  digits_only = true

[[table]]
description = "T"
  [[table.field]]
  name = "A"
  type = "boolean"
)";
    const oxDictCompileResult result = oxDictionaryCompiler::CompileText("acct", source, "acct.toml");
    ASSERT_TRUE(result.Ok()) << result.Message().c_str();
    oxFieldCodes::Register(*result.dictionary);
}

// Loads both codes before each test.
class FieldCodeTest : public ::testing::Test {
protected:
    void SetUp() override {
        ord_ = LoadOrd();
        LoadAccountCode();
    }
    std::shared_ptr<const oxDictionary> ord_;
};

}  // namespace fctest

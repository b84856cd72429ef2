// x_abort ends the process and says why.
#include <gtest/gtest.h>

#include "oxdm/base/abort.h"

namespace {

TEST(AbortDeathTest, MemoryFailureEndsTheProcessWithItsMessage) {
    EXPECT_DEATH(x_abort(0, "Memory allocation failed", nullptr, 0), "Memory allocation failed");
}

TEST(AbortDeathTest, SourceAndLineAreNamedWhenGiven) {
    EXPECT_DEATH(x_abort(3, "cannot go on", "cursor.cpp", 120), "cannot go on \\(cursor.cpp:120\\)");
}

}  // namespace

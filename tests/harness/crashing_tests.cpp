// A test program for the check of the count. Its tests pass, fail, are disabled, are skipped and, on request, crash.

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(Crashing, Passes) {}

TEST(Crashing, Fails) { FAIL(); }

TEST(Crashing, DISABLED_Passes) {}

// Skipped on purpose: check_counting.sh requires that a skipped test counts as failed.
TEST(Crashing, IsSkipped) { GTEST_SKIP(); }

TEST(Crashing, MayCrash) {
  if (std::getenv("SCRIVALEN_CRASH") != nullptr) {
    std::abort();
  }
}

TEST(Crashing, PassesAfterwards) {}

}  // namespace

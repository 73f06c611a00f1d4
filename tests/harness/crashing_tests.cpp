// A test program to count the tests of: they pass, fail, are disabled, are skipped and, if asked to, crash.

#include <gtest/gtest.h>

#include <cstdlib>

namespace {

TEST(Crashing, Passes) {}

TEST(Crashing, Fails) { FAIL(); }

TEST(Crashing, DISABLED_Passes) {}

// Not a test left out: the count has to treat a skipped one as failed, which check_counting.sh asks for.
TEST(Crashing, IsSkipped) { GTEST_SKIP(); }

TEST(Crashing, MayCrash) {
  if (std::getenv("SCRIVALEN_CRASH") != nullptr) {
    std::abort();
  }
}

TEST(Crashing, PassesAfterwards) {}

}  // namespace

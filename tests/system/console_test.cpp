#include "system/console.h"
#include "system/process/interrupt.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace scrivalen;

TEST(Environment, ReturnsAVariable) { EXPECT_EQ(environmentVariable("TZ"), "UTC"); }

TEST(Environment, ReturnsNothingForAMissingVariable) {
  EXPECT_EQ(environmentVariable("SCRIVALEN_NO_SUCH_VARIABLE"), std::nullopt);
}

TEST(Interrupts, AreNotReportedWithoutARequest) {
  rememberInterrupts();
  EXPECT_FALSE(wasInterrupted());
}

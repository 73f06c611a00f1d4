#include "system/interrupt.h"

#include <gtest/gtest.h>

#include <csignal>

using namespace scrivalen::platform;

TEST(Interrupts, AreRememberedOnce) {
  rememberInterrupts();
  std::raise(SIGTERM);
  EXPECT_TRUE(wasInterrupted());
}

TEST(Interrupts, EndTheProgramAtTheSecondRequest) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGINT);
        std::raise(SIGINT);
      },
      testing::KilledBySignal(SIGINT), "");
}

#include "system/process/interrupt.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

#include <unistd.h>

using namespace scrivalen;

namespace {

[[noreturn]] void endWith(bool isAsExpected) { std::_Exit(isAsExpected ? 0 : 1); }

void raiseEach() {
  for (const int signal : {SIGTERM, SIGINT, SIGTERM, SIGHUP, SIGTERM}) {
    std::raise(signal);
  }
}

// @return whether a write to a pipe without a reader fails with EPIPE
bool isLostReaderNoticed() {
  int ends[2] = {};
  if (::pipe(ends) != 0) {
    return false;
  }
  ::close(ends[0]);
  return ::write(ends[1], "x", 1) < 0 && errno == EPIPE;
}

}  // namespace

TEST(Interrupts, AreRememberedHoweverOftenTheyCome) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        const bool wasNone = !wasInterrupted();
        raiseEach();
        endWith(wasNone && wasInterrupted());
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupts, EndTheProgramWithTheFirstSignal) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        raiseEach();
        endIfInterrupted();
        endWith(true);
      },
      testing::KilledBySignal(SIGTERM), "");
}

TEST(Interrupts, DoNotEndTheProgramWhenNoneCame) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        endIfInterrupted();
        endWith(!wasInterrupted());
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupts, StayIgnoredWhenTheyWereIgnored) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    EXPECT_EXIT(
        {
          std::signal(signal, SIG_IGN);
          rememberInterrupts();
          std::raise(signal);
          endWith(!wasInterrupted());
        },
        testing::ExitedWithCode(0), "")
        << signal;
  }
}

TEST(Interrupts, EndAWaitThatBeginsAfterThem) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGTERM);
        ::pause();
        ::pause();
        endIfInterrupted();
      },
      testing::KilledBySignal(SIGTERM), "");
}

TEST(Interrupts, LetTheWriteReportALostReader) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        endWith(isLostReaderNoticed());
      },
      testing::ExitedWithCode(0), "");
}

#include "system/process/write_signals.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>

#include <unistd.h>

using scrivalen::WriteSignalsBlocked;

namespace {

// A pipe whose reader is gone.
class LostReader {
 public:
  LostReader() {
    int ends[2] = {-1, -1};
    EXPECT_EQ(pipe(ends), 0);
    close(ends[0]);
    end_ = ends[1];
  }
  LostReader(const LostReader&) = delete;
  LostReader& operator=(const LostReader&) = delete;
  ~LostReader() { close(end_); }

  bool isWritten() const { return write(end_, "x", 1) == 1; }

 private:
  int end_ = -1;
};

bool isPending(int signal) {
  sigset_t pending;
  sigpending(&pending);
  return sigismember(&pending, signal) == 1;
}

}  // namespace

TEST(WriteSignals, DoNotEndTheProcessWhileTheyAreBlocked) {
  const LostReader pipe;
  {
    const WriteSignalsBlocked blocked;
    EXPECT_FALSE(pipe.isWritten());
    EXPECT_EQ(errno, EPIPE);
    EXPECT_TRUE(isPending(SIGPIPE));
  }
  EXPECT_FALSE(isPending(SIGPIPE));
}

TEST(WriteSignals, AreLeftToAHostThatBlocksThem) {
  const LostReader pipe;
  sigset_t own;
  sigset_t before;
  sigemptyset(&own);
  sigaddset(&own, SIGPIPE);
  pthread_sigmask(SIG_BLOCK, &own, &before);
  {
    const WriteSignalsBlocked blocked;
    EXPECT_FALSE(pipe.isWritten());
  }
  EXPECT_TRUE(isPending(SIGPIPE));
  int signal = 0;
  sigwait(&own, &signal);
  EXPECT_EQ(signal, SIGPIPE);
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(WriteSignals, KeepTheErrorOfTheWrite) {
  const LostReader pipe;
  errno = 0;
  {
    const WriteSignalsBlocked blocked;
    EXPECT_FALSE(pipe.isWritten());
  }
  EXPECT_EQ(errno, EPIPE);
}

#include "document/stream_error.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace scrivalen::document;

// The system's own texts differ, and follow the locale.
TEST(StreamError, HasTheSameTextOnEverySystem) {
  EXPECT_EQ(streamErrorText(ENOSPC), "No space left on device");
  EXPECT_EQ(streamErrorText(EIO), "Input/output error");
  EXPECT_EQ(streamErrorText(ECONNRESET), "Connection reset by peer");
  EXPECT_EQ(streamErrorText(EWOULDBLOCK), "Resource temporarily unavailable");
}

TEST(StreamError, GivesTheNumberOfAnotherError) {
  EXPECT_EQ(streamErrorText(-1), "error -1");
  EXPECT_EQ(streamErrorText(123456), "error 123456");
}

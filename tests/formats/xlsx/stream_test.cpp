#include "formats/xlsx/stream.h"

#include <gtest/gtest.h>

#include <memory>

using namespace scrivalen;

namespace {

struct CloseStream {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

Stream temporaryStream() { return Stream(std::tmpfile()); }

}  // namespace

TEST(StreamWatch, SeesAStreamUntilItIsClosed) {
  Stream stream = temporaryStream();
  ASSERT_TRUE(stream);
  const StreamWatch watch(stream.get());
  EXPECT_TRUE(watch.isOpen());
  stream.reset();
  EXPECT_FALSE(watch.isOpen());
}

TEST(StreamWatch, TakesNoOtherStreamForIt) {
  Stream stream = temporaryStream();
  ASSERT_TRUE(stream);
  const StreamWatch watch(stream.get());
  stream.reset();
  for (int i = 0; i < 20; ++i) {
    const Stream other = temporaryStream();
    ASSERT_TRUE(other);
    EXPECT_FALSE(watch.isOpen());
  }
}

TEST(StreamWatch, LeavesTheStreamOpen) {
  const Stream stream = temporaryStream();
  ASSERT_TRUE(stream);
  {
    const StreamWatch watch(stream.get());
    EXPECT_TRUE(watch.isOpen());
  }
  EXPECT_EQ(std::fputs("abc", stream.get()) < 0, false);
  EXPECT_EQ(std::fflush(stream.get()), 0);
  EXPECT_EQ(streamPosition(stream.get()), 3u);
}

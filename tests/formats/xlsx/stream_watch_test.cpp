#include "formats/xlsx/stream_watch.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

using namespace scrivalen;

namespace {

struct CloseStream {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};
using Stream = std::unique_ptr<std::FILE, CloseStream>;

Stream temporaryStream(const char* content) {
  Stream stream(std::tmpfile());
  if (stream) {
    EXPECT_GE(std::fputs(content, stream.get()), 0);
    EXPECT_EQ(std::fflush(stream.get()), 0);
  }
  return stream;
}

// Reads the stream as its recipient does.
std::size_t readFromBeginning(std::FILE* stream) {
  char bytes[16];
  std::rewind(stream);
  std::size_t size = 0;
  while (const std::size_t more = std::fread(bytes, 1, sizeof bytes, stream)) {
    size += more;
  }
  return size;
}

}  // namespace

TEST(StreamWatch, SeesAStreamUntilItIsReadAndClosed) {
  for (const char* content : {"", "abc", "more than the reader takes in one piece"}) {
    Stream stream = temporaryStream(content);
    ASSERT_TRUE(stream);
    const StreamWatch watch(stream.get());
    EXPECT_TRUE(watch.isOpen());
    EXPECT_EQ(readFromBeginning(stream.get()), std::string_view(content).size());
    stream.reset();
    EXPECT_FALSE(watch.isOpen()) << content;
  }
}

TEST(StreamWatch, DoesNotMistakeAnotherStreamForIt) {
  Stream stream = temporaryStream("abc");
  ASSERT_TRUE(stream);
  const StreamWatch watch(stream.get());
  readFromBeginning(stream.get());
  stream.reset();
  for (int i = 0; i < 20; ++i) {
    const Stream other = temporaryStream("abc");
    ASSERT_TRUE(other);
    EXPECT_FALSE(watch.isOpen());
  }
}

TEST(StreamWatch, LeavesTheStreamOpen) {
  const Stream stream = temporaryStream("abc");
  ASSERT_TRUE(stream);
  {
    const StreamWatch watch(stream.get());
    EXPECT_TRUE(watch.isOpen());
  }
  EXPECT_EQ(readFromBeginning(stream.get()), 3u);
  EXPECT_EQ(streamPosition(stream.get()), 3u);
}

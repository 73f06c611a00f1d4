#include "api/api_support.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace scrivalen::test;

namespace {

constexpr const char* kFull = "cannot write '/dev/full': No space left on device";

// What a pipe's reader gets.
std::string readToEnd(const std::string& pipe) {
  const int end = ::open(pipe.c_str(), O_RDONLY);
  std::string read;
  char bytes[4096];
  for (ssize_t size = 0; (size = ::read(end, bytes, sizeof bytes)) > 0;) {
    read.append(bytes, static_cast<std::size_t>(size));
  }
  ::close(end);
  return read;
}

}  // namespace

TEST(DocumentDevices, TakeEveryFormat) {
  for (const std::string& format : formats()) {
    const Handle document(scrivalen_new());
    ASSERT_EQ(scrivalen_add_file(document.get(), "/dev/null", format.c_str()), SCRIVALEN_OK);
    EXPECT_EQ(writeContent(document.get()), SCRIVALEN_OK) << format;
    EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OK) << format << scrivalen_error(document.get());
  }
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(DocumentDevices, ThatAreFullFailTheirOutputAlone) {
  for (const std::string& format : formats()) {
    SCOPED_TRACE(format);
    Written document;
    ASSERT_EQ(scrivalen_add_file(document, "/dev/full", format.c_str()), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_paragraph(document, "text", kNul), SCRIVALEN_OK);
    EXPECT_EQ(document.closed(), "text\n");
    EXPECT_EQ(document.result, SCRIVALEN_FILE_ERROR);
    EXPECT_EQ(document.error(), kFull);
    EXPECT_EQ(scrivalen_output_result(document, 0), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_output_result(document, 1), SCRIVALEN_FILE_ERROR);
    EXPECT_STREQ(scrivalen_output_error(document, 1), kFull);
  }
}

TEST(DocumentDevices, ThatAreFullFailTheContentOnceItIsWritten) {
  const Handle document(scrivalen_new());
  ASSERT_EQ(scrivalen_add_file(document.get(), "/dev/full", "text"), SCRIVALEN_OK);
  ASSERT_EQ(scrivalen_open(document.get()), SCRIVALEN_OK);
  const std::string longText(1000, 'x');
  int taken = 0;
  while (taken < 1000 && scrivalen_paragraph(document.get(), longText.data(), longText.size()) == SCRIVALEN_OK) {
    ++taken;
  }
  EXPECT_LT(taken, 140) << "a block of 64 KiB, and its overflow";
  EXPECT_STREQ(scrivalen_error(document.get()), kFull);
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_FILE_ERROR);
}

TEST(DocumentDevices, OfAPipeIsReadWhileTheDocumentIsWritten) {
  const TemporaryFolder folder;
  for (const std::string& format : formats()) {
    SCOPED_TRACE(format);
    Written expected(format.c_str());
    writeContent(expected);
    const std::string pipe = scrivalen::narrowPath(folder / L"pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = readToEnd(pipe); });
    const Handle document(scrivalen_new());
    scrivalen_add_file(document.get(), pipe.c_str(), format.c_str());
    scrivalen_set(document.get(), "clock", "2026-01-31 23:59:59");
    EXPECT_EQ(writeContent(document.get()), SCRIVALEN_OK);
    EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OK) << scrivalen_error(document.get());
    reader.join();
    EXPECT_EQ(read, expected.closed());
    ::unlink(pipe.c_str());
  }
}

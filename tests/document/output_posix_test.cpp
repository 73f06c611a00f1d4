#include "document/document.h"
#include "support/documents/recording_writer.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace scrivalen;
using namespace scrivalen::document;
using namespace scrivalen::test;

TEST(DocumentOutput, FailsWhenTheReaderOfItsPipeIsGone) {
  const TemporaryFolder folder;
  const std::string pipe = narrowPath(folder / L"pipe.txt");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::thread reader([&] { close(open(pipe.c_str(), O_RDONLY)); });
  Document document;
  document.addFile(kRecordingFormat, pipe);
  document.addFile(kOtherRecordingFormat, narrowPath(folder / L"b.html"));
  EXPECT_EQ(document.open(), Status::Ok);
  reader.join();
  for (int i = 0; i < 10000; ++i) {
    document.paragraph("a paragraph of some length");
  }
  EXPECT_EQ(document.close(), Status::FileError);
  EXPECT_EQ(document.output(0)->error(), "cannot write '" + pipe + "': Broken pipe");
  EXPECT_EQ(document.output(1)->result(), Status::Ok);
  EXPECT_TRUE(exists(folder / L"b.html"));
}

TEST(DocumentOutput, WritesToAPipeDirectly) {
  const TemporaryFolder folder;
  const std::string pipe = narrowPath(folder / L"pipe.txt");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  std::string read;
  std::thread reader([&] {
    const int end = open(pipe.c_str(), O_RDONLY);
    char bytes[4096];
    for (ssize_t size = 0; (size = ::read(end, bytes, sizeof bytes)) > 0;) {
      read.append(bytes, static_cast<std::size_t>(size));
    }
    close(end);
  });
  Document document;
  document.addFile(kRecordingFormat, pipe);
  document.paragraph("new");
  EXPECT_EQ(document.close(), Status::Ok);
  reader.join();
  EXPECT_EQ(read, "begin\nparagraph\ntext 'new'\nend paragraph\nfinish\n");
}

#include "formats/pdf/objects/sample.h"
#include "support/bytes.h"
#include "support/captured_log.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

using namespace PDFStuffer;
using namespace scrivalen::test;

namespace {

int descriptor(scrivalen::NativeFile file) { return static_cast<int>(reinterpret_cast<std::intptr_t>(file)); }

struct Pipe {
  Pipe() { EXPECT_EQ(::pipe(ends.data()), 0); }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() { closeReader(), ::close(ends[1]); }

  scrivalen::NativeFile writer() const { return reinterpret_cast<scrivalen::NativeFile>(std::intptr_t{ends[1]}); }
  void closeReader() {
    if (ends[0] >= 0) {
      ::close(ends[0]);
    }
    ends[0] = -1;
  }

  std::array<int, 2> ends{-1, -1};
};

}  // namespace

TEST(PdfFileOnAFullDisk, ContinuesAndReportsWhyBytesAreLost) {
  scrivalen::File full = scrivalen::openExclusive(L"/dev/full");
  ASSERT_NE(full, nullptr);
  {
    CPDFFile pdf(full, Form::Classic);
    fillSample(pdf);
    EXPECT_TRUE(pdf.Save());
    EXPECT_NE(pdf.writeError(), L"");
    EXPECT_EQ(pdf.writeError(), L"No space left on device");
    EXPECT_NE(pdf.objects.back()->fileOffset, 0u);
  }
  EXPECT_TRUE(full.close());
}

TEST(PdfFileOnAFullDisk, ReportsItWhenItOwnsTheHandle) {
  CPDFFile pdf(scrivalen::openExclusive(L"/dev/full").release(), Form::Classic);
  pdf.callerOwnsHandle = false;
  EXPECT_TRUE(pdf.Save());
  EXPECT_NE(pdf.writeError(), L"");
  EXPECT_EQ(pdf.handle, nullptr);
}

TEST(PdfFileIntoAPipe, HasTheSameBytesAsOnDisk) {
  const FixedClock clock(0);
  FileOnDisk file;
  fillSample(file.pdf);
  const Pipe pipe;
  CPDFFile pdf(pipe.writer(), Form::Classic);
  fillSample(pdf);
  EXPECT_TRUE(pdf.Save());
  EXPECT_EQ(pdf.writeError(), L"");
  std::array<char, 8192> bytes;
  const ssize_t size = ::read(pipe.ends[0], bytes.data(), bytes.size());
  ASSERT_GT(size, 0);
  EXPECT_TRUE(areSameBytes(file.saved(), std::string_view(bytes.data(), static_cast<std::size_t>(size))));
}

TEST(PdfFileIntoAPipe, ReportsThatThePipeHasNoReader) {
  const auto old = std::signal(SIGPIPE, SIG_IGN);
  Pipe pipe;
  pipe.closeReader();
  CPDFFile pdf(pipe.writer(), Form::Classic);
  EXPECT_TRUE(pdf.Save());
  EXPECT_NE(pdf.writeError(), L"");
  EXPECT_EQ(pdf.writeError(), L"Broken pipe");
  std::signal(SIGPIPE, old);
}

TEST(PdfFileBeyondTenDigits, ReportsThatItIsTooLarge) {
  FileOnDisk file;
  EXPECT_EQ(::lseek(descriptor(file.handle), 9999999900, SEEK_SET), 9999999900);
  fillSample(file.pdf);
  EXPECT_TRUE(file.pdf.Save());
  EXPECT_NE(file.pdf.writeError(), L"");
  EXPECT_EQ(file.pdf.writeError(), L"A PDF cannot be larger than 10 gigabytes");
}

TEST(PdfFileOfTenDigits, IsComplete) {
  FileOnDisk file;
  EXPECT_EQ(::lseek(descriptor(file.handle), 9999990000, SEEK_SET), 9999990000);
  fillSample(file.pdf);
  EXPECT_TRUE(file.pdf.Save());
  EXPECT_EQ(file.pdf.writeError(), L"");
  EXPECT_EQ(file.pdf.writeError(), L"");
  EXPECT_EQ(file.pdf.catalog->fileOffset, 9999990015u);
}

TEST(PdfFileThatOwnsItsHandle, ClosesNoOtherDescriptor) {
  const TemporaryFolder folder;
  const int input = ::dup(STDIN_FILENO);
  {
    CPDFFile pdf(scrivalen::openExclusive(folder / L"a.pdf").release(), Form::Classic);
    pdf.callerOwnsHandle = false;
    EXPECT_TRUE(pdf.Save());
  }
  EXPECT_NE(::fcntl(STDIN_FILENO, F_GETFD), -1);
  ::dup2(input, STDIN_FILENO);
  ::close(input);
}

#include "formats/xlsx/excel_writer.h"

#include "support/captured_log.h"
#include "support/documents/workbook.h"
#include "support/faults/file_size_limit.h"
#include "support/faults/small_disk.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

using namespace scrivalen::test;

namespace {

using Lines = std::vector<std::wstring>;
using std::filesystem::perms;

constexpr int kRows = 2000;

void writeCell(ExcelWriter& writer, const std::wstring& text) {
  writer.Row(true);
  writer.SetCellValue(L"String", text.c_str(), false);
  writer.Row(false);
}

// Rows that compress to next to nothing.
void writeEqualRows(ExcelWriter& writer) {
  for (int i = 0; i < kRows; ++i) {
    writeCell(writer, L"equal");
  }
}

// Rows that hardly compress. Not all of them stay in memory until the end.
void writeDifferentRows(ExcelWriter& writer) {
  unsigned value = 1;
  for (int i = 0; i < kRows; ++i) {
    std::wstring text;
    for (int j = 0; j < 60; ++j) {
      value = value * 1103515245 + 12345;
      text += static_cast<wchar_t>(L'0' + (value >> 16) % 64);
    }
    writeCell(writer, text);
  }
}

std::size_t openDescriptors() {
  const std::filesystem::directory_iterator entries("/proc/self/fd");
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

std::string narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }

Lines filesIn(const std::wstring& folder) { return scrivalen::filesEndingWith(folder, L""); }

// Writes a spreadsheet to disks of increasing size, page by page, and returns what went wrong. The file must be whole,
// or refused with the reason, which leaves the earlier content in place.
std::string problemsOnDisks(std::size_t firstKib, std::size_t lastKib, void (*write)(ExcelWriter& writer),
                            std::size_t rows, bool hasEarlier) {
  return onSmallDisk([=](const SmallDisk& disk) {
    std::string problems;
    int whole = 0;
    int refused = 0;
    for (std::size_t kib = firstKib; kib <= lastKib; kib += 4) {
      const std::string prefix = std::to_string(kib) + " KiB: ";
      if (!disk.resize(kib)) {
        return prefix + "no disk";
      }
      if (hasEarlier) {
        writeBytes(disk / L"a.xlsx", "earlier");
      }
      const CapturedLog log;
      const std::size_t descriptors = openDescriptors();
      bool isWhole = false;
      {
        ExcelWriter writer;
        isWhole = writer.Begin((disk / L"a.xlsx").c_str(), nullptr);
        if (isWhole) {
          write(writer);
          isWhole = writer.End();
          if (!isWhole &&
              (log.lines() != Lines{writer.Error()} || !writer.Error().ends_with(L" No space left on device"))) {
            problems += prefix + "logged is not what went wrong: " + narrow(writer.Error()) + '\n';
          }
        }
      }
      ++(isWhole ? whole : refused);
      if (openDescriptors() != descriptors) {
        problems += prefix + "files are still open\n";
      }
      if (filesIn(disk.folder()) != (isWhole || hasEarlier ? Lines{L"a.xlsx"} : Lines())) {
        problems += prefix + "files are left\n";
      }
      if (isWhole) {
        const std::string cells = readCells(disk / L"a.xlsx");
        if (static_cast<std::size_t>(std::count(cells.begin(), cells.end(), '\n')) != rows) {
          problems += prefix + "rows are missing\n";
        }
      } else if (hasEarlier && bytesOf(disk / L"a.xlsx") != "earlier") {
        problems += prefix + "the earlier file is lost\n";
      }
    }
    if (whole == 0 || refused == 0) {
      problems += "the sizes are not those between too little and enough\n";
    }
    return problems;
  });
}

}  // namespace

TEST(ExcelWriterOnAFullDisk, LogsTheReasonAtTheRowThatDoesNotFit) {
  EXPECT_EQ(onSmallDisk([](const SmallDisk& disk) -> std::string {
              if (!disk.resize(32)) {
                return "no disk";
              }
              const CapturedLog log;
              const std::wstring expected =
                  L"File write error for '" + (disk / L"a.xlsx") + L"'. No space left on device";
              ExcelWriter writer;
              const bool isBegun = writer.Begin((disk / L"a.xlsx").c_str(), nullptr);
              writeDifferentRows(writer);
              writeDifferentRows(writer);
              const bool isLoggedBeforeEnd = log.lines() == Lines{expected};
              const bool isWhole = writer.End();
              return std::string(isBegun ? "begun" : "not begun") + (isLoggedBeforeEnd ? ", logged" : ", not logged") +
                     (isWhole ? ", whole" : ", not whole") + (writer.Error() == expected ? ", with the reason" : "") +
                     (log.lines().size() == 1 ? ", in one line, " : ", in more lines, ") +
                     std::to_string(filesIn(disk.folder()).size()) + " files left";
            }),
            "begun, logged, not whole, with the reason, in one line, 0 files left");
}

TEST(ExcelWriterOnAFullDisk, LeavesACompleteWorkbookOrNone) {
  EXPECT_EQ(problemsOnDisks(4, 160, &writeDifferentRows, kRows, false), "");
}

TEST(ExcelWriterOnAFullDisk, LeavesACompleteWorkbookOrTheEarlierFile) {
  EXPECT_EQ(problemsOnDisks(4, 160, &writeDifferentRows, kRows, true), "");
}

TEST(ExcelWriterOnAFullDisk, DetectsItWithRowsThatCompressWell) {
  EXPECT_EQ(problemsOnDisks(4, 32, &writeEqualRows, kRows, false), "");
}

TEST(ExcelWriterWhoseFilesMayNotGrow, LeavesNoneWhateverIsMissing) {
  const FixedClock clock(1730815620);
  const CapturedLog log;
  const TemporaryFolder folder;
  ExcelWriter whole;
  ASSERT_TRUE(whole.Begin((folder / L"a.xlsx").c_str(), nullptr));
  writeCell(whole, L"one");
  ASSERT_TRUE(whole.End());
  const std::size_t size = bytesOf(folder / L"a.xlsx").size();
  for (std::size_t missing = 1; missing <= size; missing += 50) {
    const FileSizeLimit limit(size - missing);
    ExcelWriter writer;
    ASSERT_TRUE(writer.Begin((folder / L"b.xlsx").c_str(), nullptr));
    writeCell(writer, L"one");
    EXPECT_FALSE(writer.End());
    EXPECT_EQ(writer.Error(), L"File write error for '" + (folder / L"b.xlsx") + L"'. File too large") << missing;
    EXPECT_EQ(filesIn(folder.path()), Lines{L"a.xlsx"});
  }
}

// The last rows stay in memory until End.
TEST(ExcelWriterWhoseFilesMayNotGrow, ReportsThatTheLastRowsDoNotFit) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const FileSizeLimit limit(70000);
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  writeDifferentRows(writer);
  EXPECT_TRUE(log.lines().empty());
  EXPECT_FALSE(writer.End());
  EXPECT_EQ(writer.Error(), L"File write error for '" + (folder / L"a.xlsx") + L"'. File too large");
  EXPECT_EQ(log.lines(), Lines{writer.Error()});
}

TEST(ExcelWriterWhoseFilesMayNotGrow, ReportsTheReason) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const FileSizeLimit limit(50000);
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  writeDifferentRows(writer);
  EXPECT_FALSE(writer.End());
  EXPECT_EQ(writer.Error(), L"File write error for '" + (folder / L"a.xlsx") + L"'. File too large");
  EXPECT_EQ(log.lines(), Lines{writer.Error()});
  EXPECT_EQ(filesIn(folder.path()), Lines());
}

// A host may have closed them, and its messages must not end up in the workbook.
TEST(ExcelWriter, DoesNotUseTheDescriptorsOfTheStandardStreams) {
  const TemporaryFolder folder;
  const int errors = ::dup(STDERR_FILENO);
  ExcelWriter writer;
  ::close(STDERR_FILENO);
  const bool isBegun = writer.Begin((folder / L"a.xlsx").c_str(), nullptr);
  writeCell(writer, L"a");
  const bool isFree = ::write(STDERR_FILENO, "host & message", 14) < 0;
  const bool isWhole = writer.End();
  const bool isStillFree = ::fcntl(STDERR_FILENO, F_GETFD) < 0;
  ::dup2(errors, STDERR_FILENO);
  ::close(errors);
  EXPECT_TRUE(isBegun && isFree && isWhole && isStillFree);
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\n");
}

TEST(ExcelWriter, DoesNotDisturbTheHostsRandomNumbers) {
  const TemporaryFolder folder;
  std::srand(5);
  const std::vector<int> expected = {std::rand(), std::rand()};
  std::srand(5);
  EXPECT_EQ(std::rand(), expected[0]);
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  writeCell(writer, L"a");
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(std::rand(), expected[1]);
}

TEST(ExcelWriterOnAFullDisk, PrintsNothing) {
  testing::internal::CaptureStderr();
  const std::string problems = onSmallDisk([](const SmallDisk& disk) -> std::string {
    if (!disk.resize(8)) {
      return "no disk";
    }
    const CapturedLog log;
    ExcelWriter writer;
    writer.Begin((disk / L"a.xlsx").c_str(), nullptr);
    writeDifferentRows(writer);
    return writer.End() ? "whole" : "";
  });
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(problems, "");
}

TEST(ExcelWriterTarget, MayBeALink) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  writeBytes(elsewhere / L"real.xlsx", "earlier");
  const std::filesystem::path link = asPath(folder / L"link.xlsx");
  std::filesystem::create_symlink(asPath(elsewhere / L"real.xlsx"), link);
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"link.xlsx").c_str(), nullptr));
  writeCell(writer, L"a");
  EXPECT_EQ(filesIn(folder.path()).size(), 1u);
  EXPECT_TRUE(writer.End());
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(readCells(elsewhere / L"real.xlsx"), "A1 \"a\"\n");
  EXPECT_EQ(filesIn(elsewhere.path()), Lines{L"real.xlsx"});
}

TEST(ExcelWriterTarget, KeepsItsPermissions) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.xlsx", "secret");
  const std::filesystem::path path = asPath(folder / L"a.xlsx");
  std::filesystem::permissions(path, perms::owner_read | perms::owner_write);
  ExcelWriter writer;
  ASSERT_TRUE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(std::filesystem::status(path).permissions(), perms::owner_read | perms::owner_write);
}

TEST(ExcelWriterTarget, IsKeptWhenAnotherProgramHasWrittenIt) {
  const TemporaryFolder folder;
  {
    ExcelWriter abandoned;
    ASSERT_TRUE(abandoned.Begin((folder / L"a.xlsx").c_str(), nullptr));
    std::ofstream(narrow(folder / L"a.xlsx")) << "another's";
  }
  EXPECT_EQ(bytesOf(folder / L"a.xlsx"), "another's");
}

TEST(ExcelWriterTarget, MayBeARelativePath) {
  const TemporaryFolder folder;
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(asPath(folder.path()));
  ExcelWriter writer;
  EXPECT_TRUE(writer.Begin(L"a.xlsx", nullptr));
  std::filesystem::current_path(before);
  writeCell(writer, L"a");
  EXPECT_TRUE(writer.End());
  EXPECT_EQ(readCells(folder / L"a.xlsx"), "A1 \"a\"\n");
}

TEST(ExcelWriterTarget, MayBeADeviceWithItsTemporaryFilesElsewhere) {
  const CapturedLog log;
  const TemporaryFolder folder;
  const char* const before = std::getenv("TMPDIR");
  const std::string old = before ? before : "/tmp";
  ::setenv("TMPDIR", narrow(folder.path()).c_str(), 1);
  ExcelWriter writer;
  EXPECT_TRUE(writer.Begin(L"/dev/null", nullptr));
  writeEqualRows(writer);
  EXPECT_TRUE(writer.End());
  EXPECT_TRUE(writer.Begin(L"/dev/full", nullptr));
  EXPECT_FALSE(writer.End());
  EXPECT_EQ(writer.Error(), L"File write error for '/dev/full'. No space left on device");
  {
    ExcelWriter abandoned;
    EXPECT_TRUE(abandoned.Begin(L"/dev/full", nullptr));
  }
  ::setenv("TMPDIR", old.c_str(), 1);
  EXPECT_TRUE(std::filesystem::is_empty(asPath(folder.path())));
  EXPECT_EQ(log.lines().size(), 1u);
}

TEST(ExcelWriterTarget, IsRefusedInAFolderThatIsNotWritable) {
  const TemporaryFolder folder;
  const std::filesystem::path path = asPath(folder.path());
  writeBytes(folder / L"a.xlsx", "earlier");
  std::filesystem::permissions(asPath(folder / L"a.xlsx"), perms::all);
  std::filesystem::permissions(path, perms(0555));
  const uid_t user = ::geteuid();
  constexpr uid_t kNobody = 65534;
  EXPECT_EQ(::seteuid(user == 0 ? kNobody : user), 0);
  ExcelWriter writer;
  EXPECT_FALSE(writer.Begin((folder / L"a.xlsx").c_str(), nullptr));
  EXPECT_EQ(writer.Error(), L"File open/create error for '" + (folder / L"a.xlsx") + L"'. Permission denied");
  EXPECT_EQ(::seteuid(user), 0);
  std::filesystem::permissions(path, perms(0755));
  EXPECT_EQ(bytesOf(folder / L"a.xlsx"), "earlier");
}

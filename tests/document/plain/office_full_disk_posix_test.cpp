#include "document/plain/office_content.h"
#include "support/faults/file_size_limit.h"
#include "support/faults/small_disk.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <unistd.h>

namespace scrivalen::test {
namespace {

constexpr std::size_t kSections = 12;
constexpr std::size_t kPage = 4;  // of the disk, in KiB
constexpr const char* kSameTime = "2026-01-31 23:59:59";
constexpr int kFewestFailures = 24;  // the archive has at least as many pages

class OfficeOnAFullDisk : public testing::TestWithParam<const char*> {
 protected:
  using Attempt = std::string (*)(const std::wstring& file, const char* format, scrivalen_status& status);

  /// Makes the attempt on disks that have one page more each time, until it succeeds.
  /// @return what is wrong
  static std::string onDisksOfEachSize(Attempt attempt);
};

std::ptrdiff_t filesIn(const std::wstring& folder) {
  return std::distance(std::filesystem::directory_iterator(asPath(folder)), {});
}

std::string OfficeOnAFullDisk::onDisksOfEachSize(Attempt attempt) {
  return onSmallDisk([&](const SmallDisk& disk) -> std::string {
    const std::wstring file = disk / L"made";
    int failures = 0;
    for (std::size_t kib = 2 * kPage; kib < 1024; kib += kPage) {
      if (!disk.resize(kib)) {
        return "no disk";
      }
      scrivalen_status status = SCRIVALEN_OK;
      const std::string problem = attempt(file, GetParam(), status);
      if (!problem.empty() || filesIn(disk.folder()) != 1) {
        return "at " + std::to_string(kib) + " KiB: " + (problem.empty() ? "something is left" : problem);
      }
      if (status == SCRIVALEN_OK) {
        return failures < kFewestFailures ? "too few failures" : "";
      }
      ++failures;
    }
    return "never complete";
  });
}

std::string writeFile(const std::wstring& file, const char* format, scrivalen_status& status) {
  writeBytes(file, "earlier");
  const Handle document(scrivalen_new());
  scrivalen_add_file(document.get(), narrowPath(file).c_str(), format);
  writeEveryKind(document.get());
  writeMuch(document.get(), kSections);
  status = scrivalen_close(document.get());
  const std::string error = scrivalen_error(document.get());
  if (status == SCRIVALEN_OK) {
    return error;
  }
  const bool isReported = status == SCRIVALEN_FILE_ERROR && error.find("made") != error.npos &&
                          error.find("No space left on device") != error.npos;
  return isReported && bytesOf(file) == "earlier" ? "" : "error: " + error;
}

int writeToDescriptor(void* user, const void* data, std::size_t size) {
  const char* bytes = static_cast<const char*>(data);
  while (size > 0) {
    const ssize_t written = ::write(*static_cast<int*>(user), bytes, size);
    if (written < 0) {
      return errno;
    }
    bytes += written;
    size -= static_cast<std::size_t>(written);
  }
  return 0;
}

// A host's own file, and beside it another output, which must not notice.
std::string writeStream(const std::wstring& file, const char* format, scrivalen_status& status) {
  int descriptor = ::open(narrowPath(file).c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
  const Handle document(scrivalen_new());
  MemoryStream other;
  scrivalen_add_stream(document.get(), format, writeToDescriptor, &descriptor);
  scrivalen_add_stream(document.get(), format, MemoryStream::write, &other);
  scrivalen_set(document.get(), "clock", kSameTime);  // each output asks for the time by itself
  writeEveryKind(document.get());
  writeMuch(document.get(), kSections);
  status = scrivalen_close(document.get());
  const std::string error = scrivalen_error(document.get());
  ::close(descriptor);
  if (scrivalen_output_result(document.get(), 1) != SCRIVALEN_OK) {
    return "the other output failed";
  }
  if (status == SCRIVALEN_OK) {
    return bytesOf(file) == other.bytes ? error : "the streams differ";
  }
  return error == std::string("cannot write the stream of ") + format + ": No space left on device" &&
                 other.bytes.starts_with(bytesOf(file))
             ? ""
             : "error: " + error;
}

// Writes a file that may not have more bytes than there is room for.
void expectTheEarlierFile(const TemporaryFolder& folder, const char* format, std::size_t room) {
  SCOPED_TRACE(room);
  const std::wstring file = folder / L"made";
  writeBytes(file, "earlier");
  const FileSizeLimit limit(room);
  const Handle document(scrivalen_new());
  scrivalen_add_file(document.get(), narrowPath(file).c_str(), format);
  scrivalen_set(document.get(), "clock", kSameTime);  // as in the document whose size is known
  writeEveryKind(document.get());
  ASSERT_EQ(scrivalen_close(document.get()), SCRIVALEN_FILE_ERROR);
  const std::string error = scrivalen_error(document.get());
  ASSERT_TRUE(error.find("made") != error.npos && error.find("File too large") != error.npos) << error;
  ASSERT_EQ(bytesOf(file), "earlier");
  ASSERT_EQ(filesIn(folder.path()), 1);
}

}  // namespace

TEST_P(OfficeOnAFullDisk, LeavesTheEarlierFileAtEachPage) { EXPECT_EQ(onDisksOfEachSize(writeFile), ""); }

TEST_P(OfficeOnAFullDisk, FailsWithItsStreamAtEachPage) { EXPECT_EQ(onDisksOfEachSize(writeStream), ""); }

// Steps of a prime number meet each place of the archive's records.
TEST_P(OfficeOnAFullDisk, LeavesTheEarlierFileAtEveryFewBytes) {
  constexpr std::size_t kStep = 13;
  Written whole(GetParam());
  ASSERT_EQ(writeEveryKind(whole), SCRIVALEN_OK);
  const std::size_t size = whole.closed().size();
  const TemporaryFolder folder;
  for (std::size_t room = 0; room < size && !HasFatalFailure(); room += kStep) {
    expectTheEarlierFile(folder, GetParam(), room);
  }
  expectTheEarlierFile(folder, GetParam(), size - 1);
}

INSTANTIATE_TEST_SUITE_P(Each, OfficeOnAFullDisk, testing::Values("xlsx", "docx"),
                         [](const auto& tested) { return std::string(tested.param); });

}  // namespace scrivalen::test

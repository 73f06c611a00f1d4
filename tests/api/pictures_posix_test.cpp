#include "api/api_support.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace scrivalen;
using namespace scrivalen::test;

namespace {

// A pipe that would block its reader, but for a thread that notices the reader and lets it go on.
class WatchedPipe {
 public:
  explicit WatchedPipe(std::string path) : path_(std::move(path)) {
    EXPECT_EQ(mkfifo(path_.c_str(), 0600), 0);
    watch_ = std::thread([this] {
      while (!isDone_) {
        // Succeeds only when somebody opens the pipe for reading.
        if (const int pipe = open(path_.c_str(), O_WRONLY | O_NONBLOCK); pipe >= 0) {
          wasRead_ = true;
          close(pipe);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
      }
    });
  }
  WatchedPipe(const WatchedPipe&) = delete;
  WatchedPipe& operator=(const WatchedPipe&) = delete;
  ~WatchedPipe() {
    isDone_ = true;
    watch_.join();
  }

  const char* path() const { return path_.c_str(); }
  bool wasRead() const { return wasRead_; }

 private:
  std::string path_;
  std::atomic<bool> isDone_ = false;
  std::atomic<bool> wasRead_ = false;
  std::thread watch_;
};

// A page of memory that nobody may read.
class ForbiddenPage {
 public:
  ForbiddenPage() : page_(mmap(nullptr, kSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)) {
    EXPECT_NE(page_, MAP_FAILED);
  }
  ForbiddenPage(const ForbiddenPage&) = delete;
  ForbiddenPage& operator=(const ForbiddenPage&) = delete;
  ~ForbiddenPage() { munmap(page_, kSize); }

  static constexpr std::size_t kSize = 4096;
  const void* get() const { return page_; }

 private:
  void* page_;
};

int cancel(void*, std::uint64_t, std::uint64_t) { return 1; }

}  // namespace

TEST(DocumentPictures, AreReadOnlyWhereTheyMayBe) {
  const TemporaryFolder folder;
  const WatchedPipe pipe(narrowPath(folder / L"picture"));
  const ForbiddenPage page;
  const Written document;
  const auto expectRefused = [&](double width, scrivalen_status status) {
    EXPECT_EQ(scrivalen_image_file(document, pipe.path(), "text", width), status);
    EXPECT_EQ(scrivalen_image(document, page.get(), ForbiddenPage::kSize, "text", width), status);
  };
  expectRefused(-1, SCRIVALEN_MISUSE);
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  scrivalen_begin_row(document, 0);
  expectRefused(0, SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a picture cannot be in a row");
  scrivalen_close(document);
  expectRefused(0, SCRIVALEN_MISUSE);
  EXPECT_FALSE(pipe.wasRead());
}

TEST(DocumentPictures, AreNotReadOnceTheDocumentIsCancelled) {
  const TemporaryFolder folder;
  const WatchedPipe pipe(narrowPath(folder / L"picture"));
  const ForbiddenPage page;
  const Written document;
  scrivalen_set_progress(document, cancel, nullptr);
  const std::string longText(200000, 'x');
  scrivalen_paragraph(document, longText.data(), longText.size());
  EXPECT_EQ(scrivalen_image_file(document, pipe.path(), "text", 0), SCRIVALEN_CANCELLED);
  EXPECT_EQ(scrivalen_image(document, page.get(), ForbiddenPage::kSize, "text", 0), SCRIVALEN_CANCELLED);
  EXPECT_FALSE(pipe.wasRead());
}

TEST(DocumentPictures, AreNotReadFromAPipe) {
  const TemporaryFolder folder;
  const WatchedPipe pipe(narrowPath(folder / L"picture"));
  const Written document;
  EXPECT_EQ(scrivalen_image_file(document, pipe.path(), "text", 0), SCRIVALEN_OK);
  scrivalen_close(document);
  const std::string warnings = warningsOf(document);
  EXPECT_NE(warnings.find("the file is a device or a pipe"), std::string::npos) << warnings;
  EXPECT_FALSE(pipe.wasRead());
}

#include "api/api_support.h"
#include "support/faults/small_disk.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

namespace scrivalen::test {
namespace {

constexpr int kPages = 20;

// Writes pages whose content can hardly be compressed.
scrivalen_status writePages(const std::string& path, std::string& error) {
  const Handle document(scrivalen_new());
  scrivalen_add_file(document.get(), path.c_str(), "pdf");
  unsigned state = 1;
  for (int page = 0; page < kPages; ++page) {
    std::string text;
    for (int i = 0; i < 3500; ++i) {
      state = state * 1103515245 + 12345;
      const unsigned c = (state >> 16) % 128;
      const char letter[] = {static_cast<char>(c < 64 ? '\xC3' : ' '), static_cast<char>(c < 64 ? 0x80 + c : c)};
      text.append(i % 8 == 7 ? " " : std::string(letter + (c < 64 ? 0 : 1), letter + 2));
    }
    scrivalen_paragraph(document.get(), text.c_str(), kNul);
    scrivalen_page_break(document.get());
  }
  const scrivalen_status result = scrivalen_close(document.get());
  error = scrivalen_error(document.get());
  return result;
}

// On a disk of each size the file is complete, or the document says why it is not, and the earlier file stays.
TEST(PdfOnAFullDisk, FailsAtEachPageAndLeavesTheEarlierFile) {
  const std::string result = onSmallDisk([](const SmallDisk& disk) -> std::string {
    const std::wstring file = disk / L"a.pdf";
    int failures = 0;
    std::string error;
    for (std::size_t kib = 8; kib < 1024; kib += 4) {
      if (!disk.resize(kib)) {
        return "no disk";
      }
      writeBytes(file, "earlier");
      const scrivalen_status status = writePages(narrowPath(file), error);
      if (std::distance(std::filesystem::directory_iterator(asPath(disk.folder())), {}) != 1) {
        return "something is left";
      }
      if (status == SCRIVALEN_OK) {
        return failures < kPages ? "too few failures" : error;
      }
      ++failures;
      if (status != SCRIVALEN_FILE_ERROR || error.find("a.pdf") == error.npos || bytesOf(file) != "earlier") {
        return "at " + std::to_string(kib) + " KiB: " + error;
      }
    }
    return "never complete";
  });
  EXPECT_EQ(result, "");
}

}  // namespace
}  // namespace scrivalen::test

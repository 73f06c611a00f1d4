#include "formats/help/document/made_help.h"
#include "support/faults/small_disk.h"
#include "support/files.h"
#include "system/files/files.h"

#include <cstdlib>
#include <filesystem>

using namespace scrivalen::test;

namespace {

// Makes the help files' private folders lie in one folder.
class PrivateFolders {
 public:
  explicit PrivateFolders(const std::wstring& in) : in_(in) {
    if (const char* const earlier = std::getenv("TMPDIR")) {
      earlier_ = earlier;
    }
    ::setenv("TMPDIR", scrivalen::narrowPath(in).c_str(), 1);
  }
  PrivateFolders(const PrivateFolders&) = delete;
  PrivateFolders& operator=(const PrivateFolders&) = delete;
  ~PrivateFolders() {
    if (earlier_.empty()) {
      ::unsetenv("TMPDIR");
    } else {
      ::setenv("TMPDIR", earlier_.c_str(), 1);
    }
  }

  std::ptrdiff_t count() const { return std::distance(std::filesystem::directory_iterator(asPath(in_)), {}); }

 private:
  std::wstring in_;
  std::string earlier_;
};

}  // namespace

TEST(HelpFolder, IsGoneWhenTheDocumentIsClosed) {
  const TemporaryFolder temporary;
  const PrivateFolders folders(temporary.path());
  for (const char* title : {"stand-in: leaves nothing", "good"}) {
    MadeHelp help;
    help.setting("title", title);
    help.paragraph("text");
    EXPECT_EQ(folders.count(), 1);
    help.closed();
    EXPECT_EQ(folders.count(), 0) << title;
  }
}

TEST(HelpFolder, IsGoneWhenADocumentIsFreedOrCancelled) {
  const TemporaryFolder temporary;
  const PrivateFolders folders(temporary.path());
  {
    const MadeHelp help;
    help.paragraph("text");
    EXPECT_EQ(folders.count(), 1);
  }
  EXPECT_EQ(folders.count(), 0);
  MadeHelp cancelled;
  cancelled.setting("title", "stand-in: waits");
  scrivalen_set_progress(
      cancelled, [](void*, std::uint64_t, std::uint64_t) { return 1; }, nullptr);
  cancelled.paragraph("text");
  cancelled.closed();
  EXPECT_EQ(cancelled.result, SCRIVALEN_CANCELLED);
  EXPECT_EQ(cancelled.stream.bytes, "");
  EXPECT_EQ(folders.count(), 0);
}

TEST(HelpFolder, MayHaveAnyName) {
  const TemporaryFolder temporary;
  const std::wstring inner = temporary / L"\u65E5 $x;\"y\"'z'\n\xFC";
  makeFolder(inner);
  const PrivateFolders folders(inner);
  MadeHelp help;
  help.paragraph("text");
  EXPECT_EQ(help.body("topic1.htm"), "<p>text</p>\n");
}

TEST(HelpFolder, ThatCannotBeCreatedIsReportedWhenTheDocumentOpens) {
  const TemporaryFolder temporary;
  const PrivateFolders folders(temporary / L"missing");
  const Written text;
  MemoryStream help;
  EXPECT_EQ(scrivalen_add_stream(text, "chm", MemoryStream::write, &help), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_open(text), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(text.error(), "cannot write the stream of chm: no folder can be created for its topics in '" +
                              scrivalen::narrowPath(temporary / L"missing") + "': No such file or directory");
  EXPECT_EQ(scrivalen_paragraph(text, "text", kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_output_result(text, 0), SCRIVALEN_OK);
}

// In each size of disk the help file is complete, or the document says why it is not.
TEST(HelpFolder, OnAFullDiskFailsTheHelpAlone) {
  const std::string result = onSmallDisk([](const SmallDisk& disk) -> std::string {
    std::string good;
    int failures = 0;
    for (std::size_t kib = 256; kib >= 4; kib -= 4) {
      if (!disk.resize(kib)) {
        return "no disk";
      }
      const PrivateFolders folders(disk.folder());
      MadeHelp help;
      MemoryStream text;
      scrivalen_add_stream(help, "text", MemoryStream::write, &text);
      const std::string longText(20000, 'x');
      for (const char* heading : {"One", "Two"}) {
        scrivalen_heading(help, 1, heading, kNul);
        scrivalen_paragraph(help, longText.c_str(), kNul);
        scrivalen_begin_paragraph(help, nullptr);
        scrivalen_begin_link(help, "#two", nullptr);
        scrivalen_text(help, "link", kNul);
        scrivalen_end(help);
        scrivalen_end(help);
      }
      const std::string made = help.closed();
      good = good.empty() ? made : good;
      if (folders.count() != 0 || scrivalen_output_result(help, 1) != SCRIVALEN_OK) {
        return "something is left, or the text has failed";
      }
      if (help.result == SCRIVALEN_OK ? made != good : !made.empty()) {
        return "the help file is incomplete";
      }
      if (help.result != SCRIVALEN_OK) {
        ++failures;
        const bool isDisk = help.error().ends_with("topics cannot be written in '" +
                                                   scrivalen::narrowPath(disk.folder()) + "': No space left on device");
        if (!isDisk && help.error().find("the help compiler left no help file") == std::string::npos) {
          return std::string(help.error());
        }
      }
    }
    return failures > 3 ? "good" : "no failures";
  });
  EXPECT_EQ(result, "good");
}

#include "document/output.h"

#include "document/document.h"
#include "support/documents/recording_writer.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>

using namespace scrivalen;
using namespace scrivalen::document;
using namespace scrivalen::test;

namespace {

constexpr const char* kParagraph = "begin\nparagraph\ntext 'new'\nend paragraph\nfinish\n";

std::size_t entryCount(const TemporaryFolder& folder) {
  const std::filesystem::directory_iterator entries(asPath(folder.path()));
  return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

}  // namespace

TEST(DocumentOutput, ReplacesItsFileWhenTheDocumentIsClosed) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.txt", "old");
  Document document;
  document.addFile(kRecordingFormat, narrowPath(folder / L"a.txt"));
  EXPECT_EQ(document.paragraph("new"), Status::Ok);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "old");
  EXPECT_EQ(document.close(), Status::Ok);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), kParagraph);
  EXPECT_EQ(entryCount(folder), 1u);
}

TEST(DocumentOutput, HasLettersOutsideAsciiInItsName) {
  const TemporaryFolder folder;
  Document document;
  document.addFile(kRecordingFormat, narrowPath(folder / L"\u00E4\u4E2D.txt"));
  document.paragraph("new");
  EXPECT_EQ(document.close(), Status::Ok);
  EXPECT_EQ(bytesOf(folder / L"\u00E4\u4E2D.txt"), kParagraph);
}

TEST(DocumentOutput, LeavesTheEarlierFileWhenTheDocumentIsAbandoned) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.txt", "old");
  auto document = std::make_unique<Document>();
  document->addFile(kRecordingFormat, narrowPath(folder / L"a.txt"));
  document->addFile(kRecordingFormat, narrowPath(folder / L"b.txt"));
  for (int i = 0; i < 10000; ++i) {
    document->paragraph("new");
  }
  document.reset();
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "old");
  EXPECT_EQ(entryCount(folder), 1u);
}

TEST(DocumentOutput, LeavesTheEarlierFileWhenTheDocumentIsCancelled) {
  const TemporaryFolder folder;
  writeBytes(folder / L"a.txt", "old");
  Document document;
  document.addFile(kRecordingFormat, narrowPath(folder / L"a.txt"));
  document.setProgress([](void*, std::uint64_t, std::uint64_t) { return 1; }, nullptr);
  document.paragraph("new");
  EXPECT_EQ(document.close(), Status::Cancelled);
  EXPECT_EQ(bytesOf(folder / L"a.txt"), "old");
  EXPECT_EQ(entryCount(folder), 1u);
}

TEST(DocumentOutput, IsReportedAtOpenWhenItCannotBeCreated) {
  const TemporaryFolder folder;
  const std::string missing = narrowPath(folder / L"none") + "/a.txt";
  Document document;
  document.addFile(kRecordingFormat, missing);
  document.addFile(kRecordingFormat, narrowPath(folder / L"b.txt"));
  EXPECT_EQ(document.open(), Status::FileError);
  EXPECT_EQ(std::string(document.error()).rfind("cannot write '" + missing + "': ", 0), 0u);
  EXPECT_EQ(document.output(0)->result(), Status::FileError);
  EXPECT_STREQ(document.output(0)->error(), document.error());
  EXPECT_EQ(document.paragraph("new"), Status::Ok);
  EXPECT_EQ(document.close(), Status::FileError);
  EXPECT_EQ(bytesOf(folder / L"b.txt"), kParagraph);
}

TEST(DocumentOutput, IsReportedByTheContentThatOpensIt) {
  const TemporaryFolder folder;
  Document document;
  document.addFile(kRecordingFormat, narrowPath(folder / L"none") + "/a.txt");
  document.addFile(kRecordingFormat, narrowPath(folder / L"b.txt"));
  EXPECT_EQ(document.paragraph("new"), Status::FileError);
  EXPECT_EQ(document.paragraph("new"), Status::Ok);
  document.close();
  EXPECT_EQ(bytesOf(folder / L"b.txt"),
            "begin\nparagraph\ntext 'new'\nend paragraph\nparagraph\ntext 'new'\nend paragraph\nfinish\n");
}

TEST(DocumentOutput, CannotBeAFolder) {
  const TemporaryFolder folder;
  Document document;
  document.addFile(kRecordingFormat, narrowPath(folder.path()));
  EXPECT_EQ(document.open(), Status::FileError);
  EXPECT_EQ(document.error(), "cannot write '" + narrowPath(folder.path()) + "': it is a folder");
}

TEST(DocumentOutput, CannotBeTheFileOfAnotherOutput) {
  const TemporaryFolder folder;
  Document document;
  document.addFile(kRecordingFormat, narrowPath(folder / L"a.txt"));
  document.addFile(kOtherRecordingFormat, narrowPath(folder.path()) + "/./a.txt");
  EXPECT_EQ(document.open(), Status::FileError);
  EXPECT_EQ(document.output(0)->result(), Status::Ok);
  EXPECT_NE(std::string(document.output(1)->error()).find("another output writes to it"), std::string::npos);
  document.paragraph("new");
  document.close();
  EXPECT_EQ(bytesOf(folder / L"a.txt"), kParagraph);
}

TEST(DocumentOutput, IsNotDeliveredWhenItsWriterRaises) {
  class RaisingWriter : public DocumentWriter {
    void begin() override {}
    void write(const Event&) override { throw OutputFailure(Status::TemplateNotFound, "there is no page"); }
    void beginTable(const Table&) override {}
    void row(const Row&) override {}
    void endTable() override {}
    void finish() override {}
  };
  static const Format kRaising{"html", [](const WriterContext&) -> std::unique_ptr<DocumentWriter> {
                                 return std::make_unique<RaisingWriter>();
                               }};
  const TemporaryFolder folder;
  Document document;
  document.addFile(kRaising, narrowPath(folder / L"a.txt"));
  EXPECT_EQ(document.paragraph("new"), Status::TemplateNotFound);
  EXPECT_EQ(document.close(), Status::TemplateNotFound);
  EXPECT_STREQ(document.error(), "there is no page");
  EXPECT_EQ(entryCount(folder), 0u);
}

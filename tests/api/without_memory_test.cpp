#include "api/api_support.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>

using namespace scrivalen::test;

namespace {

struct Attempt {
  scrivalen_status result = SCRIVALEN_OK;
  std::string error;
  std::string bytes;
  bool hasFailed = false;
};

Attempt write(const std::string& path, std::size_t nth, Extent extent) {
  Attempt attempt;
  MemoryStream stream;
  stream.bytes.reserve(65536);
  const FailingAllocations memory(nth, extent);
  {
    const Handle document(scrivalen_new());
    scrivalen_status first = document ? SCRIVALEN_OK : SCRIVALEN_OUT_OF_MEMORY;
    const auto note = [&](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
    if (document) {
      note(scrivalen_add_stream(document.get(), "text", MemoryStream::write, &stream));
      note(scrivalen_add_file(document.get(), path.c_str(), "html"));
      note(writeContent(document.get()));
      note(scrivalen_close(document.get()));
      const UnfailingAllocations own;
      attempt.error = scrivalen_error(document.get());
    }
    attempt.result = first;
    attempt.hasFailed = memory.hasFailed();
  }
  const UnfailingAllocations own;
  attempt.bytes = stream.bytes;
  return attempt;
}

class DocumentWithoutMemory : public testing::TestWithParam<Extent> {};

}  // namespace

TEST_P(DocumentWithoutMemory, IsCompleteOrReportsItAndLeavesEarlierFiles) {
  const TemporaryFolder folder;
  const std::wstring file = folder / L"a.html";
  const std::string path = scrivalen::narrowPath(file);
  contentSteps();
  const Attempt good = write(path, 0, GetParam());
  ASSERT_EQ(good.result, SCRIVALEN_OK) << good.error;
  const std::string page = bytesOf(file);
  std::size_t nth = 1;
  for (bool hasFailed = true; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    writeBytes(file, "earlier");
    const Attempt made = write(path, nth, GetParam());
    hasFailed = made.hasFailed;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(asPath(folder.path())), {}), 1);
    if (made.result == SCRIVALEN_OK) {
      EXPECT_EQ(made.bytes, good.bytes);
      EXPECT_EQ(bytesOf(file), page);
    } else {
      EXPECT_TRUE(hasFailed);
      EXPECT_EQ(made.result, SCRIVALEN_OUT_OF_MEMORY) << made.error;
      EXPECT_EQ(bytesOf(file), "earlier");
    }
  }
  EXPECT_GT(nth, 100u);
}

// Memory may run out between the delivery of one file and that of another.
TEST_P(DocumentWithoutMemory, TellsOfEachFileWhetherItWasDelivered) {
  const TemporaryFolder folder;
  const std::wstring files[] = {folder / L"a.txt", folder / L"b.html"};
  const std::string paths[] = {scrivalen::narrowPath(files[0]), scrivalen::narrowPath(files[1])};
  std::size_t nth = 1;
  for (bool hasFailed = true; hasFailed && !HasFailure(); ++nth) {
    SCOPED_TRACE(nth);
    const Handle document(scrivalen_new());
    for (std::size_t i = 0; i < 2; ++i) {
      writeBytes(files[i], "earlier");
      scrivalen_add_file(document.get(), paths[i].c_str(), nullptr);
    }
    scrivalen_paragraph(document.get(), "text", SCRIVALEN_NUL);
    {
      const FailingAllocations memory(nth, GetParam());
      scrivalen_close(document.get());
      hasFailed = memory.hasFailed();
    }
    for (std::size_t i = 0; i < 2; ++i) {
      const bool isDelivered = scrivalen_output_result(document.get(), i) == SCRIVALEN_OK;
      EXPECT_EQ(bytesOf(files[i]) != "earlier", isDelivered) << paths[i];
    }
    EXPECT_TRUE(hasFailed || scrivalen_result(document.get()) == SCRIVALEN_OK) << scrivalen_error(document.get());
    EXPECT_EQ(scrivalen_end(document.get()), SCRIVALEN_MISUSE) << "it is not closed";
  }
  EXPECT_GT(nth, 5u);
}

INSTANTIATE_TEST_SUITE_P(Each, DocumentWithoutMemory, testing::Values(Extent::One, Extent::AllFromThere));

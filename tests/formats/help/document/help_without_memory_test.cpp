#include "support/documents/pictures.h"
#include "support/faults/out_of_memory.h"
#include "support/files.h"
#include "system/files/files.h"

#include "scrivalen/document.h"

#include <memory>

using namespace scrivalen::test;

namespace {

// Calls the host's progress function, too, which is asked while the compiler runs.
scrivalen_status write(const std::string& path, const std::string& picture) {
  const std::unique_ptr<scrivalen_document, void (*)(scrivalen_document*)> document(scrivalen_new(), &scrivalen_free);
  if (!document) {
    return SCRIVALEN_OUT_OF_MEMORY;
  }
  scrivalen_status first = SCRIVALEN_OK;
  const auto note = [&](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
  note(scrivalen_add_file(document.get(), path.c_str(), "chm"));
  note(scrivalen_set(document.get(), "title", "a title that is longer than what a string holds in itself"));
  note(scrivalen_set_progress(
      document.get(), [](void*, std::uint64_t, std::uint64_t) { return 0; }, nullptr));
  note(scrivalen_begin_section(document.get(), "a section", "a place with a long name, #1"));
  note(scrivalen_begin_paragraph(document.get(), nullptr));
  note(scrivalen_begin_link(document.get(), "#heading-of-the-second-topic", nullptr));
  note(scrivalen_text(document.get(), "text \xE6\x97\xA5", SCRIVALEN_NUL));
  note(scrivalen_end(document.get()));
  note(scrivalen_image(document.get(), picture.data(), picture.size(), "grey", 0));
  note(scrivalen_end(document.get()));
  note(scrivalen_heading(document.get(), 1, "Heading of the second topic", SCRIVALEN_NUL));
  note(scrivalen_close(document.get()));
  return first;
}

class HelpWithoutMemory : public testing::TestWithParam<Extent> {};

}  // namespace

TEST_P(HelpWithoutMemory, IsCompleteOrReportsItAndLeavesTheEarlierFile) {
  const TemporaryFolder folder;
  const std::wstring file = folder / L"a.chm";
  const std::string path = scrivalen::narrowPath(file);
  const std::string picture = greyPng(2, 2);
  ASSERT_EQ(write(path, picture), SCRIVALEN_OK);
  const std::string good = bytesOf(file);
  runOutOfMemory([&](std::size_t nth) {
    SCOPED_TRACE(nth);
    writeBytes(file, "earlier");
    scrivalen_status result = SCRIVALEN_OK;
    bool hasFailed = false;
    {
      const FailingAllocations memory(nth, GetParam());
      result = write(path, picture);
      hasFailed = memory.hasFailed();
    }
    if (result == SCRIVALEN_OK) {
      EXPECT_EQ(bytesOf(file), good);
    } else {
      EXPECT_EQ(result, SCRIVALEN_OUT_OF_MEMORY);
      EXPECT_EQ(bytesOf(file), "earlier");
      EXPECT_TRUE(hasFailed);
    }
    return hasFailed && !testing::Test::HasFailure();
  });
}

INSTANTIATE_TEST_SUITE_P(Each, HelpWithoutMemory, testing::Values(Extent::One, Extent::AllFromThere));

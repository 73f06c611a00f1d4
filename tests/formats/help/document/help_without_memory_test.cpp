#include "support/documents/pictures.h"
#include "support/faults/file_without_memory.h"

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
  const std::string picture = greyPng(2, 2);
  expectTheFileOrTheEarlierOne(GetParam(), [&picture](const std::string& path) { return write(path, picture); });
}

INSTANTIATE_TEST_SUITE_P(Each, HelpWithoutMemory, testing::Values(Extent::One, Extent::AllFromThere));

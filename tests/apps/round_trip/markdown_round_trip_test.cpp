#include "formats/markdown/markdown_writer.h"
#include "round_trip/random_document.h"
#include "round_trip/read_outline.h"
#include "support/documents/made_document.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using scrivalen::test::MadeDocument;
using scrivalen::test::outlineOfMarkdown;
using scrivalen::test::RandomDocument;

namespace {

const document::Format kMarkdown{"markdown", &markdown::createMarkdownDocumentWriter};

// The first lines that differ.
std::string difference(std::string_view written, std::string_view read) {
  std::size_t begin = 0;
  for (std::size_t i = 0; i < std::min(written.size(), read.size()) && written[i] == read[i]; ++i) {
    begin = written[i] == '\n' ? i + 1 : begin;
  }
  const auto line = [begin](std::string_view text) { return text.substr(begin, text.find('\n', begin) - begin); };
  return std::string("written ").append(line(written)).append("\nread    ").append(line(read));
}

}  // namespace

// Reports the shortest of the documents that differ.
TEST(MarkdownRoundTrip, KeepsRandomDocuments) {
  constexpr std::uint32_t kDocuments = 1000;
  std::uint32_t differing = 0;
  std::string shortest;
  std::string report;
  for (std::uint32_t seed = 0; seed < kDocuments; ++seed) {
    MadeDocument document(kMarkdown);
    const std::string outline = RandomDocument(seed, document).fill();
    const std::string& markdown = document.bytes();
    const std::string read = outlineOfMarkdown(markdown);
    if (read != outline && (differing++ == 0 || markdown.size() < shortest.size())) {
      shortest = markdown;
      report = "seed " + std::to_string(seed) + "\n" + difference(outline, read) + "\n" + markdown;
    }
  }
  EXPECT_EQ(differing, 0U) << report;
}

#include "formats/pdf/typeset/pdf_objects.h"
#include "formats/pdf/typeset/shown_document.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

namespace scrivalen::test {
namespace {

using document::Align;

constexpr int kMany = 20000;

// The number of times that the objects of a document have a text.
int countIn(ShownDocument& document, std::string_view text) {
  const PdfObjects objects(document.bytes());
  int count = 0;
  for (std::size_t i = 1; i < objects.size(); ++i) {
    const std::string object = objects.object(static_cast<int>(i));
    for (std::size_t at = object.find(text); at != object.npos; at = object.find(text, at + 1)) {
      ++count;
    }
  }
  return count;
}

TEST(LargePdfDocuments, HaveManyHeadings) {
  ShownDocument document;
  for (int i = 0; i < kMany; ++i) {
    document.heading(1 + i % 6, "Heading " + std::to_string(i));
  }
  EXPECT_EQ(countIn(document, "/Title(Heading "), kMany);
  EXPECT_LT(document.bytes().size(), std::size_t{60} * kMany);
}

TEST(LargePdfDocuments, HaveManyLinksToManyPlaces) {
  ShownDocument document;
  for (int i = 0; i < kMany; ++i) {
    document.beginParagraph(Align::Auto);
    document.anchor("x" + std::to_string(i));
    document.beginLink("#x" + std::to_string((i + kMany / 2) % kMany), {});
    document.text("link");
    document.end();
    document.end();
  }
  EXPECT_EQ(countIn(document, "/Subtype/Link"), kMany);
  EXPECT_EQ(countIn(document, ")["), kMany);
  EXPECT_EQ(document.warnings(), "");
  EXPECT_LT(document.bytes().size(), std::size_t{40} * kMany);
}

TEST(LargePdfDocuments, HaveManyLinksInAParagraph) {
  ShownDocument document;
  document.beginParagraph(Align::Auto);
  document.anchor("x");
  for (int i = 0; i < kMany; ++i) {
    document.beginLink("#x", {});
    document.text("link");
    document.end();
    document.text(" ");
  }
  document.end();
  EXPECT_EQ(countIn(document, "/Dest(x)"), kMany);
  EXPECT_LT(document.bytes().size(), std::size_t{30} * kMany);
}

}  // namespace
}  // namespace scrivalen::test

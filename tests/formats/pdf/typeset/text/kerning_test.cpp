#include "formats/pdf/typeset/pdf_objects.h"
#include "formats/pdf/typeset/shown_document.h"

#include <gtest/gtest.h>

#include <string>

using namespace scrivalen::test;

namespace scrivalen::typeset {
namespace {

// The content of the only page.
std::string contentOf(ShownDocument& document) {
  const PdfObjects objects(document.bytes());
  for (int number = 1; number < static_cast<int>(objects.size()); ++number) {
    const std::string content = objects.stream(number);
    if (content.find(" Tf\n") != content.npos) {
      return content;
    }
  }
  return std::string();
}

TEST(Kerning, IsInProse) {
  ShownDocument document;
  document.paragraph("AV");
  EXPECT_NE(contentOf(document).find("[(A)74 (V)]TJ"), std::string::npos);
}

TEST(Kerning, IsInHeadings) {
  ShownDocument document;
  document.heading(1, "AV");
  EXPECT_NE(contentOf(document).find("[(A)74 (V)]TJ"), std::string::npos);
}

TEST(Kerning, IsNotInTables) {
  ShownDocument document;
  document.beginTable({document::Column()}, "");
  document.addRow({"AV"});
  document.end();
  EXPECT_NE(contentOf(document).find("(AV)Tj"), std::string::npos);
}

TEST(Kerning, IsNotInCode) {
  ShownDocument document;
  document.beginCode("");
  document.text("AV");
  document.end();
  EXPECT_NE(contentOf(document).find("(AV)Tj"), std::string::npos);
}

}  // namespace
}  // namespace scrivalen::typeset

#include "../../../../fuzz/markup_check.h"
#include "made_reference.h"

#include "formats/docx/docx_writer.h"
#include "formats/docx/reference/package_reader.h"
#include "formats/docx/reference/reference.h"
#include "formats/docx/reference/style_merge.h"
#include "formats/docx/reference/xml_reader.h"
#include "output/archive/zip_reader.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::test {
namespace {

const std::string& ownStyles() {
  static const std::string styles = partOf(docxOf([](document::Document&) {}), "word/styles.xml");
  return styles;
}

// The error about a reference of usual parts with one of another content.
std::string errorWithPart(std::size_t part, const std::string& content) {
  ReferenceParts parts = partsWithStyles("");
  parts.at(part).second = content;
  return errorWithReference(referenceOfParts(parts));
}

std::string errorWithoutPart(std::size_t part) {
  ReferenceParts parts = partsWithStyles("");
  parts.erase(parts.begin() + static_cast<std::ptrdiff_t>(part));
  return errorWithReference(referenceOfParts(parts));
}

std::string relationTo(std::string_view type, std::string_view rest) {
  return std::string(
             "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
             "<Relationship Type=\"")
      .append(type)
      .append("\" ")
      .append(rest)
      .append("/></Relationships>");
}

// The styles that a reference becomes, which are well-formed; empty if it cannot be used.
std::string stylesOrNothing(const std::string& reference) {
  try {
    const document::docx::LookParts parts = document::docx::readLookParts(reference);
    const document::docx::StyleList own(document::docx::readXml(ownStyles()));
    const auto merged = document::docx::mergedStyles(document::docx::StyleList(parts.styles), own);
    document::docx::XmlElement root{"w:styles"};
    root.children = merged.styles.before();
    root.children.insert(root.children.end(), merged.styles.styles().begin(), merged.styles.styles().end());
    std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + document::docx::xmlText(root) + "\n";
    EXPECT_EQ(fuzz::problemOfDocumentXml(text), "");
    return text;
  } catch (const ArchiveError&) {
    return {};
  }
}

constexpr std::string_view kUsual = "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";
constexpr std::string_view kStrict = "http://purl.oclc.org/ooxml/officeDocument/relationships/";

}  // namespace

TEST(BrokenReference, IsNamedWhereThereIsNone) {
  const document::Format format{"docx", &document::createDocxDocumentWriter};
  const TemporaryFolder folder;
  const std::string path = narrowPath(folder / L"none.dotx");
  MadeDocument document(format);
  document.set("docx.reference", path);
  EXPECT_EQ(document.paragraph("x"), document::Status::TemplateNotFound);
  EXPECT_EQ(document.close(), document::Status::TemplateNotFound);
  EXPECT_TRUE(std::string(document.error()).starts_with("The reference '" + path + "' cannot be read. "))
      << document.error();
  EXPECT_EQ(document.bytes(), "");
}

TEST(BrokenReference, IsRefusedWhereItIsNoWordDocument) {
  EXPECT_EQ(errorWithReference(""), "The reference '@' cannot be used: it is not an archive (ZIP).");
  EXPECT_EQ(errorWithReference("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 and more"),
            "The reference '@' cannot be used: it is a Word document of the form before 2007, or protected by a "
            "password.");
  EXPECT_EQ(errorWithReference(referenceOfParts({{"mimetype", "x"}})),
            "The reference '@' cannot be used: it is not a Word document (.docx or .dotx).");
}

TEST(BrokenReference, IsReportedWithTheNameOfItsPart) {
  EXPECT_EQ(errorWithoutPart(1), "The reference '@' cannot be used: its part 'a/doc.xml' is missing.");
  EXPECT_EQ(errorWithoutPart(2), "The reference '@' cannot be used: it has no styles.");
  EXPECT_EQ(errorWithoutPart(3), "The reference '@' cannot be used: its part 'looks.xml' is missing.");
  EXPECT_EQ(errorWithPart(3, "<a"), "The reference '@' cannot be used: its part 'looks.xml' is not well-formed XML.");
  EXPECT_EQ(errorWithPart(3, "<a xmlns='urn:a'/>"),
            "The reference '@' cannot be used: its part 'looks.xml' holds no styles of a Word document.");
  EXPECT_EQ(errorWithPart(0, "<a>"),
            "The reference '@' cannot be used: its part '_rels/.rels' is not well-formed XML.");
  EXPECT_EQ(errorWithPart(3, std::string((4 << 20) + 1, ' ')),
            "The reference '@' cannot be used: its part 'looks.xml' has more than 4 MiB.");
}

TEST(BrokenReference, IsNotFollowedOutOfItsArchive) {
  const std::string type = std::string(kUsual) + "styles";
  EXPECT_EQ(errorWithPart(2, relationTo(type, "Target=\"looks.xml\" TargetMode=\"External\"")),
            "The reference '@' cannot be used: it has no styles.");
  EXPECT_EQ(errorWithPart(2, relationTo(type, "Target=\"../../../../etc/passwd\"")),
            "The reference '@' cannot be used: its part 'etc/passwd' is missing.");
  EXPECT_EQ(errorWithPart(2, relationTo(type, "Target=\"/./a/..//looks.xml\"")), "");
  EXPECT_EQ(errorWithPart(2, relationTo(type, "")), "The reference '@' cannot be used: its part 'a' is missing.");
}

TEST(BrokenReference, MayBeInTheStrictForm) {
  EXPECT_EQ(
      errorWithPart(0, relationTo(std::string(kStrict) + "officeDocument", "Target=\"a/doc.xml\"")),
      "The reference '@' cannot be used: it is in the strict form of Office Open XML; save it as an ordinary Word "
      "document.");
}

TEST(BrokenReference, IsShownInCleanText) {
  const std::string target(5000, 'a');
  const std::string error =
      errorWithPart(2, relationTo(std::string(kUsual) + "styles", "Target=\"&#10;" + target + "\""));
  EXPECT_TRUE(error.starts_with("The reference '@' cannot be used: its part 'a/ aaa")) << error;
  EXPECT_TRUE(error.ends_with("aaa...")) << error;
  EXPECT_LT(error.size(), 400u);
}

TEST(BrokenReference, MayHaveTooManyStyles) {
  std::string styles;
  for (int i = 0; i <= 10'000; ++i) {
    const std::string number = std::to_string(i);
    styles += "<w:style w:styleId='" + number + "'/>";
  }
  EXPECT_EQ(errorWithReference(referenceWithStyles(styles)),
            "The reference '@' cannot be used: it has more than 10,000 styles.");
}

TEST(BrokenReference, MayBeTooLarge) {
  EXPECT_EQ(errorWithReference(std::string(document::docx::Reference::kMostBytes + 1, 'x')),
            "The reference '@' cannot be used: the file is larger than 16 MiB.");
}

TEST(BrokenReference, OfAnyChangedByteIsAnErrorOrMakesWellFormedParts) {
  const std::string whole = referenceWithStyles(
      "<w:docDefaults/><w:style w:type='paragraph' w:default='1' w:styleId='N'><w:name w:val='Normal'/></w:style>"
      "<w:style w:styleId='H' w:type='paragraph'><w:name w:val='heading 1'/><w:basedOn w:val='N'/><w:pPr><w:tabs>"
      "<w:tab w:val='left' w:pos='1'/></w:tabs></w:pPr><w:rPr><w:color w:val='FF0000'/></w:rPr></w:style>");
  int good = 0;
  int bad = 0;
  for (std::size_t i = 0; i < whole.size() && !testing::Test::HasFailure(); ++i) {
    std::string changed = whole;
    changed[i] = static_cast<char>(changed[i] ^ (1 << (i % 8)));
    (stylesOrNothing(changed).empty() ? bad : good) += 1;
  }
  EXPECT_GT(good, 0);  // such as times of the parts
  EXPECT_GT(bad, good);
}

// The checksum hides changed XML from the reader, so here it is changed before it is packed.
TEST(BrokenReference, OfAnyChangedByteOfItsStylesIsAnErrorOrMakesWellFormedParts) {
  ReferenceParts parts = partsWithStyles(
      "<w:style w:type='paragraph' w:default='1' w:styleId='N'><w:name w:val='a&amp;b'/></w:style>"
      "<w:style w:styleId='H' w:type='paragraph'><w:name w:val='toc 1'/><w:basedOn w:val='N'/><w:pPr><w:tabs>"
      "<w:tab w:val='left' w:pos='1'/></w:tabs></w:pPr></w:style>");
  const std::string styles = parts[3].second;
  int good = 0;
  for (std::size_t i = 0; i < styles.size() && !testing::Test::HasFailure(); ++i) {
    parts[3].second = styles;
    parts[3].second[i] = static_cast<char>(styles[i] ^ (1 << (i % 5)));
    good += stylesOrNothing(referenceOfParts(parts)).empty() ? 0 : 1;
  }
  EXPECT_GT(good, 50);
}

}  // namespace scrivalen::test

#include "made_reference.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace scrivalen::test {
namespace {

constexpr std::string_view kRelationStart =
    "<Relationship Id=\"b\" Type=\"http://schemas.openxmlformats.org/"
    "officeDocument/2006/relationships/";
constexpr std::string_view kDrawing = " xmlns:q=\"http://schemas.openxmlformats.org/drawingml/2006/main\"";

// A reference with a further part of the main part.
std::string referenceWith(std::string_view type, const std::string& content) {
  ReferenceParts parts = partsWithStyles("");
  std::string& relations = parts[2].second;
  relations.insert(relations.find("</"),
                   std::string(kRelationStart).append(type).append("\" Target=\"other%20part.xml\"/>"));
  parts.emplace_back("a/other%20part.xml", content);
  return referenceOfParts(parts);
}

std::string themeOf(std::string_view fills) {
  return std::string("<q:theme name=\"N\"")
      .append(kDrawing)
      .append("><q:themeElements><q:clrScheme/><q:fontScheme/><q:fmtScheme><q:fillStyleLst>")
      .append(fills)
      .append("</q:fillStyleLst></q:fmtScheme></q:themeElements><q:objectDefaults><q:a/></q:objectDefaults></q:theme>");
}

bool names(const std::string& docx, std::string_view part, std::string_view text) {
  return partOf(docx, part).find(text) != std::string::npos;
}

}  // namespace

TEST(ReferenceParts, IncludeTheThemeWithoutPicturesAndWhatRefersToOthers) {
  const std::string docx = docxWithReference(referenceWith(
      "theme", themeOf("<q:solidFill/><q:blipFill><q:blip r:embed=\"rId1\" xmlns:r=\"urn:r\"/></q:blipFill>")));
  EXPECT_EQ(partOf(docx, "word/theme/theme1.xml"),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<a:theme xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" name=\"N\"><a:themeElements>"
            "<a:clrScheme/><a:fontScheme/><a:fmtScheme><a:fillStyleLst><a:solidFill/><a:solidFill>"
            "<a:schemeClr val=\"phClr\"/></a:solidFill></a:fillStyleLst></a:fmtScheme></a:themeElements></a:theme>\n");
  EXPECT_TRUE(names(docx, "word/_rels/document.xml.rels", "relationships/theme\" Target=\"theme/theme1.xml\""));
  EXPECT_TRUE(names(docx, "[Content_Types].xml",
                    "\"/word/theme/theme1.xml\" ContentType=\"application/"
                    "vnd.openxmlformats-officedocument.theme+xml\""));
  EXPECT_TRUE(names(docx, "word/settings.xml", "<w:clrSchemeMapping w:bg1=\"light1\""));
}

TEST(ReferenceParts, LeaveOutAThemeThatIsNotWhole) {
  const std::string docx = docxWithReference(
      referenceWith("theme", std::string("<q:theme").append(kDrawing).append("><q:themeElements/></q:theme>")));
  EXPECT_FALSE(names(docx, "[Content_Types].xml", "theme"));
  EXPECT_FALSE(names(docx, "word/_rels/document.xml.rels", "theme"));
}

TEST(ReferenceParts, IncludeTheFontsWithoutEmbeddedOnes) {
  const std::string docx = docxWithReference(referenceWith(
      "fontTable",
      "<w:fonts xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" xmlns:r=\"urn:r\">"
      "<w:font w:name=\"A\"><w:embedRegular r:id=\"1\"/><w:charset w:val=\"00\"/></w:font></w:fonts>"));
  EXPECT_TRUE(names(docx, "word/fontTable.xml", "<w:font w:name=\"A\"><w:charset w:val=\"00\"/></w:font>"));
  EXPECT_FALSE(names(docx, "word/fontTable.xml", "embed"));
  EXPECT_TRUE(names(docx, "word/_rels/document.xml.rels", "relationships/fontTable\" Target=\"fontTable.xml\""));
  EXPECT_TRUE(names(docx, "[Content_Types].xml", "\"/word/fontTable.xml\""));
}

TEST(ReferenceParts, AreOnlyThoseOfLooks) {
  EXPECT_EQ(partsOf(docxWithReference(referenceWith("settings", "<a/>"))),
            (std::vector<std::string>{"_rels/.rels", "docProps/core.xml", "word/document.xml", "word/styles.xml",
                                      "word/numbering.xml", "word/settings.xml", "word/_rels/document.xml.rels",
                                      "[Content_Types].xml"}));
}

TEST(ReferenceParts, LeaveAnEmptyPathWithoutAReference) {
  const auto content = [](document::Document& document) { document.paragraph("x"); };
  EXPECT_EQ(docxOf(content, {{"reference", ""}}), docxOf(content));
}

TEST(ReferenceParts, DoNotChangeThePaper) {
  const auto body = [](document::Document& document) { document.heading(1, "x"); };
  EXPECT_EQ(partWithReference(referenceWith("theme", themeOf("")), body, "word/document.xml"),
            partOf(docxOf(body), "word/document.xml"));
}

}  // namespace scrivalen::test

#include "made_reference.h"
#include "support/documents/templates.h"
#include "system/files/files.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace scrivalen::test {
namespace {

constexpr std::string_view kRedTitle =
    "<w:style w:type='paragraph' w:styleId='T'><w:name w:val='Title'/><w:rPr><w:color w:val='FF0000'/></w:rPr>"
    "</w:style>";

bool isTitleRed(const std::string& docx) {
  return styleIn(partOf(docx, "word/styles.xml"), "Title").find("FF0000") != std::string::npos;
}

}  // namespace

TEST(ReferenceFile, IsFoundInTheFolderOfTemplates) {
  const TemporaryTemplate reference(referenceWithStyles(kRedTitle));
  EXPECT_TRUE(isTitleRed(docxOf([](document::Document&) {}, {{"reference", narrowPath(reference.name())}})));
}

TEST(ReferenceFile, MayBeATemplateOfWord) {
  ReferenceParts parts = partsWithStyles(kRedTitle);
  parts.emplace_back(
      "[Content_Types].xml",
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Override PartName=\"/a/doc.xml\" "
      "ContentType=\"application/vnd.openxmlformats-officedocument.wordprocessingml.template.main+xml\"/></Types>");
  const TemporaryFolder folder;
  const std::wstring path = folder / L"company.dotx";
  writeBytes(path, referenceOfParts(parts));
  const std::string docx = docxOf([](document::Document&) {}, {{"reference", narrowPath(path)}});
  EXPECT_TRUE(isTitleRed(docx));
  const std::string types = partOf(docx, "[Content_Types].xml");
  EXPECT_NE(types.find("wordprocessingml.document.main+xml"), std::string::npos) << types;
  EXPECT_EQ(types.find("template"), std::string::npos) << types;
}

}  // namespace scrivalen::test

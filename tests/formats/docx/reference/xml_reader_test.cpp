#include "formats/docx/reference/xml_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace scrivalen::document::docx {
namespace {

constexpr std::string_view kText = " xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"";

// What a root with this content becomes.
std::string readContent(std::string_view content) {
  return xmlText(readXml(std::string("<w:a").append(kText).append(">").append(content).append("</w:a>")));
}

std::string problemOfXml(std::string_view text) {
  try {
    readXml(text);
    return {};
  } catch (const XmlError& error) {
    return error.what();
  }
}

std::string problemOfContent(std::string_view content) {
  return problemOfXml(std::string("<w:a").append(kText).append(">").append(content).append("</w:a>"));
}

}  // namespace

TEST(ReferenceXml, KeepsElementsAndAttributesThatTheLibraryKnows) {
  EXPECT_EQ(readContent("<w:b w:c='1' w:d = \"2\" e='3' ><w:e/>text</w:b >\n<w:f/>"),
            "<w:a><w:b w:c=\"1\" w:d=\"2\"><w:e/></w:b><w:f/></w:a>");
}

TEST(ReferenceXml, KnowsNamespacesByTheirNameRatherThanTheirPrefix) {
  EXPECT_EQ(xmlText(readXml("<styles xmlns='http://schemas.openxmlformats.org/wordprocessingml/2006/main' "
                            "xmlns:z='http://schemas.openxmlformats.org/drawingml/2006/main'><z:b c='1'/></styles>")),
            "<w:styles><a:b c=\"1\"/></w:styles>");
  EXPECT_EQ(readContent("<b xmlns='urn:b'><w:c/></b><w:d xmlns:w='urn:d'/><w:e x:f='1' xmlns:x='urn:f'/>"),
            "<w:a><w:e/></w:a>");
  EXPECT_EQ(readXml("<a xmlns='urn:a'/>").name, "?");
  EXPECT_EQ(problemOfContent("<x:b/>"), "is not well-formed XML");
}

TEST(ReferenceXml, ReadsTheFiveEntitiesAndNumbers) {
  EXPECT_EQ(readContent("<w:b w:c='&lt;&gt;&amp;&quot;&apos;&#65;&#x1F389;\n'/>&#9;&amp;"),
            "<w:a><w:b w:c=\"&lt;&gt;&amp;&quot;'A\xF0\x9F\x8E\x89 \"/></w:a>");
  for (const char* text : {"&eacute;", "&", "&#;", "&#x;", "&#0;", "&#xD800;", "&#x110000;", "&#99999999999999;",
                           "&#6F;", "<w:b c='&a;'/>", "&lt"}) {
    EXPECT_EQ(problemOfContent(text), "is not well-formed XML") << text;
  }
}

TEST(ReferenceXml, SkipsCommentsInstructionsAndSections) {
  EXPECT_EQ(readContent("<!-- <w:b> --><?c <w:d> ?><![CDATA[<w:e>]]><w:f/>"), "<w:a><w:f/></w:a>");
  EXPECT_EQ(
      xmlText(readXml("\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8' standalone='yes'?>\n<!-- a -->"
                      "<?b?><a xmlns='http://schemas.openxmlformats.org/package/2006/relationships'/>\n<!--c-->")),
      "<a/>");
}

TEST(ReferenceXml, RefusesDocumentTypes) {
  EXPECT_EQ(problemOfXml("<?xml version='1.0'?><!DOCTYPE a [<!ENTITY b 'c'>]><a/>"),
            "has a document type, which is not read");
}

TEST(ReferenceXml, ReadsTheEncodingsThatXmlReadersKnow) {
  const std::string start = "<a xmlns='http://schemas.openxmlformats.org/package/2006/relationships' b='";
  const std::string ascii = start + "x'/>";
  std::string utf16 = "\xFF\xFE";
  for (const char c : ascii) {
    utf16.append(1, c).append(1, '\0');
  }
  EXPECT_EQ(xmlText(readXml(utf16)), "<a b=\"x\"/>");
  EXPECT_EQ(xmlText(readXml("<?xml version='1.0' encoding='ISO-8859-1'?>" + start + "\xE9'/>")),
            "<a b=\"\xC3\xA9\"/>");
}

TEST(ReferenceXml, RefusesOtherEncodings) {
  EXPECT_EQ(problemOfXml("<?xml version='1.0' encoding='Shift_JIS'?><a/>"), "is in an encoding that is not read");
  EXPECT_EQ(problemOfXml("<a b='\xE9'/>"), "is not well-formed XML");
}

TEST(ReferenceXml, RefusesWhatIsNotWellFormed) {
  for (const char* text : {"",
                           "a",
                           "<",
                           "<a",
                           "<a>",
                           "</a>",
                           "<a></b>",
                           "<a/><b/>",
                           "<a/>b",
                           "<a b/>",
                           "<a b=c/>",
                           "<a b='1' b='2'/>",
                           "<a b='1'c='2'/>",
                           "<a b='<'/>",
                           "<a b='1/>",
                           "<1/>",
                           "<a:/>",
                           "<a:b:c/>",
                           "<a \x01/>",
                           "<a><!--</a>",
                           "<a><![CDATA[</a>",
                           "<a><!b></a>",
                           "< a/>",
                           "<a/ >",
                           "<a xmlns:b='u'><b:1/></a>"}) {
    EXPECT_EQ(problemOfXml(text), "is not well-formed XML") << text;
  }
}

TEST(ReferenceXml, RefusesTooManyElementsAndTooDeepOnes) {
  std::string deep;
  std::string many;
  for (std::size_t i = 0; i < kDeepestXml; ++i) {
    deep += "<w:b>";
  }
  for (std::size_t i = 0; i <= kMostXmlElements; ++i) {
    many += "<w:b/>";
  }
  EXPECT_EQ(problemOfContent(deep), "has too many elements, or too many in each other");
  EXPECT_EQ(problemOfContent(many), "has too many elements, or too many in each other");
}

TEST(ReferenceXml, RefusesTheStrictFormOfDocuments) {
  EXPECT_EQ(problemOfXml("<a xmlns='http://purl.oclc.org/ooxml/wordprocessingml/main'/>"),
            "is in the strict form of Office Open XML; save the document as an ordinary Word document");
}

}  // namespace scrivalen::document::docx

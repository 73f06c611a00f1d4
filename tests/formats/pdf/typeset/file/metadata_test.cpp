#include "formats/pdf/typeset/file/metadata.h"
#include "formats/pdf/typeset/made_pdf_file.h"
#include "formats/pdf/typeset/pdf_objects.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

using namespace scrivalen::typeset;
using namespace scrivalen::test;
using namespace std::string_view_literals;

namespace {

Metadata sample() { return {"Prices & costs", "J\xC3\xB6rg", "<none>", "tea, coffee", "de-AT", 1'700'000'000}; }

std::string informationOf(const Metadata& metadata) {
  MadePdfFile made;
  const int number = writeInformation(made.file, metadata);
  return PdfObjects(made.finished()).object(number);
}

std::string xmpOf(const Metadata& metadata) {
  MadePdfFile made;
  const int number = writeXmp(made.file, metadata);
  return PdfObjects(made.finished()).stream(number);
}

bool contains(const std::string& text, std::string_view part) { return text.find(part) != text.npos; }

}  // namespace

TEST(PdfInformation, HasWhatTheDocumentSaysOfItself) {
  EXPECT_EQ(informationOf(sample()),
            "<</Title(Prices & costs)/Author(\xFE\xFF\0J\0\xF6\0r\0g)/Subject(<none>)/Keywords(tea, coffee)"
            "/Creator(Scrivalen)/Producer(Scrivalen)/CreationDate(D:20231114221320Z)/ModDate(D:20231114221320Z)>>"sv);
}

TEST(PdfInformation, LeavesOutWhatIsEmpty) {
  EXPECT_EQ(informationOf({}),
            "<</Creator(Scrivalen)/Producer(Scrivalen)/CreationDate(D:19700101000000Z)/ModDate(D:19700101000000Z)>>");
}

TEST(PdfXmp, HasTheSameAsMarkup) {
  const std::string xmp = xmpOf(sample());
  EXPECT_EQ(xmp.substr(0, 20), "<?xpacket begin=\"\xEF\xBB\xBF");
  EXPECT_TRUE(contains(xmp, "<rdf:li xml:lang=\"x-default\">Prices &amp; costs</rdf:li></rdf:Alt></dc:title>"));
  EXPECT_TRUE(contains(xmp, "<dc:creator><rdf:Seq><rdf:li>J\xC3\xB6rg</rdf:li></rdf:Seq></dc:creator>"));
  EXPECT_TRUE(contains(xmp, "<rdf:li xml:lang=\"x-default\">&lt;none&gt;</rdf:li></rdf:Alt></dc:description>"));
  EXPECT_TRUE(contains(xmp, "<dc:language><rdf:Bag><rdf:li>de-AT</rdf:li></rdf:Bag></dc:language>"));
  EXPECT_TRUE(contains(xmp, "<pdf:Keywords>tea, coffee</pdf:Keywords>"));
  EXPECT_TRUE(contains(xmp, "<xmp:CreateDate>2023-11-14T22:13:20Z</xmp:CreateDate>"));
}

TEST(PdfXmp, LeavesOutWhatIsEmpty) {
  const std::string xmp = xmpOf({});
  EXPECT_FALSE(contains(xmp, "dc:title"));
  EXPECT_FALSE(contains(xmp, "dc:language"));
  EXPECT_TRUE(contains(xmp, "<xmp:ModifyDate>1970-01-01T00:00:00Z</xmp:ModifyDate>"));
}

TEST(PdfXmp, IsReadableWithoutAPdfReader) {
  MadePdfFile made;
  writeXmp(made.file, sample());
  const std::string bytes = made.finished();
  EXPECT_TRUE(contains(bytes, "<</Type/Metadata/Subtype/XML/Length "));
  EXPECT_TRUE(contains(bytes, "Prices &amp; costs"));
}

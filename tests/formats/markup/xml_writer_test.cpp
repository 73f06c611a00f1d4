#include "formats/markup/xml_writer.h"

#include "document/pictures/picture.h"
#include "support/documents/made_document.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

using namespace scrivalen;
using namespace scrivalen::document;
using scrivalen::test::MadeDocument;

namespace {

const Format kXml{"xml", &createXmlDocumentWriter};

class XmlDocument : public MadeDocument {
 public:
  XmlDocument() : MadeDocument(kXml) { set("clock", "2026-01-31 23:59:59"); }

  // What is between the root's tags.
  std::string content() {
    const std::string& all = bytes();
    const std::size_t begin = all.find(">\n", all.find("<document")) + 2;
    return all.substr(begin, all.rfind("</document>") - begin);
  }
};

Column columnOf(std::string_view name, ValueType type = ValueType::Auto, ValueFormat format = {}) {
  Column column;
  column.name = name;
  column.type = type;
  column.format = format;
  return column;
}

}  // namespace

TEST(XmlDocumentWriter, WritesAnEmptyDocument) {
  XmlDocument document;
  EXPECT_EQ(document.bytes(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<document xmlns=\"urn:scrivalen:document:1\" language=\"en\" created=\"2026-01-31T23:59:59Z\">\n"
            "</document>\n");
}

TEST(XmlDocumentWriter, WritesTheSettingsAsAttributesAndProperties) {
  XmlDocument document;
  document.set("title", "A \"title\" & more");
  document.set("author", "Ann");
  document.set("language", "de-AT");
  document.set("date", "31 January");
  document.set("property:Order", "<7>");
  document.heading(1, "One");
  EXPECT_EQ(document.bytes(),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<document xmlns=\"urn:scrivalen:document:1\" title=\"A &quot;title&quot; &amp; more\" author=\"Ann\""
            " language=\"de-AT\" date=\"31 January\" created=\"2026-01-31T23:59:59Z\">\n"
            "<property name=\"Order\">&lt;7&gt;</property>\n"
            "<heading level=\"1\" id=\"one\">One</heading>\n"
            "</document>\n");
}

TEST(XmlDocumentWriter, WritesALineForEachBlock) {
  XmlDocument document;
  document.set("title", "Report");
  document.beginSection("May", "may");
  document.beginParagraph(Align::Right);
  document.text("two\nlines");
  document.end();
  document.beginQuote();
  document.paragraph("said");
  document.beginQuote();
  document.end();
  document.end();
  document.rule();
  document.pageBreak();
  document.beginCode("cpp");
  document.text("if (a < b)\n\treturn;\n");
  document.end();
  EXPECT_EQ(document.content(),
            "<section name=\"May\" id=\"may\">\n"
            "<title>Report</title>\n"
            "<paragraph align=\"right\">two<br/>lines</paragraph>\n"
            "<quote>\n<paragraph>said</paragraph>\n<quote></quote>\n</quote>\n"
            "<rule/>\n<pagebreak/>\n"
            "<code language=\"cpp\">if (a &lt; b)\n\treturn;\n</code>\n"
            "</section>\n");
}

TEST(XmlDocumentWriter, WritesListsAndTasks) {
  XmlDocument document;
  document.beginList(true, 0, false);
  document.beginItem(Task::None);
  document.paragraph("first");
  document.end();
  document.end();
  document.beginList(false, 0, true);
  document.beginItem(Task::Done);
  document.text("done");
  document.end();
  document.beginItem(Task::Open);
  document.end();
  EXPECT_EQ(document.content(),
            "<list ordered=\"true\" first=\"0\">\n<item>\n<paragraph>first</paragraph>\n</item>\n</list>\n"
            "<list tight=\"true\">\n<item task=\"done\">done</item>\n<item task=\"open\"></item>\n</list>\n");
}

TEST(XmlDocumentWriter, PutsNoLineFeedIntoTheTextOfAnItem) {
  XmlDocument document;
  document.beginList(false, 0, true);
  document.beginItem(Task::None);
  document.text("before");
  document.beginList(false, 0, true);
  document.beginItem(Task::None);
  document.text("inner");
  document.end();
  document.end();
  document.text("after");
  EXPECT_EQ(document.content(),
            "<list tight=\"true\">\n<item>before<list tight=\"true\">\n<item>inner</item>\n</list>after</item>\n"
            "</list>\n");
}

TEST(XmlDocumentWriter, WritesSpans) {
  XmlDocument document;
  document.beginParagraph(Align::Auto);
  for (const Span span : {Span::Strong, Span::Emphasis, Span::Code, Span::Deleted, Span::Underlined, Span::Superscript,
                          Span::Subscript}) {
    document.addSpan(span, "x");
  }
  document.beginColored(0x00FF00, std::nullopt);
  document.beginSized(7.5);
  document.beginLanguage("fr");
  document.text("mot");
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.content(),
            "<paragraph><strong>x</strong><emphasis>x</emphasis><inlinecode>x</inlinecode><deleted>x</deleted>"
            "<underlined>x</underlined><superscript>x</superscript><subscript>x</subscript>"
            "<colored color=\"#00FF00\"><sized points=\"7.5\"><lang tag=\"fr\">mot</lang></sized></colored>"
            "</paragraph>\n");
}

TEST(XmlDocumentWriter, WritesLinksAndAnchors) {
  XmlDocument document;
  document.anchor("top");
  document.beginParagraph(Align::Auto);
  document.beginLink("https://example.org/?a=1&b=\"2\"", "An <example>");
  document.text("link");
  document.end();
  document.anchor("here");
  document.end();
  EXPECT_EQ(document.content(),
            "<anchor id=\"top\"/>\n"
            "<paragraph><link address=\"https://example.org/?a=1&amp;b=&quot;2&quot;\" title=\"An &lt;example&gt;\">"
            "link</link><anchor id=\"here\"/></paragraph>\n");
}

TEST(XmlDocumentWriter, LeavesOutAnAddressThatMayRunAProgram) {
  XmlDocument document;
  document.beginParagraph(Align::Auto);
  document.beginLink("JavaScript:alert(1)", {});
  document.text("link");
  document.end();
  document.end();
  EXPECT_EQ(document.content(), "<paragraph><link>link</link></paragraph>\n");
  EXPECT_EQ(document.warnings(), "1 x the address of a link that may run a program\n");
}

TEST(XmlDocumentWriter, WritesTheContents) {
  XmlDocument document;
  document.beginContents();
  document.contentsItem(2, "prices", "Prices & more");
  document.end();
  document.heading(2, "Prices");
  EXPECT_EQ(document.content(),
            "<contents>\n<entry level=\"2\" id=\"prices\">Prices &amp; more</entry>\n</contents>\n"
            "<heading level=\"2\" id=\"prices\">Prices</heading>\n");
}

TEST(XmlDocumentWriter, WritesPictures) {
  XmlDocument document;
  std::string reason;
  const std::string png = test::greyPng(1, 1);
  document.image(Picture::read(png, reason), "a dot", 12, {});
  document.image(nullptr, "a map", 0, "there is no map");
  const std::string content = document.content();
  EXPECT_EQ(content.substr(0, 77),
            "<paragraph><image alternative=\"a dot\" width=\"12\" media=\"image/png\">iVBORw0KGg");
  EXPECT_EQ(content.substr(content.find('\n') + 1), "<paragraph><image alternative=\"a map\"/></paragraph>\n");
}

TEST(XmlDocumentWriter, PassesOnMarkupOfItsOwn) {
  XmlDocument document;
  document.raw("xml", "<x:mark xmlns:x=\"urn:x\">&amp;</x:mark>");
  document.beginParagraph(Align::Auto);
  document.text("a");
  document.raw("html", "<hr>");
  document.raw("xml", "<y xmlns=\"\"/>");
  document.end();
  EXPECT_EQ(document.content(), "<x:mark xmlns:x=\"urn:x\">&amp;</x:mark>\n<paragraph>a<y xmlns=\"\"/></paragraph>\n");
}

TEST(XmlDocumentTable, NamesCellsAsTheirColumns) {
  XmlDocument document;
  document.beginTable({columnOf("item"), columnOf("Net amount"), columnOf("")}, "prices");
  document.addRow({"Item", "Amount", "Note"}, true);
  document.addRow({"Bolt", "7", "a < b"});
  EXPECT_EQ(document.content(),
            "<table name=\"prices\">\n"
            "<column name=\"item\" align=\"left\"/>\n"
            "<column name=\"Net amount\" element=\"Net_amount\" align=\"right\"/>\n"
            "<column element=\"cell\" align=\"left\"/>\n"
            "<row header=\"true\"><item>Item</item><Net_amount>Amount</Net_amount><cell>Note</cell></row>\n"
            "<row><item>Bolt</item><Net_amount>7</Net_amount><cell>a &lt; b</cell></row>\n"
            "</table>\n");
}

TEST(XmlDocumentTable, MendsNamesThatXmlDoesNotAllow) {
  XmlDocument document;
  document.beginTable({columnOf("2nd"), columnOf("a:b"), columnOf("><"), columnOf("Preis \xC2\xA7")}, {});
  document.addRow({"1", "2", "3", "4"});
  const std::string content = document.content();
  EXPECT_EQ(content.substr(content.find("<row>")),
            "<row><_2nd>1</_2nd><a_b>2</a_b><__>3</__><Preis__>4</Preis__></row>\n</table>\n");
}

TEST(XmlDocumentTable, CleansTheNamesOfColumns) {
  XmlDocument document;
  document.beginTable({columnOf("a\xFF\nb\x01")}, {});
  EXPECT_EQ(document.content(),
            "<table>\n"
            "<column name=\"a\xEF\xBF\xBD b\xEF\xBF\xBD\" element=\"a\xEF\xBF\xBD_b\xEF\xBF\xBD\" align=\"left\"/>\n"
            "</table>\n");
}

TEST(XmlDocumentTable, WritesNamesOfAnyLength) {
  const std::string name(100, 'n');
  XmlDocument document;
  document.beginTable({columnOf(name)}, {});
  document.addRow({"1"});
  const std::string content = document.content();
  EXPECT_EQ(content.substr(content.find("<row>")), "<row><" + name + ">1</" + name + "></row>\n</table>\n");
}

TEST(XmlDocumentTable, WritesWhatIsSpecialAboutACell) {
  XmlDocument document;
  document.beginTable({columnOf("a"), columnOf("b"), columnOf("c")}, {});
  document.beginRow(false);
  document.beginCell({.header = true, .align = Align::Center, .span = 2, .color = 0xFF, .background = 0xFFFFFF});
  document.text("wide");
  document.end();
  document.beginCell({});
  document.text("see ");
  document.addSpan(Span::Strong, "this\nand that");
  document.end();
  document.end();
  const std::string content = document.content();
  EXPECT_EQ(content.substr(content.find("<row>")),
            "<row><a header=\"true\" span=\"2\" align=\"center\" color=\"#0000FF\" background=\"#FFFFFF\">wide</a>"
            "<c>see <strong>this<br/>and that</strong></c></row>\n</table>\n");
}

TEST(XmlDocumentTable, WritesValuesInThePlainFormOnce) {
  XmlDocument document;
  document.beginTable({columnOf("a", ValueType::Number), columnOf("b"), columnOf("c"), columnOf("d")}, {});
  document.beginRow(false);
  document.value(ValueType::Number, 1234.5, 0);
  document.value(ValueType::Date, 0, 20484);
  document.value(ValueType::Time, 0, 1769903999);
  document.value(ValueType::Boolean, 0, 1);
  document.end();
  const std::string content = document.content();
  EXPECT_EQ(content.substr(content.find("<column"), 46), "<column name=\"a\" type=\"number\" align=\"right\"/>");
  EXPECT_EQ(content.substr(content.find("<row>")),
            "<row><a>1234.5</a><b>2026-01-31</b><c>2026-01-31 23:59:59</c><d>true</d></row>\n</table>\n");
}

TEST(XmlDocumentTable, KeepsValuesThatPeopleSeeInAnotherForm) {
  XmlDocument document;
  document.set("numbers", "1.234,5");
  document.set("dates", "dd.mm.yyyy");
  document.beginTable({columnOf("a"), columnOf("b"), columnOf("c"), columnOf("d"), columnOf("e")}, {});
  document.beginRow(false);
  document.value(ValueType::Number, 1234.5, 0);
  document.value(ValueType::Integer, 0, 12);
  document.value(ValueType::Date, 0, 20484);
  document.value(ValueType::Time, 0, 1769903999);
  document.value(ValueType::Boolean, 0, 0);
  document.end();
  const std::string content = document.content();
  EXPECT_EQ(content.substr(content.find("<row>")),
            "<row><a type=\"number\" value=\"1234.5\">1.234,5</a><b>12</b>"
            "<c type=\"date\" value=\"2026-01-31\">31.01.2026</c>"
            "<d type=\"time\" value=\"2026-01-31 23:59:59\">31.01.2026 23:59:59</d><e>false</e></row>\n</table>\n");
}

TEST(XmlDocumentTable, KeepsValuesThatAColumnShowsInAnotherForm) {
  XmlDocument document;
  document.beginTable({columnOf("rate", ValueType::Auto, ValueFormat::of("0.0%").value()),
                       columnOf("cost", ValueType::Auto, ValueFormat(2))},
                      {});
  document.beginRow(false);
  document.value(ValueType::Number, 0.125, 0);
  document.value(ValueType::Number, 7.25, 0);
  document.end();
  const std::string content = document.content();
  EXPECT_EQ(content.substr(content.find("<row>")),
            "<row><rate type=\"number\" value=\"0.125\">12.5%</rate><cost>7.25</cost></row>\n</table>\n");
}

TEST(XmlDocumentTable, WritesATextOfAnyLength) {
  const std::string text(300000, '&');
  XmlDocument document;
  document.beginTable({columnOf("a")}, {});
  document.addRow({text});
  std::string escaped;
  for (std::size_t i = 0; i < text.size(); ++i) {
    escaped += "&amp;";
  }
  const std::string content = document.content();
  EXPECT_EQ(content.substr(content.find("<row>")), "<row><a>" + escaped + "</a></row>\n</table>\n");
}

TEST(XmlDocumentTable, StandsInAnItem) {
  XmlDocument document;
  document.beginList(false, 0, false);
  document.beginItem(Task::None);
  document.text("see");
  document.beginTable({columnOf("a")}, {});
  document.addRow({"1"});
  EXPECT_EQ(document.content(),
            "<list>\n<item>see<table>\n<column name=\"a\" align=\"right\"/>\n<row><a>1</a></row>\n</table>\n</item>\n"
            "</list>\n");
}

#include "html_page_maker.h"

#include "document/document.h"
#include "document/pictures/picture.h"
#include "support/files.h"
#include "system/files/files.h"

namespace scrivalen::document {
namespace {

using test::TemporaryFolder;
using test::writeBytes;

constexpr Format kHtml{"html", &createHtmlDocumentWriter};

int append(void* bytes, const void* data, std::size_t size) {
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(data), size);
  return 0;
}

// The page that calls of the document make.
HtmlResult pageOf(const std::function<void(Document&)>& write, const SettingList& list = {}) {
  HtmlResult result;
  Document document;
  EXPECT_EQ(document.addStream(kHtml, &append, &result.page), Status::Ok);
  for (const auto& [name, value] : list) {
    EXPECT_EQ(document.set(name, value), Status::Ok) << document.error();
  }
  write(document);
  EXPECT_EQ(document.close(), Status::Ok) << document.error();
  while (const Warning* const warning = document.nextWarning()) {
    result.warnings.push_back(*warning);
  }
  return result;
}

std::shared_ptr<const Picture> pixel() {
  std::string reason;
  return Picture::read("\x89PNG\r\n\x1A\n" +
                           std::string("\0\0\0\rIHDR\0\0\0\x01\0\0\0\x01\x08\0\0\0\0\x3A\x7E\x9B\x55", 25) +
                           std::string("\0\0\0\nIDAT\x78\x9C\x63\x60\0\0\0\x02\0\x01\x48\xAF\xA4\x71", 22) +
                           std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12),
                       reason);
}

void writeSpans(Document& document) {
  document.beginParagraph(Align::Center);
  for (const Span span : {Span::Strong, Span::Emphasis, Span::Code, Span::Deleted, Span::Underlined, Span::Superscript,
                          Span::Subscript}) {
    document.beginSpan(span);
    document.text("<a>");
    document.end();
  }
  document.lineBreak();
  document.beginColored(0xB00020, 0xFFF4C2);
  document.beginSized(14.5);
  document.text("b");
  document.end();
  document.end();
  document.beginLanguage("he");
  document.text("\xD7\xA9");
  document.end();
  document.beginLink("https://example.org/?a=1&b=2", "t");
  document.text("c");
  document.end();
  document.anchor("here");
  document.image(pixel(), "a dot", 30, "");
  document.raw("html", "<wbr>");
  document.raw("rtf", "\\par");
  document.end();
}

void writeLists(Document& document) {
  document.beginList(true, 3, true);
  document.beginItem(Task::None);
  document.text("d");
  document.beginList(false, 1, false);
  document.beginItem(Task::Done);
  document.paragraph("e");
  document.beginCode("c++");
  document.text("if (a < b)\r\n\treturn;");
  document.end();
  document.end();
  document.end();
  document.end();
  document.beginItem(Task::Open);
  document.text("f");
  document.end();
  document.end();
}

void writeTable(Document& document) {
  Column sum;
  sum.type = ValueType::Number;
  sum.format = ValueFormat(2);
  document.beginTable({Column(), sum}, "Sums");
  document.beginRow(true);
  document.cell("Day");
  document.cell("Sum");
  document.end();
  document.beginRow(false);
  document.value(ValueType::Date, 0, 20000);
  document.value(ValueType::Number, 1234.5, 0);
  document.end();
  document.beginRow(false);
  document.beginCell({.header = true, .align = Align::Center, .span = 2, .color = 0xFF});
  document.beginSpan(Span::Strong);
  document.text("g");
  document.end();
  document.end();
  document.end();
  document.end();
}

TEST(HtmlDocuments, ContainEveryKindOfPart) {
  const HtmlResult result = pageOf([](Document& document) {
    document.beginContents();
    document.contentsItem(1, "part-one", "Part one");
    document.contentsItem(2, "here", "Here");
    document.end();
    document.beginSection("First", "s1");
    document.heading(1, "Part one");
    writeSpans(document);
    document.rule();
    document.beginQuote();
    document.paragraph("quoted");
    document.end();
    writeLists(document);
    document.end();
    document.pageBreak();
    writeTable(document);
  });
  EXPECT_EQ(
      result.body(),
      "<nav>\n"
      "<ol>\n"
      "<li><a href=\"#part-one\">Part one</a>\n"
      "<ol>\n"
      "<li><a href=\"#here\">Here</a></li>\n"
      "</ol>\n"
      "</li>\n"
      "</ol>\n"
      "</nav>\n"
      "<section id=\"s1\" aria-label=\"First\">\n"
      "<h1 id=\"part-one\">Part one</h1>\n"
      "<p style=\"text-align:center\"><strong>&lt;a&gt;</strong><em>&lt;a&gt;</em><code>&lt;a&gt;</code>"
      "<del>&lt;a&gt;</del><u>&lt;a&gt;</u><sup>&lt;a&gt;</sup><sub>&lt;a&gt;</sub><br>\n"
      "<span style=\"color:#b00020;background-color:#fff4c2\"><span style=\"font-size:14.5pt\">b</span></span>"
      "<span lang=\"he\" dir=\"rtl\">\xD7\xA9</span>"
      "<a href=\"https://example.org/?a=1&amp;b=2\" title=\"t\">c</a>"
      "<span id=\"here\"></span>"
      "<img src=\"data:image/png;base64,"
      "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGNgAAAAAgABSK+kcQAAAABJRU5ErkJggg==\""
      " alt=\"a dot\" width=\"40\"><wbr></p>\n"
      "<hr>\n"
      "<blockquote>\n"
      "<p>quoted</p>\n"
      "</blockquote>\n"
      "<ol start=\"3\">\n"
      "<li>d\n"
      "<ul>\n"
      "<li class=\"task\"><p><input type=\"checkbox\" checked disabled> e</p>\n"
      "<pre><code class=\"language-c++\">if (a &lt; b)\n\treturn;</code></pre>\n"
      "</li>\n"
      "</ul>\n"
      "</li>\n"
      "<li class=\"task\"><input type=\"checkbox\" disabled> f</li>\n"
      "</ol>\n"
      "</section>\n"
      "<div style=\"break-after:page\"></div>\n"
      "<table>\n"
      "<thead>\n"
      "<tr><th scope=\"col\">Day</th><th scope=\"col\" style=\"text-align:right\">Sum</th></tr>\n"
      "</thead>\n"
      "<tbody>\n"
      "<tr><td class=\"date\">2024-10-04</td><td style=\"text-align:right\">1234.50</td></tr>\n"
      "<tr><th scope=\"row\" colspan=\"2\" style=\"text-align:center;color:#0000ff\"><strong>g</strong></th></tr>\n"
      "</tbody>\n"
      "</table>\n");
  EXPECT_TRUE(result.warnings.empty());
}

// Text that would end an attribute, a tag or an element if it were not escaped.
constexpr std::string_view kHostile = "\"'><script>&lt;\x01\n";

TEST(HtmlDocuments, EscapeHostileTextsInTheirHead) {
  const std::string hostile(kHostile);
  const std::string page =
      pageOf([](Document& document) { document.rule(); },
             {{"title", hostile}, {"author", hostile}, {"subject", hostile}, {"keywords", hostile}, {"date", hostile}})
          .page;
  const std::string escaped = "&quot;'&gt;&lt;script&gt;&amp;lt;\xEF\xBF\xBD ";
  for (const std::string_view name : {"author", "description", "keywords", "dcterms.date"}) {
    const std::string meta = "<meta name=\"" + std::string(name) + "\" content=\"" + escaped + "\">\n";
    EXPECT_NE(page.find(meta), std::string::npos) << page.substr(0, 1000);
  }
  EXPECT_NE(page.find("<title>" + escaped + "</title>\n"), std::string::npos) << page.substr(0, 1000);
  EXPECT_EQ(page.find("<script"), std::string::npos);
}

TEST(HtmlDocuments, CannotBeLeftByHostileHeadersFontsAndPictures) {
  const std::string hostile = "\"}</style><script>\\";
  const std::string page = pageOf([](Document& document) { document.rule(); },
                                  {{"title", "t"}, {"header", hostile}, {"font", hostile}, {"header-image", hostile}})
                               .page;
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_EQ(page.find("</style"), page.rfind("</style"));
  EXPECT_NE(page.find("@top-left{content:\"\\22 }\\3C /style>\\3C script>\\5C \"}\n"), std::string::npos) << page;
}

TEST(HtmlDocuments, EscapeHostileTextsInEveryAttribute) {
  const std::string hostile(kHostile);
  const HtmlResult result = pageOf([&](Document& document) {
    document.beginSection(hostile, "s" + hostile);
    document.beginHeading(2, "h" + hostile, Align::Auto);
    document.text("h");
    document.end();
    document.beginParagraph(Align::Auto);
    document.anchor("a" + hostile);
    document.beginLink("https://example.org/" + hostile, hostile);
    document.image(pixel(), hostile, 0.75, "");
    document.end();
    document.beginLink("#a" + hostile, "");
    document.end();
    document.end();
    document.beginCode(hostile);
    document.end();
    document.end();
  });
  const std::string quoted = "&quot;'&gt;&lt;script&gt;&amp;lt;\xEF\xBF\xBD";
  const std::string encoded = "%22'%3E%3Cscript%3E&amp;lt;\xEF\xBF\xBD";
  EXPECT_EQ(result.body(),
            "<section id=\"s" + quoted + "~20\" aria-label=\"" + quoted + " \">\n" + "<h2 id=\"h" + quoted +
                "~20\">h</h2>\n" + "<p><span id=\"a" + quoted + "~20\"></span>" + "<a href=\"https://example.org/" +
                encoded + "\" title=\"" + quoted + " \">" +
                "<img src=\"data:image/png;base64,"
                "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAAAAAA6fptVAAAACklEQVR4nGNgAAAAAgABSK+kcQAAAABJRU5ErkJggg==\""
                " alt=\"" +
                quoted + " \" width=\"1\"></a>" + "<a href=\"#a" + encoded + "~20\"></a></p>\n" +
                "<pre><code class=\"language-" + quoted + "\"></code></pre>\n" + "</section>\n");
}

TEST(HtmlDocuments, EscapeHostileLanguages) {
  const HtmlResult result = pageOf([](Document& document) {
    EXPECT_EQ(document.set("language", kHostile), Status::UnknownSetting);
    document.beginParagraph(Align::Auto);
    document.beginLanguage(kHostile);
    document.text("x");
    document.end();
    document.end();
  });
  EXPECT_NE(result.page.find("<html lang=\"en\">"), std::string::npos);
  EXPECT_EQ(result.body(), "<p><span lang=\"&quot;'&gt;&lt;script&gt;&amp;lt;\xEF\xBF\xBD \">x</span></p>\n");
}

TEST(HtmlDocuments, EscapeHostilePropertiesInATemplate) {
  const TemporaryFolder folder;
  writeBytes(folder / L"page.htm", "<p title=\"%X%\">%BODY%</p>%TITLE%%Y%");
  const std::string hostile(kHostile);
  EXPECT_EQ(pageOf([](Document& document) { document.rule(); }, {{"template", narrowPath(folder / L"page.htm")},
                                                                 {"title", "%BODY%"},
                                                                 {"property:X", hostile},
                                                                 {"property:Y", "%X%"}})
                .page,
            "<p title=\"&quot;'&gt;&lt;script&gt;&amp;lt;\xEF\xBF\xBD \">"
            "<h1 class=\"title\">%BODY%</h1>\n<hr>\n</p>%BODY%%X%");
}

}  // namespace
}  // namespace scrivalen::document

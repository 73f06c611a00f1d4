#include "formats/markup/html.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace {

struct Memory : OutputFile {
  void Write(const void* data, std::size_t size) override { bytes.append(static_cast<const char*>(data), size); }
  std::string bytes;
};

template <typename Action>
std::string written(Action action) {
  Memory file;
  HTML html;
  html.Open(file);
  action(html);
  EXPECT_TRUE(html.Flush());
  return file.bytes;
}

}  // namespace

TEST(HtmlWriter, WritesACompleteHeadWithTheEscapedTitle) {
  const std::string head = written([](HTML& html) { html.Head(L"Q1 & <Q2>", nullptr, 1); });
  EXPECT_TRUE(head.starts_with("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"));
  EXPECT_NE(head.find("<title>Q1 &amp; &lt;Q2&gt;</title>\n"), std::string::npos);
  EXPECT_NE(head.find("<style>\n"), std::string::npos);
  EXPECT_TRUE(head.ends_with("</style>\n</head>\n<body>\n"));
}

TEST(HtmlWriter, WritesNoTitleWhenItIsNull) {
  const std::string head = written([](HTML& html) { html.Head(nullptr, nullptr, 1); });
  EXPECT_EQ(head.find("title"), std::string::npos);
}

TEST(HtmlWriter, WritesTheXmlDeclaration) {
  EXPECT_EQ(written([](HTML& html) { html.HeadXML(); }), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
}

TEST(HtmlWriter, WritesTextUnchanged) {
  EXPECT_EQ(written([](HTML& html) { html.Text(L"<b>&\u20AC"); }), "<b>&\xE2\x82\xAC");
}

TEST(HtmlWriter, WritesTagsWithAndWithoutAnAttribute) {
  EXPECT_EQ(written([](HTML& html) {
              html.OpenTag(L"OBJECT", L"type", L"text/sitemap");
              html.OpenTag(L"row", nullptr, nullptr);
              html.CloseTag(L"row");
            }),
            "<OBJECT type=\"text/sitemap\"><row></row>");
}

TEST(HtmlWriter, WritesAnElementWithItsContentEscaped) {
  EXPECT_EQ(written([](HTML& html) { html.Tag(L"cell", L"a<b &amp; c", L"", L""); }), "<cell>a&lt;b &amp; c</cell>");
  EXPECT_EQ(written([](HTML& html) { html.Tag(L"cell", nullptr, L"", L""); }), "<cell></cell>");
}

TEST(HtmlWriter, WritesTheTagsOfATable) {
  EXPECT_EQ(written([](HTML& html) {
              html.Table(1, -1, L"class=\"x\"");
              html.Table(1, -1, L"");
              html.Table(1, -1, nullptr);
              html.Table(0, 1, nullptr);
            }),
            "<table class=\"x\"><table><table></table>");
}

TEST(HtmlWriter, EndsAPage) {
  EXPECT_EQ(written([](HTML& html) { html.Close(1); }), "</body></html>\n");
}

TEST(HtmlWriter, QuotesAText) { EXPECT_EQ(HTML::Quoting(L"a<\"b\">&'", 1), L"a&lt;&quot;b&quot;&gt;&amp;'"); }

TEST(HtmlWriter, WritesNumbers) {
  EXPECT_EQ(written([](HTML& html) { html.Number(-2147483647 - 1); }), "-2147483648");
}

TEST(HtmlWriter, WritesNothingWithoutAFile) {
  HTML html;
  html.Text(L"lost");
  EXPECT_TRUE(html.Close(1));
}

TEST(HtmlWriter, SharesItsFileWithACopy) {
  Memory file;
  HTML first;
  first.Open(file);
  first.Text(L"one ");
  HTML second = first;
  second.Text(L"two ");
  first.Text(L"three");
  EXPECT_TRUE(first.Flush());
  EXPECT_EQ(file.bytes, "one two three");
}

TEST(HtmlWriter, StoresTheExceptionOfTheHostsFile) {
  struct Raising : OutputFile {
    void Write(const void*, std::size_t) override { throw std::runtime_error("socket closed"); }
  } file;
  HTML html;
  html.Open(file);
  html.Text(L"x");
  EXPECT_FALSE(html.Flush());
  EXPECT_EQ(html.Error(), L"socket closed");
}

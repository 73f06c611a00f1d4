#include "markup_check.h"

#include <gtest/gtest.h>

// The checks that the fuzzers apply to reports.
namespace scrivalen::fuzz {
namespace {

bool isXml(const std::string& content) {
  return problemOfXml("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + content).empty();
}

bool isSafe(const std::string& content) { return problemOfPages("<body><main>" + content + "</main>").empty(); }

TEST(MarkupCheck, AcceptsXmlAsReportsWriteIt) {
  EXPECT_TRUE(isXml("<report>\r\n<a-b.c>\xC3\xA9 &amp; &#65; &#x1F600; ] ></a-b.c><\xC3\xA9></\xC3\xA9></report>"));
}

TEST(MarkupCheck, RejectsXmlElementsThatDoNotNest) {
  for (const char* content : {"", "<a>", "</a>", "<a></b>", "<a><b></a></b>", "<a></a><b></b>", "<a></a>x"}) {
    EXPECT_FALSE(isXml(content)) << content;
  }
}

TEST(MarkupCheck, RejectsInvalidXmlNames) {
  for (const char* name : {"", "1", "-a", "a b", "a<", "\xC3\x97", "\xC3"}) {
    EXPECT_FALSE(isXml(std::string("<") + name + "></" + name + ">")) << name;
  }
}

TEST(MarkupCheck, RejectsInvalidXmlText) {
  for (const char* text : {"&", "&nbsp;", "&#0;", "&#xD800;", "&#;", "&#x1G;", "&amp", "]]>", "\x01", "\xC3",
                           "\xED\xA0\x80", "\xEF\xBF\xBE", "\xC0\x80", "\xF4\x90\x80\x80"}) {
    EXPECT_FALSE(isXml(std::string("<a>") + text + "</a>")) << text;
  }
}

TEST(MarkupCheck, AcceptsPagesAsTheCommandWritesThem) {
  EXPECT_TRUE(
      isSafe("<p>a<br>b <a href=\"x\" title=\"&lt;\">c</a></p><img src=\"data:image/png;,\" alt=\"\">"
             "<li><input type=\"checkbox\" checked disabled> d</li>"));
}

TEST(MarkupCheck, AcceptsAddressesWithoutAScheme) {
  EXPECT_TRUE(isSafe("<a href=\"javascript\">a</a><a href=\"vbscript\">b</a><a href=\"data\">c</a>"));
}

TEST(MarkupCheck, RejectsPagesThatRunPrograms) {
  for (const char* content :
       {"<script></script>", "<style></style>", "<p onclick=\"x\"></p>", "<a href=\"javascript:x\"></a>",
        "<a href=\" Java\tScript:x\"></a>", "<a href=\"&#106;avascript:x\"></a>", "<a href=\"data:x\"></a>",
        "<img src=\"vbscript:x\">", "<!-- x -->"}) {
    EXPECT_FALSE(isSafe(content)) << content;
  }
}

TEST(MarkupCheck, ChecksEachOfSeveralPages) {
  EXPECT_TRUE(isSafe("a</main></body><body><main>b"));
  EXPECT_FALSE(isSafe("a</main></body><body><main><svg>b</svg>"));
}

TEST(MarkupCheck, MarksTheTagsThatBeginElements) {
  EXPECT_EQ(withMarkedTags(""), "");
  EXPECT_EQ(withMarkedTags("a <b>c</b> <br/> <x-y\nz>"), "a <b from-input>c</b> <br from-input/> <x-y from-input\nz>");
  EXPECT_EQ(withMarkedTags("<<a>b> <c"), "<<a from-input>b> <c from-input");
  EXPECT_EQ(withMarkedTags("< a> <a:b> <!-- --> 1<"), "< a> <a:b> <!-- --> 1<");
}

TEST(MarkupCheck, RejectsMarkedTags) {
  for (const char* content : {"<b>a</b>", "<p>a</p>", "<br>", "<br/>", "<table></table>", "<x-y></x-y>"}) {
    EXPECT_FALSE(isSafe(withMarkedTags(content))) << content;
  }
  EXPECT_FALSE(isXml(withMarkedTags("<b>a</b>")));
}

TEST(MarkupCheck, RejectsEverySchemeThatRunsPrograms) {
  for (const std::string scheme :
       {".uno",      "about",       "feed",       "hcp",        "help",        "intent",
        "its",       "jar",         "javascript", "livescript", "macro",       "mhtml",
        "mk",        "mocha",       "mshelp",     "private",    "res",         "search",
        "search-ms", "service",     "shell",      "slot",       "url",         "vbs",
        "vbscript",  "view-source", "wyciwyg",    "ms-msdt",    "ms-settings", "vnd.sun.star.script"}) {
    EXPECT_FALSE(isSafe("<a href=\"" + scheme + ":x\"></a>")) << scheme;
  }
  EXPECT_TRUE(isSafe(
      "<a href=\"https://x\"></a><a href=\"mailto:x\"></a><a href=\"msdn:x\"></a><a href=\"ms-\xEF\xBF\xBD:x\"></a>"));
}

TEST(MarkupCheck, RejectsPageElementsThatDoNotNest) {
  for (const char* content :
       {"<p>", "</p>", "<p><b></p></b>", "<p class=x></p>", "<p", "<a href=\"x\"><a href=\"y\"></a></a>"}) {
    EXPECT_FALSE(isSafe(content)) << content;
  }
}

TEST(MarkupCheck, ChecksWhetherRtfGroupsNest) {
  EXPECT_EQ(problemOfRtf("{\\rtf1 \\{{a}\\\\}"), "");
  for (const char* bytes : {"", "x", "{", "{}}", "{}x", "{\\}", "{a}{b}", "}{"}) {
    EXPECT_NE(problemOfRtf(bytes), "") << bytes;
  }
}

}  // namespace
}  // namespace scrivalen::fuzz

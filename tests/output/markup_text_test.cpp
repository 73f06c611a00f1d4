#include "output/markup_text.h"

#include <gtest/gtest.h>

#include <string>

using namespace scrivalen;

namespace {

struct Memory : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

std::string content(std::string_view text, std::string_view lineBreak = "<br>\n") {
  Memory memory;
  OutputBuffer buffer(memory);
  MarkupText().content(buffer, text, lineBreak);
  buffer.flush();
  return memory.bytes;
}

std::string value(std::string_view text) {
  Memory memory;
  OutputBuffer buffer(memory);
  MarkupText().value(buffer, text);
  buffer.flush();
  return memory.bytes;
}

// What content should write, one byte after the other.
std::string expectedContent(std::string_view text) {
  std::string result;
  for (const char c : text) {
    result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '\n' ? "<br>\n" : std::string(1, c);
  }
  return result;
}

TEST(MarkupText, EscapesTheMarkupOfContent) {
  EXPECT_EQ(content("a<b>&c"), "a&lt;b&gt;&amp;c");
  EXPECT_EQ(content("<script>alert(1)</script>"), "&lt;script&gt;alert(1)&lt;/script&gt;");
}

TEST(MarkupText, KeepsQuotationMarksInContent) { EXPECT_EQ(content("\"it's\" - \"quoted\""), "\"it's\" - \"quoted\""); }

TEST(MarkupText, WritesALineFeedAsItIsAsked) {
  EXPECT_EQ(content("first line\nsecond line"), "first line<br>\nsecond line");
  EXPECT_EQ(content("first line\n\tsecond line", "\n"), "first line\n\tsecond line");
}

TEST(MarkupText, EscapesQuotationMarksAndLineFeedsInValues) {
  EXPECT_EQ(value("a \"b\" <c> & d\ne"), "a &quot;b&quot; &lt;c&gt; &amp; d&#10;e");
}

TEST(MarkupText, EscapesACharacterAtEveryPlaceOfATextOfEveryLength) {
  for (std::size_t length = 1; length <= 40; ++length) {
    for (std::size_t place = 0; place < length; ++place) {
      for (const char special : {'&', '<', '>', '\n'}) {
        std::string text(length, 'x');
        text[place] = special;
        ASSERT_EQ(content(text), expectedContent(text)) << text;
      }
    }
  }
}

TEST(MarkupText, KeepsEveryOtherByteAtEveryPlace) {
  for (int byte = 0x20; byte < 0x100; ++byte) {
    for (std::size_t place = 0; place < 17; ++place) {
      std::string text(17, 'x');
      text[place] = static_cast<char>(byte);
      ASSERT_EQ(content(text), expectedContent(text)) << byte << " at " << place;
    }
  }
}

TEST(MarkupText, KeepsEveryAlphabet) {
  const std::string text = "\xC3\xA4\xCE\xB2\xD0\xB6 \xE6\xBC\xA2\xE5\xAD\x97 \xEF\xBC\xA1 \xF0\x9F\x98\x80";
  EXPECT_EQ(content(text), text);
  EXPECT_EQ(value(text), text);
}

TEST(MarkupText, ReplacesTheNoncharactersThatXmlForbids) {
  Memory memory;
  OutputBuffer buffer(memory);
  MarkupText markup;
  markup.content(buffer,
                 "a\xEF\xBF\xBE"
                 "b\xEF\xBF\xBF\xEF\xBF\xBD\xEF\xBF\xBC\xEF\xBE\xBE",
                 "\n");
  buffer.flush();
  EXPECT_EQ(memory.bytes,
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBC\xEF\xBE\xBE");
  EXPECT_EQ(markup.replaced(), 2U);
}

TEST(MarkupText, WritesATextThatIsLongerThanTheBuffer) {
  std::string text;
  while (text.size() < 5 * OutputBuffer::kBlock) {
    text += "plain text & <markup>\n";
  }
  EXPECT_EQ(content(text), expectedContent(text));
  EXPECT_EQ(content(std::string(100'000, '&')), expectedContent(std::string(100'000, '&')));
}

TEST(MarkupText, ReplacesANoncharacterAtEveryPlaceOfALongText) {
  for (std::size_t before = 8180; before < 8200; ++before) {
    const std::string text(before, 'x');
    ASSERT_EQ(content(text + "\xEF\xBF\xBE" + text), text + "\xEF\xBF\xBD" + text) << before;
  }
}

TEST(MarkupText, WritesInPlaceWithinTheSpaceThatItAsksFor) {
  MarkupText markup;
  for (std::size_t length = 0; length <= 40; ++length) {
    for (const char c : {'x', '&', '"', '\n'}) {
      const std::string text(length, c);
      std::string space(MarkupText::spaceFor(length) + 1, '\x7F');
      markup.value(space.data(), text);
      EXPECT_EQ(space.back(), '\x7F') << length << ' ' << c;
      EXPECT_EQ(space.substr(0, value(text).size()), value(text));
    }
  }
}

}  // namespace

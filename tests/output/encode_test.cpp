#include "output/encode.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

using namespace scrivalen;

namespace {

struct Memory : ByteSink {
  bool take(const char* data, std::size_t size) override {
    bytes.append(data, size);
    return true;
  }
  std::string bytes;
};

using Put = void (*)(OutputBuffer&, std::wstring_view, LossCounter&);

struct Written {
  std::string bytes;
  LossCounter loss;
};

Written put(Put encode, std::wstring_view text) {
  Memory memory;
  OutputBuffer buffer(memory);
  Written written;
  encode(buffer, text, written.loss);
  buffer.flush();
  written.bytes = memory.bytes;
  return written;
}

std::string utf16(std::wstring_view text) {
  return put([](OutputBuffer& out, std::wstring_view t, LossCounter&) { putUtf16(out, t); }, text).bytes;
}

std::wstring unit(unsigned value) { return std::wstring(1, static_cast<wchar_t>(value)); }

std::wstring grin() { return sizeof(wchar_t) == 2 ? unit(0xD83D) + unit(0xDE00) : unit(0x1F600); }

}  // namespace

TEST(PutUtf8Text, WritesTextUnchanged) {
  EXPECT_EQ(put(putUtf8Text, L"<a href=\"x\">&amp; \u00E9 \u20AC</a>\r\n").bytes,
            "<a href=\"x\">&amp; \xC3\xA9 \xE2\x82\xAC</a>\r\n");
}

TEST(PutUtf8Text, CountsALoneSurrogateAsLost) {
  const Written written = put(putUtf8Text, L"a" + unit(0xD83D) + L"b" + grin());
  EXPECT_EQ(written.bytes,
            "a\xEF\xBF\xBD"
            "b\xF0\x9F\x98\x80");
  EXPECT_EQ(written.loss.count(), 1u);
  EXPECT_EQ(written.loss.first(), 0xD83Du);
}

TEST(PutQuoted, EscapesTheFourCharactersAndLeavesTheApostrophe) {
  EXPECT_EQ(put(putQuoted, L"a<b & c>d \"e\" 'f'").bytes, "a&lt;b &amp; c&gt;d &quot;e&quot; 'f'");
}

TEST(PutQuoted, EscapesAlreadyQuotedTextAgain) { EXPECT_EQ(put(putQuoted, L"&lt;").bytes, "&amp;lt;"); }

TEST(PutQuoted, ReplacesCharactersForbiddenInXml) {
  const Written written = put(putQuoted, L"a" + unit(1) + L"\t\r\n" + unit(0xFFFE) + unit(0xDC00) + L"b");
  EXPECT_EQ(written.bytes,
            "a\xEF\xBF\xBD\t\r\n\xEF\xBF\xBD\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(written.loss.count(), 3u);
  EXPECT_EQ(written.loss.first(), 1u);
}

TEST(PutQuoted, FindsASpecialCharacterAtEveryPositionInABlock) {
  for (std::size_t at = 0; at < 40; ++at) {
    std::wstring text(40, L'x');
    text[at] = L'<';
    std::string expected(40, 'x');
    expected.replace(at, 1, "&lt;");
    EXPECT_EQ(put(putQuoted, text).bytes, expected) << at;
  }
}

TEST(PutQuoted, WritesAHundredThousandSpecialCharacters) {
  std::string expected;
  for (int i = 0; i < 100000; ++i) {
    expected += "&quot;";
  }
  EXPECT_EQ(put(putQuoted, std::wstring(100000, L'"')).bytes, expected);
}

TEST(PutQuoted, KeepsASurrogatePairTogetherAtEveryPosition) {
  for (std::size_t before = 4080; before < 4100; ++before) {
    const std::wstring pair = unit(0xD83D) + unit(0xDE00);
    EXPECT_EQ(put(putQuoted, std::wstring(before, L'x') + pair + L"y").bytes,
              std::string(before, 'x') + "\xF0\x9F\x98\x80" + "y");
  }
}

TEST(PutQuotedOnce, QuotesUnquotedText) {
  EXPECT_EQ(put(putQuotedOnce, L"a<b & c>d \"e\" 'f'").bytes, "a&lt;b &amp; c&gt;d &quot;e&quot; 'f'");
  EXPECT_EQ(put(putQuotedOnce, L"AT&T &nbsp; &; &#; &#x; &#xD800; &#0; &#1114112; &#12a; &AMP; &lt").bytes,
            "AT&amp;T &amp;nbsp; &amp;; &amp;#; &amp;#x; &amp;#xD800; &amp;#0; &amp;#1114112; &amp;#12a; &amp;AMP; "
            "&amp;lt");
}

TEST(PutQuotedOnce, LeavesQuotedTextAlone) {
  EXPECT_EQ(put(putQuotedOnce, L"&amp;&lt;&gt;&quot;&apos;&#65;&#x1F600;&#xd7ff; AT&amp;T").bytes,
            "&amp;&lt;&gt;&quot;&apos;&#65;&#x1F600;&#xd7ff; AT&amp;T");
}

TEST(PutQuotedOnce, ReplacesCharactersForbiddenInXml) {
  const Written written = put(putQuotedOnce, L"a" + unit(1) + L"\t\r\n" + unit(0xDC00) + L"b");
  EXPECT_EQ(written.bytes,
            "a\xEF\xBF\xBD\t\r\n\xEF\xBF\xBD"
            "b");
  EXPECT_EQ(written.loss.count(), 2u);
}

TEST(PutElementContent, LeavesValidXmlReferencesAlone) {
  EXPECT_EQ(put(putElementContent, L"&amp;&lt;&gt;&quot;&apos;&#65;&#x1F600;&#xd7ff;").bytes,
            "&amp;&lt;&gt;&quot;&apos;&#65;&#x1F600;&#xd7ff;");
}

TEST(PutElementContent, EscapesEveryOtherAmpersand) {
  EXPECT_EQ(put(putElementContent, L"AT&T &nbsp; &; &#; &#x; &#xD800; &#0; &#1114112; &#12a; &AMP; &lt").bytes,
            "AT&amp;T &amp;nbsp; &amp;; &amp;#; &amp;#x; &amp;#xD800; &amp;#0; &amp;#1114112; &amp;#12a; &amp;AMP; "
            "&amp;lt");
}

TEST(PutElementContent, EscapesAGreaterSignOnlyAfterTwoBrackets) {
  EXPECT_EQ(put(putElementContent, L"a>b ]>c ]]>d \"e\" <f").bytes, "a>b ]>c ]]&gt;d \"e\" &lt;f");
}

TEST(PutElementContent, SeesBracketsBeforeABlock) {
  EXPECT_EQ(put(putElementContent, std::wstring(14, L'x') + L"]]>").bytes, std::string(14, 'x') + "]]&gt;");
}

TEST(PutUtf16, WritesLittleEndianUnits) { EXPECT_EQ(utf16(L"A\u20AC"), std::string("A\0\xAC\x20", 4)); }

TEST(PutUtf16, WritesACharacterAboveFFFFAsTwoSurrogates) {
  EXPECT_EQ(utf16(grin()), "\x3D\xD8" + std::string("\x00\xDE", 2));
}

TEST(PutUtf16, LeavesALoneSurrogateAlone) { EXPECT_EQ(utf16(unit(0xD83D)), "\x3D\xD8"); }

TEST(PutUtf16, WritesASurrogatePairAtEveryPositionInABlock) {
  for (std::size_t at = 0; at < 40; ++at) {
    std::wstring before(at, L'x');
    std::string expected;
    for (std::size_t i = 0; i < at; ++i) {
      expected += std::string("x\0", 2);
    }
    EXPECT_EQ(utf16(before + grin()), expected + "\x3D\xD8" + std::string("\x00\xDE", 2)) << at;
  }
}

TEST(PutLowBytes, TruncatesEachCodeUnitToItsLowByte) {
  const Written written = put(putLowBytes, L"A\u00E9\u0141" + grin());
  EXPECT_EQ(written.bytes, std::string("A\xE9\x41\x3D\x00", 5));
}

TEST(PutLowBytes, CountsEachCharacterAboveFF) {
  const Written written = put(putLowBytes, L"A\u00E9\u0141\u20AC");
  EXPECT_EQ(written.loss.count(), 2u);
  EXPECT_EQ(written.loss.first(), 0x141u);
}

TEST(PutLowBytes, CountsASurrogatePairAsOneCharacter) {
  const Written written = put(putLowBytes, unit(0xD83D) + unit(0xDE00));
  EXPECT_EQ(written.bytes, std::string("\x3D\x00", 2));
  EXPECT_EQ(written.loss.count(), 1u);
  EXPECT_EQ(written.loss.first(), 0x1F600u);
}

TEST(QuotedText, ReturnsTheWideTextThatPutQuotedWrites) {
  LossCounter loss;
  EXPECT_EQ(quotedText(L"a<b & \"c\"" + unit(2) + grin() + unit(0xD800), loss),
            L"a&lt;b &amp; &quot;c&quot;\uFFFD" + grin() + L"\uFFFD");
  EXPECT_EQ(loss.count(), 2u);
  EXPECT_EQ(loss.first(), 2u);
}

TEST(OutputBuffer, PassesBytesOnInOrderWhateverTheSizes) {
  Memory memory;
  OutputBuffer buffer(memory);
  std::string expected;
  for (std::size_t size : {1u, 65535u, 1u, 65536u, 200000u, 0u, 3u}) {
    const std::string bytes(size, static_cast<char>('a' + size % 26));
    buffer.write(bytes.data(), bytes.size());
    expected += bytes;
    EXPECT_EQ(buffer.position(), expected.size());
  }
  buffer.put('!');
  EXPECT_TRUE(buffer.flush());
  EXPECT_EQ(memory.bytes, expected + "!");
}

struct Sizes : ByteSink {
  bool take(const char*, std::size_t size) override { return sizes.push_back(size), true; }
  std::vector<std::size_t> sizes;
};

void writeSome(OutputBuffer& buffer, std::size_t size) {
  const std::string bytes(size, 'x');
  buffer.write(bytes.data(), bytes.size());
}

TEST(OutputBuffer, PassesOnOnlyWholeBlocksUntilAFlush) {
  Sizes sink;
  OutputBuffer buffer(sink);
  for (std::size_t size : {1u, 80000u, 140000u}) {
    writeSome(buffer, size);
  }
  EXPECT_EQ(sink.sizes, (std::vector<std::size_t>{65536, 65536, 65536}));
}

TEST(OutputBuffer, IsAlignedToBlocksAgainAfterAFlush) {
  Sizes sink;
  OutputBuffer buffer(sink);
  writeSome(buffer, 1000);
  buffer.flush();
  writeSome(buffer, 200000);
  EXPECT_EQ(sink.sizes, (std::vector<std::size_t>{1000, 64536, 65536, 65536}));
}

TEST(OutputBuffer, StopsCallingTheSinkOnceBytesAreLost) {
  struct Failing : ByteSink {
    bool take(const char*, std::size_t) override { return ++calls, false; }
    int calls = 0;
  } sink;
  OutputBuffer buffer(sink);
  buffer.put('a');
  EXPECT_FALSE(buffer.flush());
  buffer.put('b');
  EXPECT_FALSE(buffer.flush());
  EXPECT_EQ(sink.calls, 1);
  buffer.reset();
  EXPECT_TRUE(buffer.flush());
}

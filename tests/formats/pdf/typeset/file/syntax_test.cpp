#include "formats/pdf/typeset/file/syntax.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

using namespace scrivalen::typeset;
using namespace std::string_view_literals;

namespace {

template <typename Append, typename Value>
std::string appended(Append append, Value value) {
  std::string out = "<";
  append(out, value);
  return out + ">";
}

std::string thousandths(std::int64_t value) { return appended(appendThousandths, value); }
std::string date(std::int64_t time) { return appended(appendDate, time); }

std::string text(const char8_t* utf8) { return appended(appendText, reinterpret_cast<const char*>(utf8)); }

}  // namespace

TEST(PdfNumber, IsInteger) {
  EXPECT_EQ(appended(appendInteger, 0), "<0>");
  EXPECT_EQ(appended(appendInteger, -120), "<-120>");
  EXPECT_EQ(appended(appendInteger, std::numeric_limits<std::int64_t>::max()), "<9223372036854775807>");
}

TEST(PdfNumber, HasNoZerosThatItNeedsNot) {
  EXPECT_EQ(thousandths(0), "<0>");
  EXPECT_EQ(thousandths(1000), "<1>");
  EXPECT_EQ(thousandths(120'000), "<120>");
  EXPECT_EQ(thousandths(1500), "<1.5>");
  EXPECT_EQ(thousandths(1250), "<1.25>");
  EXPECT_EQ(thousandths(1205), "<1.205>");
  EXPECT_EQ(thousandths(1005), "<1.005>");
  EXPECT_EQ(thousandths(500), "<.5>");
  EXPECT_EQ(thousandths(50), "<.05>");
  EXPECT_EQ(thousandths(5), "<.005>");
}

TEST(PdfNumber, MayBeNegative) {
  EXPECT_EQ(thousandths(-3000), "<-3>");
  EXPECT_EQ(thousandths(-250), "<-.25>");
  EXPECT_EQ(thousandths(-1), "<-.001>");
}

TEST(PdfString, EscapesWhatWouldEndOrChangeIt) {
  EXPECT_EQ(appended(appendString, ""), "<()>");
  EXPECT_EQ(appended(appendString, "a (b) \\ c\rd\n"), "<(a \\(b\\) \\\\ c\\rd\n)>");
  EXPECT_EQ(appended(appendString, "\0\xFF"sv), "<(\0\xFF)>"sv);
}

// Ghostscript reads one of two line feeds.
TEST(PdfString, EscapesALineFeedAfterAnother) {
  EXPECT_EQ(appended(appendString, "\n\n\n\n"), "<(\n\\n\n\\n)>");
  EXPECT_EQ(appended(appendString, std::string(15, 'a') + "\n\nb\n"), "<(" + std::string(15, 'a') + "\n\\nb\n)>");
  EXPECT_EQ(text(u8"\u0A0A"), "<(\xFE\xFF\n\\n)>");
}

TEST(PdfText, IsPlainInAscii) {
  EXPECT_EQ(text(u8""), "<()>");
  EXPECT_EQ(text(u8"Prices (net)"), "<(Prices \\(net\\))>");
}

TEST(PdfText, IsMarkedUtf16Otherwise) {
  EXPECT_EQ(text(u8"Aé"), "<(\xFE\xFF\0A\0\xE9)>"sv);
  EXPECT_EQ(text(u8"a\nb"), "<(\xFE\xFF\0a\0\n\0b)>"sv);
  EXPECT_EQ(text(u8"\U0001F600"), "<(\xFE\xFF\xD8\x3D\xDE\x00)>"sv);
}

TEST(PdfText, EscapesTheHalvesOfItsUnits) {
  EXPECT_EQ(text(u8"\u0128\u0129"), "<(\xFE\xFF\x01\\(\x01\\))>");  // 0x28 and 0x29 are brackets
  EXPECT_EQ(text(u8"\u015C"), "<(\xFE\xFF\x01\\\\)>");
  EXPECT_EQ(text(u8"\u010D"), "<(\xFE\xFF\x01\\r)>");
  EXPECT_EQ(text(u8"\u5C0D"), "<(\xFE\xFF\\\\\\r)>");
}

TEST(PdfText, ReplacesWhatIsNotUtf8) { EXPECT_EQ(appended(appendText, "a\xFF"), "<(\xFE\xFF\0a\xFF\xFD)>"sv); }

TEST(PdfName, EscapesBlanksDelimitersAndBytes) {
  EXPECT_EQ(appended(appendName, "Title"), "</Title>");
  EXPECT_EQ(appended(appendName, "A B/C#(D)"), "</A#20B#2FC#23#28D#29>");
  EXPECT_EQ(appended(appendName, "\xC3\xA9\x7F<>[]{}%"), "</#C3#A9#7F#3C#3E#5B#5D#7B#7D#25>");
}

TEST(PdfReference, NamesAnObject) { EXPECT_EQ(appended(appendReference, 12), "<12 0 R>"); }

TEST(PdfDate, IsInUtc) {
  EXPECT_EQ(date(0), "<(D:19700101000000Z)>");
  EXPECT_EQ(date(1'700'000'000), "<(D:20231114221320Z)>");
  EXPECT_EQ(date(951'782'399), "<(D:20000228235959Z)>");
  EXPECT_EQ(date(951'782'400), "<(D:20000229000000Z)>");
}

TEST(PdfDate, MayBeBefore1970) {
  EXPECT_EQ(date(-1), "<(D:19691231235959Z)>");
  EXPECT_EQ(date(-86'400), "<(D:19691231000000Z)>");
}

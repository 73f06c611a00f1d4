#include "formats/pdf/layout/made_pdf.h"
#include "formats/pdf/layout/reference_layout.h"
#include "support/bytes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace {

using namespace scrivalen::test;

// Random numbers that are the same on every platform (xorshift64*).
class Random {
 public:
  explicit Random(std::uint64_t seed) : state_(seed * 0x9E3779B97F4A7C15u + 1) {}

  int below(int limit) {
    state_ ^= state_ >> 12;
    state_ ^= state_ << 25;
    state_ ^= state_ >> 27;
    return static_cast<int>((state_ * 0x2545F4914F6CDD1Du >> 33) % static_cast<std::uint64_t>(limit));
  }
  bool oneIn(int count) { return below(count) == 0; }
  template <typename Value, std::size_t size>
  Value oneOf(const Value (&values)[size]) {
    return values[below(static_cast<int>(size))];
  }

 private:
  std::uint64_t state_;
};

std::wstring randomWord(Random& random) {
  static const std::wstring strange[] = {L"(", L")", L"\\", L"\xE9", L"\x20AC", L"\x0128", grin(), L"~", L"@", L"W"};
  std::wstring word;
  for (int left = random.oneIn(40) ? 120 : 1 + random.below(12); left > 0; --left) {
    word += random.oneIn(15) ? random.oneOf(strange) : std::wstring(1, static_cast<wchar_t>(L'a' + random.below(26)));
  }
  return word;
}

// Titles are written unescaped, so MadePdf could not read one with a bracket.
std::wstring randomTitle(Random& random) { return std::wstring(1, static_cast<wchar_t>(L'a' + random.below(26))); }

std::wstring randomText(Random& random, int mostWords) {
  static const wchar_t* const separators[] = {L" ", L" ", L" ", L" ", L" ",  L" ",  L", ", L". ",
                                              L"-", L"/", L".", L",", L"  ", L"\t", L"\n", L"\n\n"};
  std::wstring text;
  for (int left = random.below(mostWords); left > 0; --left) {
    text += random.oneIn(10) ? L"" : randomWord(random);
    text += random.oneOf(separators);
  }
  return random.oneIn(2) ? text + randomWord(random) : text;
}

_RGB_COLOR randomColor(Random& random) { return {random.below(5) / 4.0, random.below(9) / 7.0, random.below(3) / 2.0}; }

const wchar_t* randomName(Random& random) {
  static const wchar_t* const names[] = {L"a", L"A", L"b", L"\x20AC", L"", L"#a", L"far away", nullptr};
  return random.oneOf(names);
}

int randomSize(Random& random) {
  static const int usual[] = {8, 8, 8, 10, 12, 12, 12, 14, 20};
  static const int odd[] = {0, 1, 2, 3, 5, 7, 13, 37, 90, -1, -2, -8, -40};
  static const int larger[] = {250, 586, 700};  // the latter two fit on no page
  if (random.oneIn(100)) {
    return random.oneOf(larger);
  }
  return random.oneIn(12) ? random.oneOf(odd) : random.oneOf(usual);
}

template <typename Doc>
void addFonts(Doc& doc, Random& random) {
  for (int left = random.below(4); left > 0; --left) {
    doc.AddFont(random.below(6) - 1, static_cast<PDF_STANDARD_FONT_FACE>(random.below(20)));
  }
  doc.FontNo(1);
}

template <typename Doc>
void changeStyle(Doc& doc, Random& random) {
  switch (random.below(7)) {
    case 0: doc.FontNo(random.below(8) - 1); break;
    case 1: doc.FontSize(randomSize(random)); break;
    case 2: doc.BoldOn(); break;
    case 3: doc.BoldOff(); break;
    case 4: random.oneIn(2) ? doc.ItalicOn() : doc.ItalicOff(); break;
    case 5: doc.ColorOn(randomColor(random)); break;
    default: doc.ColorOff(); break;
  }
}

template <typename Doc>
void fillItem(Doc& doc, Random& random, int mostWords) {
  for (int left = random.below(3); left > 0; --left) {
    if (random.oneIn(3)) {
      changeStyle(doc, random);
    }
    doc.write(randomText(random, mostWords).c_str());
  }
  if (random.oneIn(5)) {
    doc.BookMark(randomName(random));
  }
  if (random.oneIn(4)) {
    doc.HyperLink(random.oneIn(3) ? nullptr : randomText(random, 8).c_str(), randomName(random));
  }
}

template <typename Doc>
void addTable(Doc& doc, Random& random) {
  static const int columnCounts[] = {1, 1, 2, 2, 3, 3, 4, 5, 9, 40, 200, 515, 600, 0, -3};
  doc.BeginTable();
  for (int rows = random.below(8); rows > 0; --rows) {
    const int columns = random.oneOf(columnCounts);
    const int cells = columns > 9 ? random.below(12) : random.below(columns + 3 > 0 ? columns + 3 : 1);
    doc.BeginRow(columns);
    for (int cell = 0; cell < cells; ++cell) {
      doc.BeginCell(randomColor(random));
      fillItem(doc, random, columns > 9 ? 4 : random.oneIn(25) ? 400 : 15);
      doc.EndCell();
    }
    doc.EndRow();
  }
  doc.EndTable();
}

// A report as a program would write it, though with odd contents.
template <typename Doc>
void writeReport(Doc& doc, std::uint64_t seed) {
  Random random(seed);
  addFonts(doc, random);
  for (int blocks = random.below(30); blocks > 0; --blocks) {
    const int kind = random.below(8);
    if (kind == 0) {
      doc.AddOutlineItem(random.oneIn(9) ? nullptr : randomTitle(random).c_str(), randomName(random), random.below(4));
    } else if (kind < 4) {
      addTable(doc, random);
    } else {
      doc.Paragraf(0);
      fillItem(doc, random, random.oneIn(8) ? 600 : 60);
    }
  }
}

template <typename Doc>
void callAnything(Doc& doc, Random& random) {
  switch (random.below(16)) {
    case 0: doc.Paragraf(random.below(4)); break;
    case 1: doc.BeginTable(); break;
    case 2: doc.EndTable(); break;
    case 3: doc.BeginRow(random.below(5)); break;
    case 4: doc.EndRow(); break;
    case 5:
    case 6: doc.BeginCell(randomColor(random)); break;
    case 7:
    case 8: doc.EndCell(); break;
    case 9: doc.BookMark(randomName(random)); break;
    case 10: doc.HyperLink(random.oneIn(3) ? nullptr : randomText(random, 9).c_str(), randomName(random)); break;
    case 11: doc.AddOutlineItem(randomTitle(random).c_str(), randomName(random), random.below(5) - 1); break;
    case 12: changeStyle(doc, random); break;
    case 13: doc.LineBreak(); break;
    case 14: doc.write(random.oneIn(9) ? nullptr : L""); break;
    default: doc.write(randomText(random, 40).c_str()); break;
  }
}

// Calls in any order, most of them not allowed where they are made.
template <typename Doc>
void callInAnyOrder(Doc& doc, std::uint64_t seed) {
  Random random(seed);
  addFonts(doc, random);
  for (int calls = random.below(300); calls > 0; --calls) {
    callAnything(doc, random);
  }
}

void expectSame(const ReferenceDocument& expected, const MadePdf& actual) {
  ASSERT_EQ(expected.pages().size(), actual.pageCount());
  for (std::size_t page = 0; page < expected.pages().size(); ++page) {
    ASSERT_TRUE(areSameBytes(expected.pages()[page], actual.content(page + 1))) << "page " << page + 1;
  }
  EXPECT_EQ(expected.links(), actual.links());
  EXPECT_EQ(expected.outline(), actual.outline());
  EXPECT_EQ(expected.objectCount(), actual.objectCount());
}

template <typename Write>
void expectSameAsReference(std::uint64_t seed, Write write) {
  SCOPED_TRACE(seed);
  const int landscape = seed % 5 == 0;
  ReferenceDocument reference(landscape);
  write(reference, seed);
  reference.end();
  const MadePdf pdf = made([&](CPDFdoc& doc) { write(doc, seed); }, {landscape, 0, nullptr});
  expectSame(reference, pdf);
}

// More styles than the cache holds, some of which share a slot; each text crosses page breaks.
template <typename Doc>
void writeInManyStyles(Doc& doc, std::uint64_t) {
  doc.AddFont(1, PDF_TIMES_ROMAN);
  doc.AddFont(2, PDF_COURIER);
  for (int i = 0; i < 120; ++i) {
    doc.FontNo(1 + i % 2);
    doc.FontSize(8 + i * 16 % 40 + i / 5);
    i % 3 ? doc.BoldOn() : doc.BoldOff();
    doc.ColorOn({i / 128.0, 0, 0});
    if (i % 4 == 0) {
      doc.BeginTable();
      doc.BeginRow(3);
    } else if (i % 4 == 1) {
      doc.Paragraf(0);
    }
    if (i % 4 == 0 || i % 8 == 6) {
      doc.BeginCell({0, i / 128.0, 0});
    }
    doc.write(std::wstring(200, L'x').c_str());
    doc.EndCell();
    if (i % 4 == 3) {
      doc.EndRow();
      doc.EndTable();
    }
  }
}

// Cells that grow upward next to one that crosses a page break, in every order.
template <typename Doc>
void writeRowsThatGrowBothWays(Doc& doc, std::uint64_t) {
  static const int sizes[][3] = {{-40, 12, 300}, {12, 300, -40}, {300, -40, 12}, {-40, -2, 12}, {-300, 300, -300}};
  doc.AddFont(1, PDF_TIMES_ROMAN);
  doc.FontNo(1);
  for (int row = 0; row < 25; ++row) {
    doc.BeginTable();
    doc.BeginRow(3);
    for (const int size : sizes[row % 5]) {
      doc.FontSize(size);
      doc.BeginCell({1, 1, 1});
      doc.BookMark(L"there");
      doc.HyperLink(row % 2 ? L"one\ntwo" : L"one two three four five", L"there");
      doc.EndCell();
    }
    doc.EndRow();
    doc.EndTable();
    doc.FontSize(12);
    doc.Paragraf(0);
    doc.write(std::wstring(100 + static_cast<std::size_t>(row) * 200, L'x').c_str());
  }
}

// Restricts the calls to those that both forms write alike: texts that are not null, characters with the same bytes in
// both forms, known font numbers and colours in range.
template <typename Base>
class PlainDocument : public Base {
 public:
  using Base::Base;

  void AddFont(int, PDF_STANDARD_FONT_FACE face) { Base::AddFont(1 + ++fonts_, face); }
  void FontNo(int id) { Base::FontNo(1 + (id + 1) % (fonts_ + 1)); }
  void ColorOn(_RGB_COLOR color) { Base::ColorOn(inRange(color)); }
  void BeginCell(_RGB_COLOR color) { Base::BeginCell(inRange(color)); }
  void write(const wchar_t* text) { Base::write(plain(text ? text : L"").c_str()); }
  void HyperLink(const wchar_t* text, const wchar_t* target) {
    Base::HyperLink(plain(text ? text : L"").c_str(), target);
  }
  void addFirstFont() { Base::AddFont(1, PDF_TIMES_ROMAN); }

 private:
  static std::wstring plain(std::wstring text) {
    for (wchar_t& c : text) {
      c = (c >= L' ' && c <= L'~') || c == L'\n' ? c : L'x';
    }
    return text;
  }
  static _RGB_COLOR inRange(const _RGB_COLOR& color) { return {color.red, std::min(color.green, 1.0), color.blue}; }

  int fonts_ = 0;
};

// The classic form writes an extra minus sign before steps upward and zero steps.
std::string withoutDoubleSigns(std::string content) {
  for (std::size_t at = content.find("\n0 --"); at != content.npos; at = content.find("\n0 --", at)) {
    content.erase(at + 3, 2);
  }
  for (std::size_t at = content.find("\n0 -0 Td"); at != content.npos; at = content.find("\n0 -0 Td", at)) {
    content.erase(at + 3, 1);
  }
  return content;
}

template <typename Write>
void expectConformingSameAsReference(std::uint64_t seed, Write write) {
  SCOPED_TRACE(seed);
  const int landscape = seed % 5 == 0;
  PlainDocument<ReferenceDocument> reference(landscape, PDFStuffer::Form::Conforming);
  reference.addFirstFont();
  write(reference, seed);
  reference.end();
  PlainDocument<CPDFdoc> doc;
  const MadePdf pdf = made(doc,
                           [&](CPDFdoc&) {
                             doc.addFirstFont();
                             write(doc, seed);
                           },
                           {landscape, 1, nullptr});
  ASSERT_EQ(reference.pages().size(), pdf.pageCount());
  for (std::size_t page = 0; page < pdf.pageCount(); ++page) {
    ASSERT_TRUE(areSameBytes(withoutDoubleSigns(reference.pages()[page]), pdf.content(page + 1)))
        << "page " << page + 1;
  }
}

const auto kReports = [](auto& doc, std::uint64_t seed) { writeReport(doc, seed); };
const auto kAnyCalls = [](auto& doc, std::uint64_t seed) { callInAnyOrder(doc, seed); };

TEST(LayoutOfManyStyles, MatchesTheReference) {
  expectSameAsReference(1, [](auto& doc, std::uint64_t seed) { writeInManyStyles(doc, seed); });
}

TEST(LayoutOfRowsThatGrowBothWays, MatchesTheReference) {
  for (const std::uint64_t seed : {1, 5}) {
    expectSameAsReference(seed, [](auto& doc, std::uint64_t chosen) { writeRowsThatGrowBothWays(doc, chosen); });
  }
}

TEST(LayoutInConformingForm, MatchesTheReference) {
  for (std::uint64_t seed = 20001; seed < 20051 && !testing::Test::HasFailure(); ++seed) {
    expectConformingSameAsReference(seed, kReports);
    expectConformingSameAsReference(seed, kAnyCalls);
  }
}

class LayoutOfReports : public testing::TestWithParam<std::uint64_t> {};
class LayoutOfAnyCalls : public testing::TestWithParam<std::uint64_t> {};

constexpr std::uint64_t kDocuments = 80;

TEST_P(LayoutOfReports, MatchesTheReference) {
  for (std::uint64_t seed = GetParam(); seed < GetParam() + kDocuments && !HasFailure(); ++seed) {
    expectSameAsReference(seed, kReports);
  }
}

TEST_P(LayoutOfAnyCalls, MatchesTheReference) {
  for (std::uint64_t seed = GetParam(); seed < GetParam() + kDocuments && !HasFailure(); ++seed) {
    expectSameAsReference(seed, kAnyCalls);
  }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LayoutOfReports, testing::Values(1, 501, 1001, 1501));
INSTANTIATE_TEST_SUITE_P(Seeds, LayoutOfAnyCalls, testing::Values(10001, 10501, 11001, 11501));

}  // namespace

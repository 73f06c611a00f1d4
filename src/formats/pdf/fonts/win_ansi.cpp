#include "formats/pdf/fonts/win_ansi.h"

#include "text/plain_text.h"
#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>

namespace scrivalen::pdf {

using scrivalen::LossCounter;

namespace {

struct StandIn {
  char32_t character;
  std::string_view text;
};

// Sorted by character.
constexpr StandIn kStandIns[] = {
    {0x2002, " "},   {0x2003, " "},   {0x2004, " "},    {0x2005, " "},    {0x2006, " "},    {0x2007, "\xA0"},
    {0x2008, " "},   {0x2009, " "},   {0x200A, " "},    {0x200B, ""},     {0x200C, ""},     {0x200D, ""},
    {0x2010, "-"},   {0x2011, "-"},   {0x2012, "\x96"}, {0x2015, "\x97"}, {0x201B, "\x91"}, {0x201F, "\x93"},
    {0x2024, "."},   {0x2025, ".."},  {0x2028, "\n"},   {0x2029, "\n"},   {0x202F, "\xA0"}, {0x2032, "'"},
    {0x2033, "\""},  {0x2035, "`"},   {0x2043, "-"},    {0x2044, "/"},    {0x205F, " "},    {0x2060, ""},
    {0x2116, "No."}, {0x2190, "<-"},  {0x2191, "^"},    {0x2192, "->"},   {0x2194, "<->"},  {0x21D0, "<="},
    {0x21D2, "=>"},  {0x21D4, "<=>"}, {0x2212, "-"},    {0x2215, "/"},    {0x2217, "*"},    {0x2219, "\xB7"},
    {0x2236, ":"},   {0x223C, "~"},   {0x2248, "~"},    {0x2260, "!="},   {0x2264, "<="},   {0x2265, ">="},
    {0x2500, "-"},   {0x2502, "|"},   {0x25CF, "\x95"}, {0x25E6, "o"},    {0x2713, "x"},    {0x3000, " "},
    {0xFB00, "ff"},  {0xFB01, "fi"},  {0xFB02, "fl"},   {0xFB03, "ffi"},  {0xFB04, "ffl"},  {0xFEFF, ""}};

// U+0100 to U+017F without diacritics; "?" where no single letter fits.
constexpr std::string_view kLatinExtended =
    "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi??JjKkkLlLlLlLlLlNnNnNnnNnOoOoOo??RrRrRrSsSsSsSsTtTtTtUuUuUu"
    "UuUuUuWwYyYZzZzZzs";
static_assert(kLatinExtended.size() == 128);

std::string_view standInFor(char32_t c) {
  if (c == U'\t') {
    return " ";
  }
  if (c == U'\r') {
    return "";
  }
  if (c >= 0x100 && c < 0x100 + kLatinExtended.size()) {
    return kLatinExtended.substr(c - 0x100, 1);
  }
  const auto found = std::lower_bound(std::begin(kStandIns), std::end(kStandIns), c,
                                      [](const StandIn& row, char32_t wanted) { return row.character < wanted; });
  return found != std::end(kStandIns) && found->character == c ? found->text : "?";
}

// Characters that are copied as one byte without further checks.
struct PlainWinAnsi : scrivalen::PlainBelow<char, 0x7F> {
  static bool isPlain(unsigned c) { return c >= 0x20 && c < kEnd; }
  static bool arePlain(std::uint64_t bytes) {
    return scrivalen::allMarked(bytes + scrivalen::eightTimes(0x80 - 0x20));  // all are 0x20 or above
  }
};

void appendCharacter(std::string& out, char32_t c, LossCounter& loss) {
  const auto byte = isControl(c) ? std::nullopt : scrivalen::toWindows1252(c);
  if (byte) {
    out += static_cast<char>(*byte);
    return;
  }
  out += standInFor(c);
  if (c != U'\t' && c != U'\r') {
    loss.note(c);
  }
}

}  // namespace

void appendWinAnsi(std::string& out, std::wstring_view text, LossCounter& loss) {
  // Memory is reserved for one piece at a time. Reserving the whole rest each time would make a long text in another
  // alphabet take quadratic time.
  constexpr std::size_t kPiece = 256;
  while (!text.empty()) {
    const std::wstring_view piece = text.substr(0, kPiece);
    const std::size_t plain = appendPlain<PlainWinAnsi>(out, piece);
    text.remove_prefix(plain);
    const wchar_t* at = text.data();
    const wchar_t* const end = at + text.size();
    if (plain < piece.size()) {
      appendCharacter(out, scrivalen::nextCharacter(at, end), loss);
      text.remove_prefix(static_cast<std::size_t>(at - text.data()));
    }
  }
}

void appendUtf16(std::u16string& out, std::wstring_view text) {
  for (const wchar_t wide : text) {
    scrivalen::forEachUnit(scrivalen::asCharacter(static_cast<char32_t>(wide)), [&out](char16_t unit) { out += unit; });
  }
}

}  // namespace scrivalen::pdf

#include "formats/pdf/typeset/fonts/font_writer.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/fonts/code_bytes.h"
#include "text/utf.h"

#include <algorithm>
#include <cstddef>
#include <map>

namespace scrivalen::typeset {
namespace {

constexpr int kTagLength = 6;

// PDF 1.7, 9.8.2
constexpr int kFixedPitch = 1;
constexpr int kNonsymbolic = 32;
constexpr int kItalicFlag = 64;

// An array has at most 8191 elements in PDF 1.4 (appendix C).
constexpr std::size_t kMostInArray = 8000;

constexpr std::string_view kWordJoiner = "\u2060";  // invisible, and no letter of a word

// Six letters that tell a subset from others of the same font (PDF 1.7, 9.6.4).
std::string tagOf(std::string_view fontFile) {
  std::uint64_t hash = 14695981039346656037u;  // FNV-1a
  for (const char c : fontFile) {
    hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
  }
  std::string tag;
  for (int i = 0; i < kTagLength; ++i) {
    tag += static_cast<char>('A' + hash % 26);
    hash /= 26;
  }
  return tag;
}

void appendKey(std::string& out, std::string_view key, std::int64_t value) {
  out.append(key);
  appendInteger(out, value);
}

void appendUtf16(std::string& out, std::string_view utf8) {
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    forEachUnit(c, [&out](char16_t unit) { appendHex(out, unit, 4); });
  }
}

constexpr std::string_view kCodeSpace = "2 begincodespacerange\n<40><FF>\n<0100><3FFF>\nendcodespacerange\n";
constexpr std::string_view kCodeSpaceOfPostScript = "1 begincodespacerange\n<0000><FFFF>\nendcodespacerange\n";
constexpr std::string_view kCMapEnd = "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend";

void appendCode(std::string& out, std::size_t number) {
  out += '<';
  appendHex(out, number, number < kFirstOfTwoBytes ? 2 : 4);
  out += '>';
}

// Writes the lines of a CMap, each for one number or several, in the blocks of at most 100 that they have to be in.
class CodeBlocks {
 public:
  CodeBlocks(std::string& map, std::string_view kind) : map_(map), kind_(kind) {}

  /// Begins the line of a number, or the first of several. @return where it goes on
  std::string& begin(std::size_t number) {
    if (count_ == kMostLines) {
      end();
    }
    block_ += count_ == 0 ? "" : "\n";
    appendCode(block_, number);
    ++count_;
    return block_;
  }
  std::string& line() { return block_; }
  void end() {
    if (count_ > 0) {
      appendInteger(map_, count_);
      map_.append(" begin").append(kind_).append("\n").append(block_).append("\nend").append(kind_).append("\n");
    }
    block_.clear();
    count_ = 0;
  }

 private:
  static constexpr int kMostLines = 100;

  std::string& map_;
  std::string_view kind_;
  std::string block_;
  int count_ = 0;
};

// Each number as its own CID. A range is within one first byte (PDF 1.7, 9.7.6.2).
void appendEqualCids(std::string& map, std::size_t end) {
  CodeBlocks blocks(map, "cidrange");
  for (std::size_t first = kFirstNumber; first < end;) {
    const std::size_t last = first | 0xFF;
    std::string& line = blocks.begin(first);
    appendCode(line, last);
    appendInteger(line, static_cast<std::int64_t>(first));
    first = last + 1;
  }
  blocks.end();
}

}  // namespace

FontWriter::FontWriter(PdfFile& file, const FontFile& font, const FontFile::Subset& subset)
    : file_(file),
      font_(font),
      subset_(subset),
      firstNumber_(firstNumberOf(font.isPostScript())),
      fontName_(tagOf(subset.file) + "+" + font.names().postScript) {
  writeFile();
  descriptor_ = writeDescriptor();
}

void FontWriter::writeFile() {
  stream_ = file_.newNumber();
  std::string entries;
  if (font_.isPostScript()) {
    entries = "/Subtype/CIDFontType0C";
  } else {
    appendKey(entries, "/Length1 ", static_cast<std::int64_t>(subset_.file.size()));
  }
  file_.writeStream(stream_, entries, subset_.file);
}

int FontWriter::writeDescriptor(std::string_view entries) {
  const FontMeasures& m = font_.measures();
  std::string object = "<</Type/FontDescriptor/FontName";
  appendName(object, fontName_);
  appendKey(object, "/Flags ",
            kNonsymbolic | (m.isFixedPitch ? kFixedPitch : 0) | (m.italicAngle != 0 ? kItalicFlag : 0));
  appendKey(object, "/FontBBox[", m.left);
  appendKey(object, " ", m.bottom);
  appendKey(object, " ", m.right);
  appendKey(object, " ", m.top);
  appendKey(object, "]/ItalicAngle ", m.italicAngle);
  appendKey(object, "/Ascent ", m.ascent);
  appendKey(object, "/Descent ", m.descent);
  appendKey(object, "/CapHeight ", m.capHeight);
  object += font_.isPostScript() ? "/StemV 80/FontFile3 " : "/StemV 80/FontFile2 ";
  appendReference(object, stream_);
  object.append(entries).append(">>");
  const int number = file_.newNumber();
  file_.writeObject(number, object);
  return number;
}

// PDF/A-1 asks a subset for the set of its numbers (ISO 19005-1, 6.3.5): a bit for each, the highest first.
int FontWriter::descriptorOfComposite(std::span<const CompositeGlyph> glyphs) {
  if (file_.standard() != Standard::A1b) {
    return descriptor_;
  }
  std::string bits;
  const auto setBit = [&bits](std::size_t cid) {
    bits.resize(std::max(bits.size(), cid / 8 + 1));
    bits[cid / 8] = static_cast<char>(static_cast<unsigned char>(bits[cid / 8]) | 0x80u >> cid % 8);
  };
  setBit(0);
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    setBit(font_.isPostScript() ? cidOf(glyphs[i]) : i + kFirstNumber);
  }
  const int set = file_.newNumber();
  file_.writeStream(set, "", bits);
  std::string entries = "/CIDSet ";
  appendReference(entries, set);
  return writeDescriptor(entries);
}

int FontWriter::writeSimple(std::span<const unsigned char> bytes, const std::array<std::uint16_t, 256>& widths) {
  std::string object = "<</Type/Font/Subtype/TrueType/BaseFont";
  appendName(object, fontName_);
  object += "/Encoding/WinAnsiEncoding";
  appendKey(object, "/FirstChar ", bytes.front());
  appendKey(object, "/LastChar ", bytes.back());
  object += "/Widths[";
  for (std::size_t byte = bytes.front(); byte <= bytes.back(); ++byte) {
    appendKey(object, byte == bytes.front() ? "" : " ", widths[byte]);
  }
  object += "]/FontDescriptor ";
  appendReference(object, descriptor_);
  object += ">>";
  const int number = file_.newNumber();
  file_.writeObject(number, object);
  return number;
}

// The texts that numbers stand for (PDF 1.7, 9.10.3).
int FontWriter::writeUnicodes(std::span<const CompositeGlyph> glyphs) {
  std::string map =
      "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
      "/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n";
  map += font_.isPostScript() ? kCodeSpaceOfPostScript : kCodeSpace;
  CodeBlocks blocks(map, "bfchar");
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    // Of several glyphs for a text the first one has it. In PDF/A-2u the others need one, too.
    const std::string_view text =
        glyphs[i].text.empty() && file_.standard() == Standard::A2u ? kWordJoiner : glyphs[i].text;
    if (!text.empty()) {
      blocks.begin(i + firstNumber_) += '<';
      appendUtf16(blocks.line(), text);
      blocks.line() += '>';
    }
  }
  blocks.end();
  map += kCMapEnd;
  const int number = file_.newNumber();
  file_.writeStream(number, "", map);
  return number;
}

int FontWriter::writeGlyphNumbers(std::span<const CompositeGlyph> glyphs) {
  std::string numbers(kFirstNumber * std::size_t{2}, '\0');
  for (const CompositeGlyph& glyph : glyphs) {
    numbers += static_cast<char>(static_cast<unsigned char>(glyph.glyph >> 8 & 0xFF));
    numbers += static_cast<char>(static_cast<unsigned char>(glyph.glyph & 0xFF));
  }
  const int number = file_.newNumber();
  file_.writeStream(number, "", numbers);
  return number;
}

// Which glyph each number is: in a font of PostScript the one that readers find by its CID (PDF 1.7, 9.7.5.4), else the
// one in the table of glyph numbers.
int FontWriter::writeCids(std::span<const CompositeGlyph> glyphs) {
  constexpr std::string_view kEntries =
      "/Type/CMap/CMapName/Codes/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>";
  std::string map =
      "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo 3 dict dup begin/Registry(Adobe)def/Ordering(Identity)def/Supplement 0 def end def\n"
      "/CMapName/Codes def\n/CMapType 1 def\n";
  map += font_.isPostScript() ? kCodeSpaceOfPostScript : kCodeSpace;
  if (font_.isPostScript()) {
    CodeBlocks blocks(map, "cidchar");
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
      appendInteger(blocks.begin(i + firstNumber_), cidOf(glyphs[i]));
    }
    blocks.end();
  } else {
    appendEqualCids(map, glyphs.size() + kFirstNumber);
  }
  map += kCMapEnd;
  const int number = file_.newNumber();
  file_.writeStream(number, kEntries, map);
  return number;
}

unsigned FontWriter::cidOf(const CompositeGlyph& glyph) const {
  return glyph.glyph < subset_.cids.size() ? subset_.cids[glyph.glyph] : glyph.glyph;
}

void FontWriter::appendGlyphsOfTrueType(std::string& object, std::span<const CompositeGlyph> glyphs) {
  object += '[';
  for (std::size_t first = 0; first < glyphs.size(); first += kMostInArray) {
    appendInteger(object, static_cast<std::int64_t>(first + kFirstNumber));
    object += '[';
    for (const CompositeGlyph& glyph : glyphs.subspan(first, std::min(kMostInArray, glyphs.size() - first))) {
      appendKey(object, object.back() == '[' ? "" : " ", glyph.advance);
    }
    object += ']';
  }
  object += "]/CIDToGIDMap ";
  appendReference(object, writeGlyphNumbers(glyphs));
}

// Numbers with the same glyph have one width, because they have one CID.
void FontWriter::appendGlyphsOfPostScript(std::string& object, std::span<const CompositeGlyph> glyphs) const {
  std::map<unsigned, int> widths;
  for (const CompositeGlyph& glyph : glyphs) {
    widths.emplace(cidOf(glyph), glyph.advance);
  }
  object += '[';
  for (const auto& [cid, width] : widths) {
    appendInteger(object, cid);
    appendKey(object, "[", width);
    object += ']';
  }
  object += ']';
}

int FontWriter::writeComposite(std::span<const CompositeGlyph> glyphs) {
  const bool isPostScript = font_.isPostScript();
  const int unicodes = writeUnicodes(glyphs);
  std::string object = "<</Type/Font/Subtype/";
  object += isPostScript ? "CIDFontType0" : "CIDFontType2";
  object += "/BaseFont";
  appendName(object, fontName_);
  object += "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/DW 0/W";
  if (isPostScript) {
    appendGlyphsOfPostScript(object, glyphs);
  } else {
    appendGlyphsOfTrueType(object, glyphs);
  }
  object += "/FontDescriptor ";
  appendReference(object, descriptorOfComposite(glyphs));
  object += ">>";
  const int descendant = file_.newNumber();
  file_.writeObject(descendant, object);

  object = "<</Type/Font/Subtype/Type0/BaseFont";
  appendName(object, fontName_);
  object += "/Encoding ";
  appendReference(object, writeCids(glyphs));
  object += "/DescendantFonts[";
  appendReference(object, descendant);
  object += "]/ToUnicode ";
  appendReference(object, unicodes);
  object += ">>";
  const int number = file_.newNumber();
  file_.writeObject(number, object);
  return number;
}

}  // namespace scrivalen::typeset

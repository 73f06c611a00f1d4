#include "formats/pdf/typeset/fonts/font_writer.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "text/utf.h"

#include <algorithm>
#include <cstddef>

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

}  // namespace

FontWriter::FontWriter(PdfFile& file, const FontFile& font, std::string_view subset)
    : file_(file), font_(font), fontName_(tagOf(subset) + "+" + font.postScriptName()) {
  writeFile(subset);
  descriptor_ = writeDescriptor();
}

void FontWriter::writeFile(std::string_view subset) {
  stream_ = file_.newNumber();
  std::string entries;
  if (font_.isPostScript()) {
    entries = "/Subtype/OpenType";
  } else {
    appendKey(entries, "/Length1 ", static_cast<std::int64_t>(subset.size()));
  }
  file_.writeStream(stream_, entries, subset);
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
int FontWriter::descriptorOfComposite(std::size_t glyphs) {
  if (file_.standard() != Standard::A1b) {
    return descriptor_;
  }
  const std::size_t count = glyphs + 1;
  std::string bits(count / 8, '\xFF');
  if (count % 8 != 0) {
    bits += static_cast<char>(static_cast<unsigned char>(0xFF00u >> count % 8));
  }
  const int set = file_.newNumber();
  file_.writeStream(set, "", bits);
  std::string entries = "/CIDSet ";
  appendReference(entries, set);
  return writeDescriptor(entries);
}

void FontWriter::writeSimple(std::string_view name, std::span<const unsigned char> bytes,
                             const std::array<std::uint16_t, 256>& widths, std::string& resources) {
  std::string object =
      font_.isPostScript() ? "<</Type/Font/Subtype/Type1/BaseFont" : "<</Type/Font/Subtype/TrueType/BaseFont";
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
  appendName(resources, name);
  resources += ' ';
  appendReference(resources, number);
}

// The texts that numbers stand for (PDF 1.7, 9.10.3).
int FontWriter::writeUnicodes(std::span<const CompositeGlyph> glyphs) {
  constexpr std::size_t kMostInBlock = 100;
  std::string map =
      "/CIDInit/ProcSet findresource begin\n12 dict begin\nbegincmap\n"
      "/CIDSystemInfo<</Registry(Adobe)/Ordering(UCS)/Supplement 0>>def\n"
      "/CMapName/Adobe-Identity-UCS def\n/CMapType 2 def\n"
      "1 begincodespacerange\n<0000><FFFF>\nendcodespacerange\n";
  std::string block;
  std::size_t count = 0;
  const auto endBlock = [&] {
    if (count > 0) {
      appendInteger(map, static_cast<std::int64_t>(count));
      map.append(" beginbfchar\n").append(block).append("endbfchar\n");
    }
    block.clear();
    count = 0;
  };
  for (std::size_t i = 0; i < glyphs.size(); ++i) {
    // Of several glyphs for a text the first one has it. In PDF/A-2u the others need one, too.
    const std::string_view text =
        glyphs[i].text.empty() && file_.standard() == Standard::A2u ? kWordJoiner : glyphs[i].text;
    if (text.empty()) {
      continue;
    }
    block += '<';
    appendHex(block, static_cast<unsigned>(i) + 1, 4);
    block += "><";
    appendUtf16(block, text);
    block += ">\n";
    if (++count == kMostInBlock) {
      endBlock();
    }
  }
  endBlock();
  map += "endcmap\nCMapName currentdict/CMap defineresource pop\nend\nend";
  const int number = file_.newNumber();
  file_.writeStream(number, "", map);
  return number;
}

int FontWriter::writeGlyphNumbers(std::span<const CompositeGlyph> glyphs) {
  std::string numbers(2, '\0');
  for (const CompositeGlyph& glyph : glyphs) {
    numbers += static_cast<char>(static_cast<unsigned char>(glyph.glyph >> 8 & 0xFF));
    numbers += static_cast<char>(static_cast<unsigned char>(glyph.glyph & 0xFF));
  }
  const int number = file_.newNumber();
  file_.writeStream(number, "", numbers);
  return number;
}

void FontWriter::writeComposite(std::string_view name, std::span<const CompositeGlyph> glyphs, std::string& resources) {
  const int unicodes = writeUnicodes(glyphs);
  const int numbers = writeGlyphNumbers(glyphs);
  const int descendant = file_.newNumber();
  std::string object = "<</Type/Font/Subtype/CIDFontType2/BaseFont";
  appendName(object, fontName_);
  object += "/CIDSystemInfo<</Registry(Adobe)/Ordering(Identity)/Supplement 0>>/DW 0/W[";
  for (std::size_t first = 0; first < glyphs.size(); first += kMostInArray) {
    appendInteger(object, static_cast<std::int64_t>(first) + 1);
    object += '[';
    for (const CompositeGlyph& glyph : glyphs.subspan(first, std::min(kMostInArray, glyphs.size() - first))) {
      appendKey(object, object.back() == '[' ? "" : " ", glyph.advance);
    }
    object += ']';
  }
  object += "]/CIDToGIDMap ";
  appendReference(object, numbers);
  object += "/FontDescriptor ";
  appendReference(object, descriptorOfComposite(glyphs.size()));
  object += ">>";
  file_.writeObject(descendant, object);

  object = "<</Type/Font/Subtype/Type0/BaseFont";
  appendName(object, fontName_);
  object += "/Encoding/Identity-H/DescendantFonts[";
  appendReference(object, descendant);
  object += "]/ToUnicode ";
  appendReference(object, unicodes);
  object += ">>";
  const int number = file_.newNumber();
  file_.writeObject(number, object);
  appendName(resources, name);
  resources += ' ';
  appendReference(resources, number);
}

}  // namespace scrivalen::typeset

#include "formats/pdf/typeset/fonts/simple_font.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/fonts/win_ansi_text.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

namespace scrivalen::typeset {
namespace {

constexpr std::size_t kFirstCode = ' ';
constexpr int kTagLength = 6;

// PDF 1.7, 9.8.2
constexpr int kFixedPitch = 1;
constexpr int kNonsymbolic = 32;
constexpr int kItalic = 64;

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

}  // namespace

SimpleFont::SimpleFont(std::unique_ptr<FontFile> file) : file_(std::move(file)) {
  for (std::size_t code = kFirstCode; code < widths_.size(); ++code) {
    const char32_t c = characterOfWinAnsi(static_cast<unsigned char>(code));
    widths_[code] = static_cast<std::uint16_t>(file_->advanceOf(c == 0 ? 0 : file_->glyphOf(c)));
  }
}

void SimpleFont::write(PdfFile& file, int number) const {
  std::vector<char32_t> characters;
  for (std::size_t code = kFirstCode; code < used_.size(); ++code) {
    if (used_[code] != 0) {
      characters.push_back(characterOfWinAnsi(static_cast<unsigned char>(code)));
    }
  }
  const std::string subset = file_->subsetOf(characters);
  const std::string name = tagOf(subset) + "+" + file_->postScriptName();
  const int stream = file.newNumber();
  const int descriptor = file.newNumber();
  std::string entries;
  appendKey(entries, "/Length1 ", static_cast<std::int64_t>(subset.size()));
  file.writeStream(stream, entries, subset);

  const FontMeasures& m = file_->measures();
  std::string object = "<</Type/FontDescriptor/FontName";
  appendName(object, name);
  appendKey(object, "/Flags ", kNonsymbolic | (m.isFixedPitch ? kFixedPitch : 0) | (m.italicAngle != 0 ? kItalic : 0));
  appendKey(object, "/FontBBox[", m.left);
  appendKey(object, " ", m.bottom);
  appendKey(object, " ", m.right);
  appendKey(object, " ", m.top);
  appendKey(object, "]/ItalicAngle ", m.italicAngle);
  appendKey(object, "/Ascent ", m.ascent);
  appendKey(object, "/Descent ", m.descent);
  appendKey(object, "/CapHeight ", m.capHeight);
  object += "/StemV 80/FontFile2 ";
  appendReference(object, stream);
  object += ">>";
  file.writeObject(descriptor, object);

  const auto isUsed = [](std::uint8_t used) { return used != 0; };
  const auto first = std::find_if(used_.begin(), used_.end(), isUsed);
  const auto last = std::find_if(used_.rbegin(), used_.rend(), isUsed).base();
  object = "<</Type/Font/Subtype/TrueType/BaseFont";
  appendName(object, name);
  object += "/Encoding/WinAnsiEncoding";
  appendKey(object, "/FirstChar ", first - used_.begin());
  appendKey(object, "/LastChar ", last - used_.begin() - 1);
  object += "/Widths[";
  for (auto code = first; code != last; ++code) {
    appendKey(object, code == first ? "" : " ", widths_[static_cast<std::size_t>(code - used_.begin())]);
  }
  object += "]/FontDescriptor ";
  appendReference(object, descriptor);
  object += ">>";
  file.writeObject(number, object);
}

}  // namespace scrivalen::typeset

#include "formats/pdf/typeset/fonts/typeface.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/fonts/font_writer.h"
#include "formats/pdf/typeset/fonts/win_ansi_text.h"
#include "text/utf.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr std::size_t kFirstByte = ' ';

}  // namespace

Typeface::Typeface(std::unique_ptr<FontFile> file) : file_(std::move(file)) {
  for (std::size_t byte = kFirstByte; byte < widths_.size(); ++byte) {
    const char32_t c = characterOfWinAnsi(static_cast<unsigned char>(byte));
    glyphs_[byte] = c == 0 ? 0 : file_->glyphOf(c);
    widths_[byte] = static_cast<std::uint16_t>(std::clamp(file_->advanceOf(glyphs_[byte]), 0, 0xFFFF));
  }
}

void Typeface::replaceMissingGlyph() {
  // A box as fonts have for this, or what else readers take for it.
  for (const char32_t c : {U'\u25A1', kReplacement, U'?'}) {
    missing_ = missing_ == 0 ? file_->glyphOf(c) : missing_;
  }
}

void Typeface::spaceMissingGlyphs(std::vector<ShapedGlyph>& glyphs) const {
  if (missing_ == 0) {
    return;
  }
  for (ShapedGlyph& glyph : glyphs) {
    glyph.advance = glyph.glyph == 0 ? file_->advanceOf(missing_) : glyph.advance;
  }
}

Code Typeface::codeOf(std::uint32_t glyph, std::string_view text) {
  glyph = shownFor(glyph);
  key_.assign(reinterpret_cast<const char*>(&glyph), sizeof glyph).append(text);
  const auto [found, isNew] = codes_.try_emplace(key_, static_cast<std::uint32_t>(entries_.size()));
  if (isNew) {
    entries_.push_back({glyph, std::string(text)});
  }
  return {static_cast<std::uint16_t>(found->second / kMostCodes),
          static_cast<std::uint16_t>(found->second % kMostCodes + 1)};
}

const CharacterCode& Typeface::characterOf(char32_t c) {
  const std::size_t page = c / kPage;
  if (page >= pages_.size()) {
    pages_.resize(page + 1);
  }
  if (!pages_[page]) {
    pages_[page] = std::make_unique<std::array<CharacterCode, kPage>>();
  }
  CharacterCode& known = (*pages_[page])[c % kPage];
  if (!known.isKnown) {
    const std::uint32_t glyph = file_->glyphOf(c);
    char text[4];
    const std::size_t size = putUtf8(c, text);
    const bool isPlain = glyph != 0 && !isMark(c) && !isInvisible(c) && !needsShaping(scriptOf(c));
    known = {true, glyph == 0, isPlain, codeOf(glyph, std::string_view(text, size)), advanceOf(glyph)};
  }
  return known;
}

bool Typeface::appendPlain(std::string& bytes, std::string_view utf8, std::int64_t& width) {
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  const std::size_t begin = bytes.size();
  bytes.resize(begin + 2 * utf8.size());
  char* out = bytes.data() + begin;
  bool isPlain = true;
  while (at != end && isPlain) {
    const auto lead = static_cast<unsigned char>(*at);
    char32_t c = lead;
    if ((lead & 0xE0) == 0xC0) {
      c = (lead & 0x1Fu) << 6 | (static_cast<unsigned char>(at[1]) & 0x3Fu);
      at += 2;
    } else if (lead < 0x80) {
      ++at;
    } else {
      nextUtf8(at, end, c);
    }
    const CharacterCode& code = knownOrNew(c);
    isPlain = code.isPlain && code.code.font == 0;
    *out++ = static_cast<char>(static_cast<unsigned char>(code.code.number >> 8));
    *out++ = static_cast<char>(static_cast<unsigned char>(code.code.number & 0xFF));
    width += code.advance;
  }
  bytes.resize(static_cast<std::size_t>(out - bytes.data()));
  return isPlain;
}

void Typeface::write(PdfFile& file, int name, std::string& resources) const {
  std::vector<unsigned char> bytes;
  std::vector<char32_t> characters;
  for (std::size_t byte = kFirstByte; byte < used_.size(); ++byte) {
    if (used_[byte] != 0) {
      bytes.push_back(static_cast<unsigned char>(byte));
      characters.push_back(characterOfWinAnsi(static_cast<unsigned char>(byte)));
    }
  }
  if (bytes.empty() && entries_.empty()) {
    return;
  }
  std::vector<std::uint32_t> glyphs;
  for (const Entry& entry : entries_) {
    glyphs.push_back(entry.glyph);
  }
  const FontFile::Subset subset = file_->subsetOf(characters, glyphs);
  FontWriter writer(file, *file_, subset.file);
  if (!bytes.empty()) {
    std::string simple = "F";
    appendInteger(simple, name);
    writer.writeSimple(simple, bytes, widths_, resources);
  }
  for (std::size_t first = 0; first < entries_.size(); first += kMostCodes) {
    std::vector<CompositeGlyph> part;
    for (std::size_t i = first; i < std::min(first + kMostCodes, entries_.size()); ++i) {
      part.push_back(
          {subset.glyphs.empty() ? 0 : subset.glyphs[i], file_->advanceOf(entries_[i].glyph), entries_[i].text});
    }
    std::string composite = "G";
    appendInteger(composite, name);
    if (first > 0) {
      composite += '.';
      appendInteger(composite, static_cast<std::int64_t>(first / kMostCodes));
    }
    writer.writeComposite(composite, part, resources);
  }
}

}  // namespace scrivalen::typeset

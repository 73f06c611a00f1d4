#include "formats/pdf/typeset/fonts/typeface.h"

#include "document/model/writer.h"
#include "formats/pdf/typeset/fonts/font_writer.h"
#include "formats/pdf/typeset/fonts/win_ansi_text.h"
#include "text/utf.h"

#include <algorithm>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr std::size_t kFirstByte = ' ';

}  // namespace

Typeface::Typeface(std::unique_ptr<FontFile> file, std::size_t mostCodes)
    : file_(std::move(file)), mostCodes_(mostCodes) {
  known_.fill(kUnknown);
  // Readers find the glyphs of a simple font of PostScript by their names, which a font need not have.
  if (file_->isPostScript()) {
    return;
  }
  for (std::size_t byte = kFirstByte; byte < widths_.size(); ++byte) {
    const char32_t c = characterOfWinAnsi(static_cast<unsigned char>(byte));
    glyphs_[byte] = c == 0 ? 0 : file_->glyphOf(c);
    widths_[byte] = static_cast<std::uint16_t>(std::clamp(file_->advanceOf(glyphs_[byte]), 0, 0xFFFF));
    known_[byte] = glyphs_[byte] == 0 ? kUnknown : widths_[byte];
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

std::uint32_t Typeface::blankGlyph() {
  if (!blank_) {
    constexpr char32_t kZeroWidthSpace = U'\u200B';
    const std::uint32_t glyph = file_->glyphOf(kZeroWidthSpace);
    blank_ = glyph != 0 && file_->isNothing(glyph) ? glyph : 0;
  }
  return *blank_;
}

Code Typeface::codeOf(std::uint32_t glyph, std::string_view text) {
  glyph = shownFor(glyph);
  key_.assign(reinterpret_cast<const char*>(&glyph), sizeof glyph).append(text);
  const auto [found, isNew] = codes_.try_emplace(key_, static_cast<std::uint32_t>(entries_.size()));
  if (isNew) {
    entries_.push_back({glyph, std::string(text)});
  }
  return {static_cast<std::uint16_t>(found->second / mostCodes_),
          static_cast<std::uint16_t>(found->second % mostCodes_ + firstNumberOf(file_->isPostScript()))};
}

CharacterCode& Typeface::newCharacter(char32_t c) {
  const std::size_t page = c / kPage;
  if (page >= pages_.size()) {
    pages_.resize(page + 1);
  }
  if (!pages_[page]) {
    pages_[page] = std::make_unique<std::array<CharacterCode, kPage>>();
  }
  CharacterCode& character = (*pages_[page])[c % kPage];
  character.glyph = file_->glyphOf(c);
  character.advance = advanceOf(character.glyph);
  character.isPlain = character.glyph != 0 && !isMark(c) && !isInvisible(c) && !needsShaping(scriptOf(c));
  character.isKnown = true;
  return character;
}

void Typeface::giveCode(CharacterCode& character, char32_t c) {
  char text[4];
  const std::size_t size = putUtf8(c, text);
  character.code = codeOf(character.glyph, std::string_view(text, size));
}

const CharacterCode& Typeface::characterOf(char32_t c) {
  CharacterCode& character = knownCharacter(c);
  if (character.code.number == 0) {
    giveCode(character, c);
  }
  return character;
}

// A plain character of the first composite font, with its number; null for others.
const CharacterCode* Typeface::plainCharacter(char32_t c) {
  CharacterCode& character = knownCharacter(c);
  if (character.isPlain && character.code.number == 0) {
    giveCode(character, c);
  }
  if (!character.isPlain || character.code.font != 0) {
    return nullptr;
  }
  if (c < kPlainLetters && character.code.number < kFirstOfTwoBytes && character.advance >= 0 &&
      character.advance <= 0xFFFF) {
    (*plainLetters_)[c] = {static_cast<std::uint16_t>(character.advance),
                           static_cast<std::uint8_t>(character.code.number)};
  }
  return &character;
}

bool Typeface::appendPlain(std::string& bytes, std::string_view utf8, std::int64_t& width) {
  if (!plainLetters_) {
    plainLetters_ = std::make_unique<PlainLetters>();
  }
  const PlainLetters& letters = *plainLetters_;
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  const std::size_t begin = bytes.size();
  bytes.resize(begin + 2 * utf8.size());
  char* out = bytes.data() + begin;
  std::int64_t sum = 0;
  bool isPlain = true;
  while (at != end && isPlain) {
    // The text is well-formed.
    const auto lead = static_cast<unsigned char>(*at);
    char32_t c = lead;
    if (lead < 0x80) {
      ++at;
    } else if (lead < 0xE0) {
      c = (lead & 0x1Fu) << 6 | (static_cast<unsigned char>(at[1]) & 0x3Fu);
      at += 2;
    } else {
      nextUtf8(at, end, c);
    }
    if (const PlainLetter letter = c < kPlainLetters ? letters[c] : PlainLetter{}; letter.byte != 0) {
      *out++ = static_cast<char>(letter.byte);
      sum += letter.advance;
    } else if (const CharacterCode* const character = plainCharacter(c)) {
      const CodeBytes code(character->code.number);
      out = std::copy(code.view().begin(), code.view().end(), out);
      sum += character->advance;
    } else {
      isPlain = false;
    }
  }
  bytes.resize(static_cast<std::size_t>(out - bytes.data()));
  width += sum;
  return isPlain;
}

WrittenFonts Typeface::write(PdfFile& file) const {
  std::vector<unsigned char> bytes;
  std::vector<char32_t> characters;
  for (std::size_t byte = kFirstByte; byte < used_.size(); ++byte) {
    if (used_[byte] != 0) {
      bytes.push_back(static_cast<unsigned char>(byte));
      characters.push_back(characterOfWinAnsi(static_cast<unsigned char>(byte)));
    }
  }
  WrittenFonts written;
  if (bytes.empty() && entries_.empty()) {
    return written;
  }
  std::vector<std::uint32_t> glyphs;
  for (const Entry& entry : entries_) {
    glyphs.push_back(entry.glyph);
  }
  const FontFile::Subset subset = file_->subsetOf(characters, glyphs);
  if (subset.file.empty()) {
    throw document::OutputFailure(document::Status::FileError,
                                  "the font '" + file_->names().postScript + "' is broken: it has no subset");
  }
  FontWriter writer(file, *file_, subset);
  if (!bytes.empty()) {
    written.simple = writer.writeSimple(bytes, widths_);
  }
  for (std::size_t first = 0; first < entries_.size(); first += mostCodes_) {
    std::vector<CompositeGlyph> part;
    for (std::size_t i = first; i < std::min(first + mostCodes_, entries_.size()); ++i) {
      part.push_back({subset.glyphs[i], file_->advanceOf(entries_[i].glyph), entries_[i].text});
    }
    written.composites.push_back(writer.writeComposite(part));
  }
  return written;
}

}  // namespace scrivalen::typeset

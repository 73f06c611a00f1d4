#include "formats/pdf/typeset/text/shaper.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "formats/pdf/typeset/fonts/code_bytes.h"
#include "formats/pdf/typeset/fonts/win_ansi_text.h"
#include "formats/pdf/typeset/text/glyph_array.h"
#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>
#include <optional>
#include <span>
#include <utility>

namespace scrivalen::typeset {
namespace {

// Characters that choose the look of the emoji before them; they draw nothing.
constexpr std::string_view kTextLook = "\uFE0E";
constexpr std::string_view kEmojiLook = "\uFE0F";

bool isSelector(std::string_view text) { return text.starts_with(kTextLook) || text.starts_with(kEmojiLook); }

// Characters that join letters or keep them apart. They draw nothing, but belong to the text.
constexpr std::string_view kNonJoiner = "\u200C";
constexpr std::string_view kLetterJoiner = "\u200D";

bool isJoiner(std::string_view text) { return text.starts_with(kNonJoiner) || text.starts_with(kLetterJoiner); }

// Whether readers may take a text apart that a glyph stands for: a character past the basic plane with more after it.
bool needsSpelling(std::string_view text) {
  const bool isPastBasicPlane = !text.empty() && static_cast<unsigned char>(text.front()) >= 0xF0;
  return isPastBasicPlane && (text.ends_with(kNonJoiner) || text.ends_with(kLetterJoiner));
}

// The text without the signs at its end.
std::string_view lettersOf(std::string_view text) {
  while (needsSpelling(text)) {
    text.remove_suffix(kLetterJoiner.size());
  }
  return text;
}

// The length of the selectors and joiners that a text begins with, which have three bytes each.
std::size_t lengthOfSigns(std::string_view text) {
  std::size_t length = 0;
  while (isSelector(text.substr(length)) || isJoiner(text.substr(length))) {
    length += kLetterJoiner.size();
  }
  return length;
}

char32_t firstOf(std::string_view text) {
  const char* at = text.data();
  char32_t c = kReplacement;
  nextUtf8(at, at + text.size(), c);
  return c;
}

// The byte of WinAnsi that a text of one character is.
std::optional<unsigned char> winAnsiOf(std::string_view text) {
  const char* at = text.data();
  char32_t c = kReplacement;
  nextUtf8(at, at + text.size(), c);
  const auto byte = toWindows1252(c);
  const bool isWhole = at == text.data() + text.size() && byte && characterOfWinAnsi(*byte) == c;
  return isWhole ? byte : std::nullopt;
}

// Writes glyphs of composite fonts.
class CompositeRuns {
 public:
  CompositeRuns(Typeface& typeface, FontId font, Length size, bool isRightToLeft, std::vector<ShapedRun>& runs)
      : typeface_(typeface), font_(font), size_(size), isRightToLeft_(isRightToLeft), runs_(runs) {}
  CompositeRuns(const CompositeRuns&) = delete;
  CompositeRuns& operator=(const CompositeRuns&) = delete;
  ~CompositeRuns() { endRun(); }

  /// @param glyphs  that stand for the text together, in the order of the page. If they are several, the text is given
  ///                beside them (PDF 1.7, 14.9.4), because readers put together the texts of glyphs in different ways.
  ///                So is one that needs spelling. For readers that ignore it each has one of the characters, the last
  ///                of the text all that are left
  void add(std::string_view text, std::span<const ShapedGlyph> glyphs) {
    const bool isDrawn = glyphs.size() > 1 || (glyphs.front().advance != 0 && glyphs.front().glyph != 0);
    if (isInvisible(firstOf(text)) && !isDrawn) {
      return;
    }
    glyphs = withoutSelector(text, glyphs);
    const bool isMany = glyphs.size() > 1 || needsSpelling(text);
    divide(lettersOf(text), glyphs.size());
    for (std::size_t i = 0; i < glyphs.size(); ++i) {
      const Code code = typeface_.codeOf(glyphs[i].glyph, parts_[isRightToLeft_ ? glyphs.size() - 1 - i : i]);
      beginRun({font_, static_cast<std::uint16_t>(code.font + 1)});
      if (isMany && i == 0) {
        std::string operators = "/Span<</ActualText";
        appendText(operators, text);
        operators += ">>BDC";
        array_->operators(operators);
      }
      draw(glyphs[i], code.number);
    }
    if (isMany) {
      array_->operators(" EMC");
    }
  }

 private:
  // A selector of emoji's looks at the end of the text has a glyph of its own where the font does not know it.
  std::span<const ShapedGlyph> withoutSelector(std::string_view text, std::span<const ShapedGlyph> glyphs) const {
    const bool hasSelector = text.ends_with(kTextLook) || text.ends_with(kEmojiLook);
    const bool isDrawn = isRightToLeft_ || glyphs.size() < 2 || glyphs.back().advance != 0;
    return hasSelector && !isDrawn ? glyphs.first(glyphs.size() - 1) : glyphs;
  }

  // The characters of a text, one for each glyph. The last has what is left; there may be none for the others.
  void divide(std::string_view text, std::size_t glyphCount) {
    parts_.assign(glyphCount, {});
    for (std::size_t i = 0; i + 1 < glyphCount && !text.empty(); ++i) {
      char32_t c = 0;
      const char* next = text.data();
      nextUtf8(next, text.data() + text.size(), c);
      parts_[i] = text.substr(0, static_cast<std::size_t>(next - text.data()));
      text.remove_prefix(parts_[i].size());
    }
    parts_.back() = text;
  }

  void beginRun(FontUse font) {
    if (array_ && runs_.back().font == font) {
      return;
    }
    endRun();
    runs_.push_back({font, {}, 0});
    array_.emplace(runs_.back().content);
  }

  void endRun() {
    if (array_) {
      array_->move(owed_);
      array_.reset();
      runs_.back().width = scaled(width_, size_);
      width_ = owed_ = 0;
    }
  }

  void draw(const ShapedGlyph& glyph, std::uint16_t number) {
    array_->move(owed_ + glyph.x);
    if (glyph.y != 0) {
      std::string rise = " ";
      appendThousandths(rise, scaled(glyph.y, size_) * kUnitsPerPoint);
      array_->operators(rise + " Ts");
    }
    array_->add(CodeBytes(number).view());
    if (glyph.y != 0) {
      array_->operators(" 0 Ts");
    }
    owed_ = glyph.advance - typeface_.advanceOf(glyph.glyph) - glyph.x;
    width_ += glyph.advance;
  }

  Typeface& typeface_;
  FontId font_;
  Length size_;
  bool isRightToLeft_;
  std::vector<std::string_view> parts_;
  std::vector<ShapedRun>& runs_;
  std::optional<GlyphArray> array_;
  std::int64_t width_ = 0;
  std::int64_t owed_ = 0;  // what the glyphs before are wider than their font has them
};

}  // namespace

const std::vector<ShapedRun>& Shaper::shape(std::string_view text, const ShapeStyle& style) {
  key_.assign(text);
  key_ += '\0';
  key_.append(reinterpret_cast<const char*>(&style.font), sizeof style.font);
  key_ += static_cast<char>((style.isRightToLeft ? 1 : 0) + (style.isKerned ? 2 : 0));
  key_.append(reinterpret_cast<const char*>(&style.size), sizeof style.size).append(style.language);
  const auto found = words_.find(key_);
  if (found != words_.end()) {
    return found->second;
  }
  std::vector<ShapedRun> runs;
  divide(text, style);
  for (const Part& part : parts_) {
    shapePart(text.substr(part.begin, part.end - part.begin), part, style, runs);
  }
  if (text.size() > kLongestWord) {
    long_ = std::move(runs);
    return long_;
  }
  if (words_.size() == kMostWords) {
    words_.clear();
  }
  return words_.emplace(key_, std::move(runs)).first->second;
}

ShapedRun Shaper::softHyphen(const ShapeStyle& style) {
  bool found = true;
  const FontId font = fonts_.fontFor(style.font, U'-', found);
  Typeface& typeface = fonts_.at(font);
  const std::uint32_t glyph = typeface.glyphOf(U'-');
  const Code code = typeface.codeOf(glyph, kSoftHyphen);
  ShapedRun run;
  appendString(run.content, CodeBytes(code.number).view());
  run.font = {font, static_cast<std::uint16_t>(code.font + 1)};
  run.width = scaled(typeface.advanceOf(glyph), style.size);
  return run;
}

void Shaper::countMissing(char32_t c) {
  MissingCharacters& missing = missing_[scriptOf(c)];
  missing.first = missing.count == 0 ? c : missing.first;
  ++missing.count;
}

// Divides a text into parts of one font and script. Marks and signs of all scripts stay with what comes before them, if
// its font has them.
void Shaper::divide(std::string_view text, const ShapeStyle& style) {
  parts_.clear();
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    const auto begin = static_cast<std::size_t>(at - text.data());
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    const auto next = static_cast<std::size_t>(at - text.data());
    const Script script = scriptOf(c);
    const bool isMarkHere = isMark(c);
    if (!parts_.empty()) {
      Part& last = parts_.back();
      const bool isSameScript = script == kNoScript || script == last.script || last.script == kNoScript;
      const bool joins = isInvisible(c) || (isMarkHere && fonts_.at(last.font).has(c));
      bool found = true;
      if ((!last.isMissing || lengthOfSigns(text.substr(begin)) > 0) && isSameScript &&
          (joins || fonts_.fontFor(style.font, c, found) == last.font) && found) {
        last.end = next;
        last.script = last.script == kNoScript ? script : last.script;
        last.needsShaping = last.needsShaping || isMarkHere || needsShaping(script);
        continue;
      }
    }
    bool found = true;
    const FontId font = isInvisible(c) ? style.font : fonts_.fontFor(style.font, c, found);
    parts_.push_back({begin, next, font, script, found && (isMarkHere || needsShaping(script)), !found});
  }
}

// HarfBuzz keeps all languages in one list, for good: those after many are none.
std::string_view Shaper::known(std::string_view language) {
  if (language.empty()) {
    return language;
  }
  std::string name(language);
  if (languages_.size() < kMostLanguages) {
    languages_.insert(std::move(name));
    return language;
  }
  return languages_.count(name) != 0 ? language : std::string_view();
}

void Shaper::shapePart(std::string_view text, const Part& part, const ShapeStyle& style, std::vector<ShapedRun>& runs) {
  if (part.isMissing) {
    setCharacters(text, part.font, style.size, runs);
    runs.back().missing = firstOf(text);
    return;
  }
  // What is written from right to left has its signs in that order, and its brackets mirrored.
  if (!part.needsShaping && !style.isKerned && !style.isRightToLeft) {
    return setCharacters(text, part.font, style.size, runs);
  }
  const std::size_t first = runs.size();
  fonts_.at(part.font).file().shape({text, part.script, style.isRightToLeft, known(style.language)}, glyphs_);
  fonts_.at(part.font).spaceMissingGlyphs(glyphs_);
  if (style.isRightToLeft || !setSimple(text, part.font, style.size, runs)) {
    setComposite(text, part.font, style, runs);
  }
  if (style.isRightToLeft) {
    std::reverse(runs.begin() + static_cast<std::ptrdiff_t>(first), runs.end());
  }
}

// Each character as its usual glyph.
void Shaper::setCharacters(std::string_view text, FontId font, Length size, std::vector<ShapedRun>& runs) {
  Typeface& typeface = fonts_.at(font);
  std::string bytes;
  if (appendWinAnsi(bytes, text) && typeface.has(bytes)) {
    typeface.use(bytes);
    ShapedRun& run = runs.emplace_back();
    appendString(run.content, bytes);
    run.font = {font, 0};
    run.width = typeface.widthOf(bytes, size);
    return;
  }
  bytes.clear();
  const char* at = text.data();
  const char* const end = at + text.size();
  std::int64_t width = 0;
  FontUse use{font, 0};
  const auto flush = [&] {
    if (!bytes.empty()) {
      ShapedRun& run = runs.emplace_back();
      run.font = use;
      appendString(run.content, bytes);
      run.width = scaled(width, size);
      bytes.clear();
      width = 0;
    }
  };
  while (at != end) {
    const char* const begin = at;
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    if (isInvisible(c)) {
      continue;
    }
    const CharacterCode& character = typeface.characterOf(c);
    Code code = character.code;
    if (const std::size_t signs = lengthOfSigns({at, end}); signs > 0) {
      at += signs;
      if (needsSpelling({begin, at})) {
        flush();
        const ShapedGlyph glyph{character.glyph, 0, static_cast<std::int32_t>(character.advance), 0, 0};
        CompositeRuns(typeface, font, size, false, runs).add({begin, at}, std::span(&glyph, 1));
        continue;
      }
      code = typeface.codeOf(character.glyph, {begin, at});
    }
    const FontUse own{font, static_cast<std::uint16_t>(code.font + 1)};
    if (!(own == use)) {
      flush();
      use = own;
    }
    bytes += CodeBytes(code.number).view();
    width += character.advance;
  }
  flush();
}

// WinAnsi, if each glyph is the usual one of a character that it has.
bool Shaper::setSimple(std::string_view text, FontId font, Length size, std::vector<ShapedRun>& runs) {
  Typeface& typeface = fonts_.at(font);
  std::string bytes;
  for (std::size_t i = 0; i < glyphs_.size(); ++i) {
    const std::size_t begin = glyphs_[i].cluster;
    const std::size_t end = i + 1 < glyphs_.size() ? glyphs_[i + 1].cluster : text.size();
    const auto byte = winAnsiOf(text.substr(begin, end - begin));
    if (!byte || typeface.glyphOfWinAnsi(*byte) != glyphs_[i].glyph || glyphs_[i].glyph == 0 || glyphs_[i].y != 0) {
      return false;
    }
    bytes += static_cast<char>(*byte);
  }
  typeface.use(bytes);
  ShapedRun& run = runs.emplace_back();
  run.font = {font, 0};
  GlyphArray array(run.content);
  std::int64_t width = 0;
  std::int64_t owed = 0;  // what the glyphs before are wider than the font has them
  for (std::size_t i = 0; i < glyphs_.size(); ++i) {
    array.move(owed + glyphs_[i].x);
    array.add(std::string_view(bytes).substr(i, 1));
    owed = glyphs_[i].advance - typeface.widthOf(bytes[i]) - glyphs_[i].x;
    width += glyphs_[i].advance;
  }
  array.move(owed);
  run.width = scaled(width, size);
  return true;
}

// Glyphs with the texts that they stand for.
void Shaper::setComposite(std::string_view text, FontId font, const ShapeStyle& style, std::vector<ShapedRun>& runs) {
  CompositeRuns composite(fonts_.at(font), font, style.size, style.isRightToLeft, runs);
  for (std::size_t begin = 0; begin < glyphs_.size();) {
    const std::size_t cluster = glyphs_[begin].cluster;
    std::size_t end = begin + 1;
    while (end < glyphs_.size() && glyphs_[end].cluster == cluster) {
      ++end;
    }
    std::size_t textEnd = text.size();
    for (const std::size_t beside : {begin - 1, end}) {
      if (beside < glyphs_.size() && glyphs_[beside].cluster > cluster) {
        textEnd = std::min<std::size_t>(textEnd, glyphs_[beside].cluster);
      }
    }
    // A joiner that has a glyph of its own is not drawn: it is in the text of the glyph before it.
    while (!isJoiner(text.substr(cluster)) && isJoiner(text.substr(textEnd))) {
      textEnd += kLetterJoiner.size();
    }
    composite.add(text.substr(cluster, textEnd - cluster), std::span(glyphs_).subspan(begin, end - begin));
    begin = end;
  }
}

}  // namespace scrivalen::typeset

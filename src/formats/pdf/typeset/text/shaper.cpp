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

// The length of the joiners that a text begins with, which have three bytes each.
std::size_t lengthOfJoiners(std::string_view text) {
  std::size_t length = 0;
  while (isJoiner(text.substr(length))) {
    length += kLetterJoiner.size();
  }
  return length;
}

// The same at its end.
std::size_t lengthOfLastJoiners(std::string_view text) {
  std::size_t length = 0;
  while (text.ends_with(kNonJoiner) || text.ends_with(kLetterJoiner)) {
    text.remove_suffix(kLetterJoiner.size());
    length += kLetterJoiner.size();
  }
  return length;
}

std::size_t lengthOfLastSelectors(std::string_view text) {
  std::size_t length = 0;
  while (text.ends_with(kTextLook) || text.ends_with(kEmojiLook)) {
    text.remove_suffix(kEmojiLook.size());
    length += kEmojiLook.size();
  }
  return length;
}

bool isPastBasicPlane(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xF0; });
}

// The length of the selectors and joiners that a text begins with, which have three bytes each.
std::size_t lengthOfSigns(std::string_view text) {
  std::size_t length = 0;
  while (isSelector(text.substr(length)) || isJoiner(text.substr(length))) {
    length += kLetterJoiner.size();
  }
  return length;
}

// What a glyph stands for that is no letter.
constexpr std::string_view kLeftToRightMark = "\u200E";
constexpr std::string_view kRightToLeftMark = "\u200F";

char32_t firstOf(std::string_view text) {
  const char* at = text.data();
  char32_t c = kReplacement;
  nextUtf8(at, at + text.size(), c);
  return c;
}

bool isOneCharacter(std::string_view text) {
  const char* at = text.data();
  char32_t c = kReplacement;
  nextUtf8(at, at + text.size(), c);
  return at == text.data() + text.size();
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

// Writes glyphs of composite fonts. What endRun has not ended is not complete.
class CompositeRuns {
 public:
  CompositeRuns(FontSet& fonts, FontId font, const ShapeStyle& style, std::vector<ShapedRun>& runs)
      : fonts_(fonts),
        typeface_(fonts.at(font)),
        font_(font),
        size_(style.size),
        isRightToLeft_(style.isRightToLeft),
        runs_(runs) {}
  CompositeRuns(const CompositeRuns&) = delete;
  CompositeRuns& operator=(const CompositeRuns&) = delete;

  /// @param text    may begin with joiners, which belong to the text before it
  /// @param glyphs  that stand for the text together, in the order of the page. If they are several, the text is given
  ///                beside them (PDF 1.7, 14.9.4), because readers put together the texts of glyphs in different ways.
  ///                For readers that ignore it each has one of the characters, the last of the text all that are left
  void add(std::string_view text, std::span<const ShapedGlyph> glyphs) {
    chooseDrawn(text, glyphs);
    if (drawn_.empty()) {
      return;
    }
    const std::size_t joiners = isRightToLeft_ ? 0 : lengthOfLastJoiners(text);
    const bool isDivided = divide(text.substr(0, text.size() - joiners));
    // PDFium loses characters past the basic plane that are given beside glyphs.
    if (drawn_.size() > 1 && !(isDivided && isPastBasicPlane(text))) {
      addTogether(text.substr(0, text.size() - joiners));
    } else {
      for (std::size_t i = 0; i < drawn_.size(); ++i) {
        addAlone(drawn_[i], partOf(i));
      }
    }
    addBlank(text.substr(text.size() - joiners));
  }

  void endRun() {
    if (array_) {
      array_->move(owed_);
      array_->end();
      array_.reset();
      runs_.back().width = scaled(width_, size_);
      width_ = owed_ = 0;
    }
  }

 private:
  void addTogether(std::string_view text) {
    const ShapedGlyph edge = edgeGlyph();
    if (edge.glyph != 0) {
      drawn_.insert(isRightToLeft_ ? drawn_.begin() : drawn_.end(), edge);
      parts_.push_back(isRightToLeft_ ? kRightToLeftMark : kLeftToRightMark);
    }
    for (std::size_t i = 0; i < drawn_.size(); ++i) {
      const Code code = beginGlyph(drawn_[i], partOf(i));
      if (i == 0) {
        std::string operators = "/Span<</ActualText";
        appendText(operators, inPageOrder(text));
        operators += ">>BDC";
        array_->operators(operators);
      }
      draw(drawn_[i], code.number);
    }
    array_->operators(" EMC");
  }

  // poppler takes such a text to reach from the place of its first glyph to that of its last, and a distance from texts
  // beside it for a blank. Where a mark is the glyph that counts, one that shows nothing is added at the edge. Readers
  // that ignore the text have a mark of direction there. @return glyph 0 if there is no need, or no such glyph
  ShapedGlyph edgeGlyph() const {
    const ShapedGlyph& last = isRightToLeft_ ? drawn_.front() : drawn_.back();
    const bool isInPlace = last.x == 0 && last.y == 0;
    return {isInPlace ? 0 : typeface_.blankGlyph(), 0, 0, 0, 0};
  }

  // MuPDF reads a character past the basic plane only if it is a glyph's whole text. The signs beside it are blanks.
  void addAlone(const ShapedGlyph& glyph, std::string_view text) {
    const bool isSplit = isPastBasicPlane(text) && !isRightToLeft_;
    const std::size_t before = isSplit ? lengthOfJoiners(text) : 0;
    const std::size_t after = isSplit ? lengthOfLastSelectors(text) : 0;
    addBlank(text.substr(0, before));
    const Code code = beginGlyph(glyph, text.substr(before, text.size() - before - after));
    draw(glyph, code.number);
    addBlank(text.substr(text.size() - after));
  }

  // Adds signs that nothing is drawn for.
  void addBlank(std::string_view signs) {
    if (signs.empty()) {
      return;
    }
    endRun();
    constexpr FontId kBlankFont = fontOf(Family::DejaVu, false, false);
    Typeface& typeface = fonts_.at(kBlankFont);
    const Code code = typeface.codeOf(typeface.blankGlyph(), signs);
    ShapedRun& run = runs_.emplace_back();
    appendString(run.content, CodeBytes(code.number).view());
    run.font = {kBlankFont, static_cast<std::uint16_t>(code.font + 1)};
  }

  std::string_view partOf(std::size_t glyph) const {
    return parts_[isRightToLeft_ ? parts_.size() - 1 - glyph : glyph];
  }

  Code beginGlyph(const ShapedGlyph& glyph, std::string_view text) {
    const Code code = typeface_.codeOf(glyph.glyph, inPageOrder(text));
    beginRun({font_, static_cast<std::uint16_t>(code.font + 1)});
    return code;
  }

  // Without glyphs that show nothing: those of invisible characters, as which HarfBuzz has blanks without a width, and
  // a selector of emoji's looks that the font does not know.
  void chooseDrawn(std::string_view text, std::span<const ShapedGlyph> glyphs) {
    drawn_.assign(glyphs.begin(), glyphs.end());
    const bool hasSelector = text.ends_with(kTextLook) || text.ends_with(kEmojiLook);
    if (hasSelector && !isRightToLeft_ && drawn_.size() > 1 && drawn_.back().advance == 0) {
      drawn_.pop_back();
    }
    const bool isInvisibleText = isInvisible(firstOf(text.substr(lengthOfJoiners(text))));
    if (isInvisibleText && drawn_.size() == 1 && (drawn_.front().advance == 0 || drawn_.front().glyph == 0)) {
      drawn_.clear();
    } else if (drawn_.size() > 1) {
      const std::uint32_t blank = typeface_.glyphOf(U' ');
      std::erase_if(drawn_, [blank](const ShapedGlyph& each) { return each.glyph == blank && each.advance == 0; });
    }
  }

  // The characters of a text, one for each glyph, with the signs before it. The last has what is left; there may be
  // none for the others. Returns whether each has one.
  bool divide(std::string_view text) {
    parts_.assign(drawn_.size(), {});
    for (std::size_t i = 0; i + 1 < parts_.size() && !text.empty(); ++i) {
      const std::size_t length = lengthOfFirst(text);
      parts_[i] = text.substr(0, length);
      text.remove_prefix(length);
    }
    parts_.back() = text;
    return !text.empty() && lengthOfFirst(text) == text.size();
  }

  static std::size_t lengthOfFirst(std::string_view text) {
    const char* next = text.data() + lengthOfJoiners(text);
    const char* const end = text.data() + text.size();
    char32_t c = 0;
    if (next != end) {
      nextUtf8(next, end, c);
    }
    while (isSelector({next, end})) {
      next += kEmojiLook.size();
    }
    return static_cast<std::size_t>(next - text.data());
  }

  // Readers have the glyphs of a text from right to left in the order of the page, and turn all their characters round.
  std::string_view inPageOrder(std::string_view text) {
    if (!isRightToLeft_) {
      return text;
    }
    turned_.resize(text.size());
    auto end = turned_.end();
    const char* at = text.data();
    while (at != text.data() + text.size()) {
      const char* const begin = at;
      char32_t c = 0;
      nextUtf8(at, text.data() + text.size(), c);
      end = std::copy_backward(begin, at, end);
    }
    return turned_;
  }

  void beginRun(FontUse font) {
    if (array_ && runs_.back().font == font) {
      return;
    }
    endRun();
    runs_.push_back({font, {}, 0});
    array_.emplace(runs_.back().content);
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

  FontSet& fonts_;
  Typeface& typeface_;
  FontId font_;
  Length size_;
  bool isRightToLeft_;
  std::vector<ShapedGlyph> drawn_;
  std::vector<std::string_view> parts_;
  std::string turned_;
  std::vector<ShapedRun>& runs_;
  std::optional<GlyphArray> array_;
  std::int64_t width_ = 0;
  std::int64_t owed_ = 0;  // what the glyphs before are wider than their font has them
};

// Runs of characters that are drawn as their usual glyphs.
class CharacterRuns {
 public:
  CharacterRuns(FontSet& fonts, FontId font, const ShapeStyle& style, std::vector<ShapedRun>& runs)
      : fonts_(fonts), typeface_(fonts.at(font)), font_(font), style_(style), runs_(runs), use_{font, 0} {}
  CharacterRuns(const CharacterRuns&) = delete;
  CharacterRuns& operator=(const CharacterRuns&) = delete;

  /// @param text  that the glyph of the character stands for
  void add(char32_t c, std::string_view text) {
    if (isOneCharacter(text)) {
      addCode(typeface_.characterOf(c));
    } else {
      endRun();
      addGlyph(typeface_.glyphOf(c), text);
    }
  }

  void endRun() {
    if (!bytes_.empty()) {
      ShapedRun& run = runs_.emplace_back();
      run.font = use_;
      appendString(run.content, bytes_);
      run.width = scaled(width_, style_.size);
      bytes_.clear();
      width_ = 0;
    }
  }

 private:
  void addCode(const CharacterCode& character) {
    const FontUse own{font_, static_cast<std::uint16_t>(character.code.font + 1)};
    if (!(own == use_)) {
      endRun();
      use_ = own;
    }
    bytes_ += CodeBytes(character.code.number).view();
    width_ += character.advance;
  }

  void addGlyph(std::uint32_t glyph, std::string_view text) {
    const ShapedGlyph shaped{glyph, 0, static_cast<std::int32_t>(typeface_.advanceOf(glyph)), 0, 0};
    CompositeRuns composite(fonts_, font_, style_, runs_);
    composite.add(text, std::span(&shaped, 1));
    composite.endRun();
  }

  FontSet& fonts_;
  Typeface& typeface_;
  FontId font_;
  const ShapeStyle& style_;
  std::vector<ShapedRun>& runs_;
  std::string bytes_;  // of the run that is open
  std::int64_t width_ = 0;
  FontUse use_;
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

// pdf.js orders the words of a line from right to left only as far as one font goes, and a change of fonts takes bytes.
ShapedRun Shaper::blank(const ShapeStyle& style, FontUse fontBefore) {
  constexpr char32_t kBlank = U' ';
  if (fontBefore.composite > 0 && fonts_.at(fontBefore.typeface).has(kBlank)) {
    const CharacterCode& blank = fonts_.at(fontBefore.typeface).characterOf(kBlank);
    const FontUse font{fontBefore.typeface, static_cast<std::uint16_t>(blank.code.font + 1)};
    if (font == fontBefore) {
      ShapedRun run{font, {}, scaled(blank.advance, style.size)};
      appendString(run.content, CodeBytes(blank.code.number).view());
      return run;
    }
  }
  return shape(" ", style).front();
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
    parts_.push_back(
        {begin - takeJoiners(text, style), next, font, script, found && (isMarkHere || needsShaping(script)), !found});
  }
}

// Takes the joiners from the end of the last part, for the next one. @return their length
std::size_t Shaper::takeJoiners(std::string_view text, const ShapeStyle& style) {
  if (parts_.empty() || style.isRightToLeft) {
    return 0;
  }
  Part& last = parts_.back();
  const std::size_t joiners = lengthOfLastJoiners(text.substr(last.begin, last.end - last.begin));
  last.end -= joiners;
  if (last.begin == last.end) {
    parts_.pop_back();
  }
  return joiners;
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
    setCharacters(text, part.font, style, runs);
    runs.back().missing = firstOf(text.substr(lengthOfJoiners(text)));
    return;
  }
  // What is written from right to left has its signs in that order, and its brackets mirrored.
  if (!part.needsShaping && !style.isKerned && !style.isRightToLeft) {
    return setCharacters(text, part.font, style, runs);
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
void Shaper::setCharacters(std::string_view text, FontId font, const ShapeStyle& style, std::vector<ShapedRun>& runs) {
  Typeface& typeface = fonts_.at(font);
  std::string bytes;
  if (appendWinAnsi(bytes, text) && typeface.has(bytes)) {
    typeface.use(bytes);
    ShapedRun& run = runs.emplace_back();
    appendString(run.content, bytes);
    run.font = {font, 0};
    run.width = typeface.widthOf(bytes, style.size);
    return;
  }
  CharacterRuns characters(fonts_, font, style, runs);
  const char* at = text.data();
  const char* const end = at + text.size();
  const char* begin = at;  // of the character's text, with the joiners before it
  while (at != end) {
    const char* const letter = at;
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    if (isInvisible(c)) {
      begin = isJoiner({letter, end}) ? begin : at;
      continue;
    }
    at += lengthOfSigns({at, end});
    at -= at == end || style.isRightToLeft ? 0 : lengthOfLastJoiners({letter, at});
    characters.add(c, {begin, at});
    begin = at;
  }
  characters.endRun();
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
  array.end();
  run.width = scaled(width, size);
  return true;
}

// Where the text of some of the glyphs ends, which are one cluster.
std::size_t Shaper::endOfCluster(std::size_t firstGlyph, std::size_t endGlyph, std::size_t textSize) const {
  const std::size_t cluster = glyphs_[firstGlyph].cluster;
  std::size_t end = textSize;
  for (const std::size_t beside : {firstGlyph - 1, endGlyph}) {
    if (beside < glyphs_.size() && glyphs_[beside].cluster > cluster) {
      end = std::min<std::size_t>(end, glyphs_[beside].cluster);
    }
  }
  return end;
}

// Glyphs with the texts that they stand for. pdf.js drops a glyph whose text ends with a joiner. So from left to right
// joiners begin the text of the next glyph; from right to left, where texts are turned round, they end that before.
void Shaper::setComposite(std::string_view text, FontId font, const ShapeStyle& style, std::vector<ShapedRun>& runs) {
  CompositeRuns composite(fonts_, font, style, runs);
  std::size_t done = 0;  // the text of the glyphs before, from left to right
  std::size_t end = 0;
  for (std::size_t begin = 0; begin < glyphs_.size(); begin = end) {
    const std::size_t cluster = glyphs_[begin].cluster;
    for (end = begin + 1; end < glyphs_.size() && glyphs_[end].cluster == cluster;) {
      ++end;
    }
    const std::size_t textBegin = style.isRightToLeft ? cluster : done;
    std::size_t textEnd = endOfCluster(begin, end, text.size());
    // Joiners that have glyphs of their own are in the text of others.
    if (cluster < textBegin || lengthOfJoiners(text.substr(cluster)) >= textEnd - cluster) {
      continue;
    }
    const std::size_t next = textEnd + lengthOfJoiners(text.substr(textEnd));
    if (style.isRightToLeft || next == text.size()) {
      textEnd = next;
    } else {
      textEnd -= lengthOfLastJoiners(text.substr(0, textEnd));
    }
    composite.add(text.substr(textBegin, textEnd - textBegin), std::span(glyphs_).subspan(begin, end - begin));
    done = textEnd;
  }
  composite.endRun();
}

}  // namespace scrivalen::typeset

#include "formats/pdf/typeset/text/paragraph.h"

#include "formats/pdf/typeset/text/bidi.h"
#include "formats/pdf/typeset/text/letters.h"
#include "formats/pdf/typeset/text/line_ends.h"
#include "text/direction.h"

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <optional>

namespace scrivalen::typeset {
namespace {

// A part of a line that is never divided: glyphs of one font, or blanks.
struct Item {
  std::size_t span;
  FontUse font;
  std::size_t begin;  // of its glyphs in the contents of the line
  std::size_t end;
  Length width;
  std::uint8_t level;
  bool isBlank;
  int picture;  // an index of StyledText::pictures; -1: it is none
  std::optional<char32_t> missing = std::nullopt;
};

// Where the last character of a text begins.
std::size_t beginOfLast(std::string_view text) {
  std::size_t at = text.size() - 1;
  while (at > 0 && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80) {
    --at;
  }
  return at;
}

class LineSetter {
 public:
  LineSetter(const StyledText& text, const LineRule& rule, Shaper& shaper)
      : text_(text), all_(text.text), rule_(rule), shaper_(shaper) {}

  SetText set();

 private:
  void addSegment(std::size_t begin, std::size_t end);
  void addWord(std::size_t begin, std::size_t end);
  void makeRoom(std::size_t begin, Length wordWidth);
  void addLongWord(std::size_t begin, std::size_t end);
  std::size_t beginningThatFits(std::size_t begin, std::size_t end);
  bool endsInSoftHyphen(std::size_t end) const;
  ShapedRun hyphenAt(std::size_t end);
  void addHyphen(std::size_t end);
  void addBlanks(std::size_t begin, std::size_t end);
  Length shape(std::size_t begin, std::size_t end, std::vector<Item>& items, std::string& content);
  std::size_t endOfRun(std::size_t begin, std::size_t end);
  std::size_t spanAt(std::size_t at);
  const TextStyle& styleOf(std::size_t span) const { return text_.spans[span].style; }
  std::vector<TextPicture>::const_iterator firstPictureFrom(std::size_t at) const;
  int pictureAt(std::size_t at) const;
  PictureSize sizeOf(int picture) const;
  void endLine(std::size_t end, bool isBroken);
  void appendPiece(const Item& item, Length extra);
  void measure(TextLine& line);

  const StyledText& text_;
  std::string_view all_;
  const LineRule& rule_;
  Shaper& shaper_;
  SetText result_;
  std::vector<std::uint8_t> levels_;  // empty: all from left to right
  std::size_t span_ = 0;

  // The line that is being filled.
  std::vector<Item> items_;
  std::string content_;
  std::size_t lineBegin_ = 0;
  std::size_t firstPiece_ = 0;
  Length width_ = 0;  // with the blanks at its end
  bool hasText_ = false;

  std::vector<Item> wordItems_;
  std::string wordContent_;
  std::vector<std::size_t> letterEnds_;
  std::vector<std::uint8_t> itemLevels_;
  std::vector<std::size_t> order_;
};

SetText LineSetter::set() {
  if (rule_.isRightToLeft || hasRightToLeft(all_)) {
    result_.isRightToLeft = rule_.isRightToLeft || firstDirection(all_) == Direction::RightToLeft;
    levelsOf(all_, result_.isRightToLeft, levels_);
  }
  LineEnds ends(all_);
  LineBreak place;
  std::size_t begin = 0;
  while (ends.next(place)) {
    const std::size_t end = place.isForced ? beginOfLast(all_.substr(0, place.at)) : place.at;
    addSegment(begin, end);
    if (place.isForced) {
      endLine(end, false);
      lineBegin_ = place.at;
    }
    begin = place.at;
  }
  if (lineBegin_ < all_.size() || result_.lines.empty()) {
    endLine(all_.size(), false);
  }
  return std::move(result_);
}

// A word and the blanks after it.
void LineSetter::addSegment(std::size_t begin, std::size_t end) {
  std::size_t wordEnd = end;
  while (wordEnd > begin && all_[wordEnd - 1] == ' ') {
    --wordEnd;
  }
  if (wordEnd > begin) {
    addWord(begin, wordEnd);
  }
  if (end > wordEnd && (hasText_ || rule_.keepsBlanks)) {
    addBlanks(wordEnd, end);
  }
}

// Before a word that the line has no room for. Indentation is not left alone in a line: a word that has to be broken
// stays beside it, unless it takes more than half of the line.
void LineSetter::makeRoom(std::size_t begin, Length wordWidth) {
  if (hasText_) {
    return endLine(begin, true);
  }
  if (wordWidth <= rule_.width || width_ > rule_.width / 2) {
    items_.clear();
    content_.clear();
    width_ = 0;
  }
}

void LineSetter::addWord(std::size_t begin, std::size_t end) {
  wordItems_.clear();
  wordContent_.clear();
  const Length width = shape(begin, end, wordItems_, wordContent_);
  const Length hyphen = endsInSoftHyphen(end) ? hyphenAt(end).width : 0;
  if (width_ + width + hyphen > rule_.width && !items_.empty()) {
    makeRoom(begin, width);
  }
  if (width > rule_.width && !rule_.keepsWords) {
    return addLongWord(begin, end);
  }
  for (Item item : wordItems_) {
    item.begin += content_.size();
    item.end += content_.size();
    items_.push_back(item);
  }
  content_ += wordContent_;
  width_ += width;
  hasText_ = true;
}

// A word that no line holds breaks where a line is full, after a sign or else between letters. What a line has of it is
// shaped together.
void LineSetter::addLongWord(std::size_t begin, std::size_t end) {
  result_.dividesWords = true;
  while (begin < end) {
    std::size_t part = beginningThatFits(begin, end);
    if (part == begin && hasText_) {
      endLine(begin, true);
      continue;
    }
    part = part == begin ? endOfLetter(all_.substr(0, end), begin) : part;
    part = part < end ? endAfterSign(all_, begin, part) : part;
    width_ += shape(begin, part, items_, content_);
    hasText_ = true;
    begin = part;
    if (begin < end) {
      endLine(begin, true);
    }
  }
}

// The end of the longest beginning of a word that the line has room for. Looks no further than about twice as far, so
// that the time for a word is in proportion to its length.
std::size_t LineSetter::beginningThatFits(std::size_t begin, std::size_t end) {
  const auto fits = [&](std::size_t part) {
    wordItems_.clear();
    wordContent_.clear();
    return width_ + shape(begin, part, wordItems_, wordContent_) <= rule_.width;
  };
  letterEnds_.assign(1, begin);
  std::size_t fitting = 0;  // so many letters fit
  std::size_t tooMany = 1;
  for (;; tooMany *= 2) {
    while (letterEnds_.size() <= tooMany && letterEnds_.back() < end) {
      letterEnds_.push_back(endOfLetter(all_.substr(0, end), letterEnds_.back()));
    }
    tooMany = std::min(tooMany, letterEnds_.size() - 1);
    if (!fits(letterEnds_[tooMany])) {
      break;
    }
    fitting = tooMany;
    if (letterEnds_[fitting] == end) {
      return end;
    }
  }
  while (fitting + 1 < tooMany) {
    const std::size_t middle = (fitting + tooMany) / 2;
    (fits(letterEnds_[middle]) ? fitting : tooMany) = middle;
  }
  return letterEnds_[fitting];
}

bool LineSetter::endsInSoftHyphen(std::size_t end) const { return all_.substr(0, end).ends_with(kSoftHyphen); }

ShapedRun LineSetter::hyphenAt(std::size_t end) {
  const TextStyle& style = styleOf(spanAt(end - kSoftHyphen.size()));
  return shaper_.softHyphen({style.font, style.size});
}

void LineSetter::addHyphen(std::size_t end) {
  const ShapedRun run = hyphenAt(end);
  const std::size_t place = end - kSoftHyphen.size();
  const std::uint8_t level = levels_.empty() ? std::uint8_t{0} : levels_[place];
  const std::size_t at = content_.size();
  content_ += run.content;
  items_.push_back({spanAt(place), run.font, at, content_.size(), run.width, level, false, -1});
  width_ += run.width;
}

void LineSetter::addBlanks(std::size_t begin, std::size_t end) {
  while (begin < end) {
    const std::size_t span = spanAt(begin);
    const std::size_t runEnd = endOfRun(begin, end);
    const TextStyle& style = styleOf(span);
    const FontUse fontBefore = items_.empty() ? FontUse{style.font, 0} : items_.back().font;
    const ShapedRun run = shaper_.blank({style.font, style.size}, fontBefore);
    for (; begin < runEnd; ++begin) {
      const std::size_t at = content_.size();
      content_ += run.content;
      const std::uint8_t level = levels_.empty() ? std::uint8_t{0} : levels_[begin];
      items_.push_back({span, run.font, at, content_.size(), run.width, level, true, -1});
      width_ += run.width;
    }
  }
}

std::size_t LineSetter::spanAt(std::size_t at) {
  while (span_ > 0 && text_.spans[span_].begin > at) {
    --span_;
  }
  while (span_ + 1 < text_.spans.size() && text_.spans[span_ + 1].begin <= at) {
    ++span_;
  }
  return span_;
}

// The end of the text that has one style and direction.
std::size_t LineSetter::endOfRun(std::size_t begin, std::size_t end) {
  const std::size_t span = spanAt(begin);
  if (span + 1 < text_.spans.size()) {
    end = std::min(end, text_.spans[span + 1].begin);
  }
  if (const auto picture = firstPictureFrom(begin); picture != text_.pictures.end()) {
    end = std::min(end, picture->at == begin ? begin + kPictureCharacter.size() : picture->at);
  }
  if (!levels_.empty()) {
    std::size_t at = begin;
    while (at < end && levels_[at] == levels_[begin]) {
      ++at;
    }
    end = at;
  }
  return end;
}

std::vector<TextPicture>::const_iterator LineSetter::firstPictureFrom(std::size_t at) const {
  return std::lower_bound(text_.pictures.begin(), text_.pictures.end(), at,
                          [](const TextPicture& picture, std::size_t place) { return picture.at < place; });
}

int LineSetter::pictureAt(std::size_t at) const {
  const auto found = firstPictureFrom(at);
  return found == text_.pictures.end() || found->at != at ? -1 : static_cast<int>(found - text_.pictures.begin());
}

// A picture is made smaller where it does not fit.
PictureSize LineSetter::sizeOf(int picture) const {
  const TextPicture& own = text_.pictures[static_cast<std::size_t>(picture)];
  return fitted({own.width, own.height}, rule_);
}

Length LineSetter::shape(std::size_t begin, std::size_t end, std::vector<Item>& items, std::string& content) {
  Length width = 0;
  while (begin < end) {
    const std::size_t span = spanAt(begin);
    const std::size_t runEnd = endOfRun(begin, end);
    const TextStyle& style = styleOf(span);
    const std::uint8_t level = levels_.empty() ? std::uint8_t{0} : levels_[begin];
    if (const int picture = pictureAt(begin); picture >= 0) {
      const Length own = sizeOf(picture).width;
      items.push_back({span, {}, content.size(), content.size(), own, level, false, picture});
      width += own;
      begin += kPictureCharacter.size();
      continue;
    }
    const std::string_view language =
        style.language < 0 ? std::string_view() : text_.languages[static_cast<std::size_t>(style.language)];
    for (const ShapedRun& run : shaper_.shape(all_.substr(begin, runEnd - begin),
                                              {style.font, style.size, level % 2 == 1, rule_.isKerned, language})) {
      const std::size_t at = content.size();
      content += run.content;
      items.push_back({span, run.font, at, content.size(), run.width, level, false, -1, run.missing});
      width += run.width;
    }
    begin = runEnd;
  }
  return width;
}

// Puts the items of the line into their order and joins those that are drawn in the same way.
void LineSetter::endLine(std::size_t end, bool isBroken) {
  if (isBroken && endsInSoftHyphen(end) && !items_.empty()) {
    addHyphen(end);
  }
  while (!items_.empty() && items_.back().isBlank) {
    width_ -= items_.back().width;
    items_.pop_back();
  }
  TextLine line;
  line.firstPiece = firstPiece_ = result_.pieces.size();
  line.begin = lineBegin_;
  line.end = end;
  line.width = width_;
  Length extra = 0;
  const auto blanks = std::count_if(items_.begin(), items_.end(), [](const Item& item) { return item.isBlank; });
  if (rule_.isJustified && isBroken && blanks > 0) {
    extra = std::max<Length>(rule_.width - width_, 0) / blanks;
    // A line of few words is ragged rather than full of holes.
    extra = extra > styleOf(items_.front().span).size ? 0 : extra;
    line.width += extra * blanks;
  }
  if (levels_.empty()) {
    for (const Item& item : items_) {
      appendPiece(item, item.isBlank ? extra : 0);
    }
  } else {
    itemLevels_.clear();
    for (const Item& item : items_) {
      itemLevels_.push_back(item.level);
    }
    orderOf(itemLevels_, order_);
    for (const std::size_t i : order_) {
      appendPiece(items_[i], items_[i].isBlank ? extra : 0);
    }
  }
  line.endPiece = result_.pieces.size();
  measure(line);
  result_.lines.push_back(line);
  items_.clear();
  content_.clear();
  width_ = 0;
  hasText_ = false;
  lineBegin_ = end;
}

void LineSetter::appendPiece(const Item& item, Length extra) {
  if (item.picture >= 0) {
    const std::size_t at = result_.content.size();
    result_.pieces.push_back({item.span, item.font, at, at, item.width, item.picture});
    result_.pieces.back().height = sizeOf(item.picture).height;
    return;
  }
  const bool isNew = result_.pieces.size() == firstPiece_ || result_.pieces.back().picture >= 0 ||
                     result_.pieces.back().span != item.span || item.missing || result_.pieces.back().missing ||
                     !(result_.pieces.back().font == item.font);
  std::string_view content = std::string_view(content_).substr(item.begin, item.end - item.begin);
  if (isNew) {
    result_.pieces.push_back({item.span, item.font, result_.content.size(), 0, 0, -1, item.missing});
  } else if (content.starts_with('(') && result_.content.ends_with(')')) {
    result_.content.pop_back();
    content.remove_prefix(1);
  }
  result_.content += content;
  if (extra > 0) {
    result_.content += std::to_string(-extra * 1000 / styleOf(item.span).size);
    result_.content += ' ';
  }
  result_.pieces.back().end = result_.content.size();
  result_.pieces.back().width += item.width + extra;
}

void LineSetter::measure(TextLine& line) {
  Length size = 0;
  Length picture = 0;
  for (std::size_t i = line.firstPiece; i < line.endPiece; ++i) {
    const TextPiece& piece = result_.pieces[i];
    // Lines of code alone are as high as others.
    const TextStyle& style = styleOf(piece.span);
    size = std::max(size, style.isCode ? style.size * 1000 / kCodeSpanSize : style.size);
    picture = piece.picture < 0 ? picture : std::max(picture, sizeOf(piece.picture).height);
  }
  size = size == 0 ? rule_.usual.size : size;
  line.height = scaled(rule_.leading, size);
  line.baseline = baselineOf(line.height, size);
  // A picture is on the baseline.
  if (picture > line.baseline) {
    line.height += picture - line.baseline;
    line.baseline = picture;
  }
}

}  // namespace

PictureSize fitted(const PictureSize& picture, const LineRule& rule) {
  PictureSize size = picture;
  if (size.width > rule.width && rule.width > 0) {
    size = {rule.width, std::max<Length>(size.height * rule.width / size.width, 1)};
  }
  if (rule.height > 0 && size.height > rule.height) {
    size = {std::max<Length>(size.width * rule.height / size.height, 1), rule.height};
  }
  return size;
}

// The letters of the fonts reach from about a fifth of the size below the baseline to nine tenths above.
Length baselineOf(Length height, Length size) { return (height - size) / 2 + scaled(880, size); }

Length SetText::height() const {
  return std::accumulate(lines.begin(), lines.end(), Length{0},
                         [](Length sum, const TextLine& line) { return sum + line.height; });
}

SetText setText(const StyledText& text, const LineRule& rule, Shaper& shaper) {
  return LineSetter(text, rule, shaper).set();
}

}  // namespace scrivalen::typeset

#include "formats/pdf/typeset/text/paragraph.h"

#include <algorithm>

namespace scrivalen::typeset {
namespace {

constexpr char kEnDash = '\x96';
constexpr char kEmDash = '\x97';

bool isLetter(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') || byte >= 0xC0;
}

// Reads a text line by line.
class LineBreaker {
 public:
  LineBreaker(const StyledText& text, const LineRule& rule, FontSet& fonts) : text_(text), rule_(rule), fonts_(fonts) {}

  std::vector<TextLine> lines() {
    std::vector<TextLine> lines;
    bool isBroken = true;
    while (at_ < text_.bytes.size() || isBroken) {
      lines.push_back(next());
      isBroken = lines.back().isBroken;
    }
    return lines;
  }

 private:
  // Where a line could end: before the blanks, and where the next one begins.
  struct Break {
    std::size_t end;
    std::size_t next;
    std::size_t blanks;
    Length width;
  };

  const TextStyle& styleAt(std::size_t at) {
    while (span_ + 1 < text_.spans.size() && text_.spans[span_ + 1].begin <= at) {
      ++span_;
    }
    return text_.spans.empty() ? rule_.usual : text_.spans[span_].style;
  }

  void seek(std::size_t at) {
    at_ = at;
    while (span_ > 0 && text_.spans[span_].begin > at) {
      --span_;
    }
  }

  bool mayBreakAfter(std::size_t at) const {
    const std::string& bytes = text_.bytes;
    const char c = bytes[at];
    if (c == kEnDash || c == kEmDash) {
      return true;
    }
    return c == '-' && at > 0 && isLetter(bytes[at - 1]) && at + 1 < bytes.size() && isLetter(bytes[at + 1]);
  }

  TextLine finished(std::size_t begin, const Break& end, bool isBroken);
  TextLine next();

  const StyledText& text_;
  const LineRule& rule_;
  FontSet& fonts_;
  std::size_t at_ = 0;
  std::size_t span_ = 0;
};

TextLine LineBreaker::next() {
  const std::string& bytes = text_.bytes;
  const std::size_t begin = at_;
  Break possible{begin, begin, 0, 0};
  std::size_t end = begin;  // of the text without blanks
  Length endWidth = 0;
  std::size_t blanks = 0;  // all so far
  std::size_t endBlanks = 0;
  std::int64_t units = 0;  // of the run in one style, in thousandths of its size
  Length width = 0;
  const TextStyle* style = nullptr;
  const SimpleFont* font = nullptr;
  for (; at_ < bytes.size(); ++at_) {
    const char c = bytes[at_];
    if (c == '\n') {
      ++at_;
      return finished(begin, {end, at_, endBlanks, endWidth}, false);
    }
    const TextStyle& here = styleAt(at_);
    if (&here != style) {
      width += style ? scaled(units, style->size) : 0;
      units = 0;
      style = &here;
      font = &fonts_.at(style->font);
    }
    units += font->widthOf(c);
    const Length total = width + scaled(units, style->size);
    if (c == ' ' && !rule_.keepsBlanks) {
      ++blanks;
      if (end > begin) {
        possible = {end, at_ + 1, endBlanks, endWidth};
      }
      continue;
    }
    if (total > rule_.width && at_ > begin) {
      if (possible.next == begin) {
        possible = {at_, at_, endBlanks, endWidth};
      }
      return finished(begin, possible, true);
    }
    end = at_ + 1;
    endWidth = total;
    endBlanks = blanks;
    if (!rule_.keepsBlanks && mayBreakAfter(at_)) {
      possible = {end, end, endBlanks, endWidth};
    }
  }
  return finished(begin, {end, at_, endBlanks, endWidth}, false);
}

TextLine LineBreaker::finished(std::size_t begin, const Break& end, bool isBroken) {
  TextLine line;
  line.begin = begin;
  line.end = end.end;
  line.width = end.width;
  line.blanks = end.blanks;
  line.isBroken = isBroken;
  Length size = 0;
  Length above = 0;
  const auto measure = [&](const TextStyle& style) {
    const FontMeasures& m = fonts_.at(style.font).measures();
    size = std::max(size, style.size);
    above = std::max(above, scaled(m.ascent, style.size));
  };
  forEachPiece(text_, line, [&](const LinePiece& piece) { measure(*piece.style); });
  if (size == 0) {
    measure(rule_.usual);
  }
  line.height = scaled(rule_.leading, size);
  line.baseline = (line.height - size) / 2 + std::min(above, size);
  seek(end.next);
  return line;
}

}  // namespace

std::vector<TextLine> linesOf(const StyledText& text, const LineRule& rule, FontSet& fonts) {
  return LineBreaker(text, rule, fonts).lines();
}

}  // namespace scrivalen::typeset

#include "formats/markdown/inline_text.h"

#include "document/pictures/base64.h"
#include "document/pictures/picture.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace scrivalen::markdown {
namespace {

constexpr std::size_t kPiece = 8192;           // of text that is written in place at a time
constexpr std::size_t kLongestCode = 1 << 16;  // in one code span; longer ones are divided
constexpr std::string_view kStops = ".,;:!?)";
constexpr std::string_view kNothing = "<!-- -->";  // separates marks that would be one

struct Range {
  char32_t first;
  char32_t last;
};

// Blanks (Unicode 15, category Zs) above ASCII.
constexpr Range kBlanks[] = {{0xA0, 0xA0},     {0x1680, 0x1680}, {0x2000, 0x200A},
                             {0x202F, 0x202F}, {0x205F, 0x205F}, {0x3000, 0x3000}};
// Blocks of letters without any punctuation: Latin, Greek, Cyrillic, kana, Chinese and Korean ones.
constexpr Range kLetters[] = {{0xC0, 0xD6},     {0xD8, 0xF6},     {0xF8, 0x2AF},    {0x370, 0x373},   {0x386, 0x386},
                              {0x388, 0x481},   {0x48A, 0x52F},   {0x531, 0x556},   {0x561, 0x587},   {0x5D0, 0x5EA},
                              {0x620, 0x64A},   {0x671, 0x6D3},   {0x904, 0x939},   {0xE01, 0xE30},   {0x10D0, 0x10FA},
                              {0x1E00, 0x1FBC}, {0x3041, 0x3096}, {0x30A1, 0x30FA}, {0x3400, 0x4DBF}, {0x4E00, 0x9FFF},
                              {0xAC00, 0xD7A3}};

bool isAmong(const auto& ranges, char32_t c) {
  return std::any_of(std::begin(ranges), std::end(ranges),
                     [c](const Range& range) { return c >= range.first && c <= range.last; });
}

// The bytes of the first character.
std::size_t sizeOfFirst(std::string_view text) { return std::max<std::size_t>(utf8Length(text.front()), 1); }

std::size_t startOfLast(std::string_view text) {
  std::size_t start = text.size() - 1;
  while (start > 0 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) {
    --start;
  }
  return start;
}

// Whether a text that begins with "&" begins with what could be a character reference.
bool beginsWithReference(std::string_view text) {
  const auto isInName = [](char c) { return isAsciiLetter(c) || isAsciiDigit(c) || c == '#'; };
  const auto end = std::find_if_not(text.begin() + 1, text.end(), isInName);
  return end != text.end() && *end == ';';
}

void appendEscaped(std::string& out, std::string_view text, std::string_view special) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (special.find(text[i]) != special.npos && (text[i] != '&' || beginsWithReference(text.substr(i)))) {
      out += '\\';
    }
    out += text[i];
  }
}

// What ends a link to an address. Everything that a reader could take for markup elsewhere in the line is escaped.
std::string linkEndOf(std::string_view address, std::string_view title, bool mayBeBare) {
  const bool isBare = mayBeBare && !address.empty() && address.find_first_of(" <>()") == address.npos;
  std::string end = isBare ? "](" : "](<";
  appendEscaped(end, address, "\\<>&`*[]~|!");
  end += isBare ? "" : ">";
  if (!title.empty()) {
    end += " \"";
    appendEscaped(end, title, "\\\"<&`*_[]~|!");
    end += '"';
  }
  return end + ')';
}

// The shortest run of backticks that is not in a code.
std::string fenceOf(std::string_view code) {
  std::set<std::size_t> runs;
  for (std::size_t at = code.find('`'); at != code.npos; at = code.find('`', at)) {
    const std::size_t end = std::min(code.find_first_not_of('`', at), code.size());
    runs.insert(end - at);
    at = end;
  }
  std::size_t size = 1;
  for (; runs.contains(size); ++size) {
  }
  return std::string(size, '`');
}

// Whether a code needs blanks around it, which a reader removes again.
bool needsBlanks(std::string_view code) {
  const bool isBlank = code.find_first_not_of(' ') == code.npos;
  return code.front() == '`' || code.back() == '`' || (!isBlank && code.front() == ' ' && code.back() == ' ');
}

}  // namespace

InlineText::Kind InlineText::kindOf(char32_t c) {
  if (c < 0x80) {
    const auto ascii = static_cast<char>(c);
    return ascii == ' ' ? Kind::Blank : isAsciiLetter(ascii) || isAsciiDigit(ascii) ? Kind::Letter : Kind::Punctuation;
  }
  return isAmong(kLetters, c) ? Kind::Letter : isAmong(kBlanks, c) ? Kind::Blank : Kind::Either;
}

InlineText::Kind InlineText::kindOf(std::string_view character) {
  const char* at = character.data();
  char32_t c = 0;
  nextUtf8(at, at + character.size(), c);
  return kindOf(c);
}

void InlineText::begin(Place place, Block block, std::string_view lead) {
  place_ = place;
  block_ = block;
  lead_ = lead;
  escaper_ = Escaper(place);
  escaper_.beginLine();
  isBegun_ = place == Place::Cell;
  isAtStart_ = true;
  isAfterCode_ = false;
  lastKind_ = Kind::Blank;
}

void InlineText::start() {
  if (isBegun_) {
    return;
  }
  isBegun_ = true;
  lines_.startBlock(block_);
  lines_.startLine();
  if (!lead_.empty()) {
    write(lead_);
    escaper_.continueAfter(lead_.back());
  }
}

bool InlineText::end() {
  writeCode();
  opening_.clear();
  blanks_ = 0;
  const std::size_t breaks = std::exchange(breaks_, 0);
  writeMarks(Kind::Blank, true);
  writeLast({});
  for (std::size_t i = 0; isBegun_ && i < breaks; ++i) {
    write("<br>");
  }
  depths_ = {};
  return isBegun_;
}

void InlineText::text(std::string_view text) {
  while (true) {
    const std::size_t end = text.find('\n');
    writeText(text.substr(0, end));
    if (end == text.npos) {
      return;
    }
    writeCode();
    breaks_ += 1;
    text.remove_prefix(end + 1);
  }
}

void InlineText::writeText(std::string_view text) {
  if (codeDepth_ > 0) {
    code_ += text;
    if (code_.size() > kLongestCode) {
      writeCode();
    }
    return;
  }
  writeCode();
  const std::size_t leading = std::min(text.find_first_not_of(' '), text.size());
  blanks_ += leading;
  text.remove_prefix(leading);
  if (text.empty()) {
    return;
  }
  start();
  if (writeMarks(kindOf(text), kStops.find(text.front()) != kStops.npos)) {
    const std::size_t first = sizeOfFirst(text);
    writeReference(text.substr(0, first));
    text.remove_prefix(first);
  }
  const std::size_t size = text.find_last_not_of(' ') + 1;
  blanks_ = text.size() - size;
  if (size == 0) {
    return;
  }
  joined_.assign(last_).append(text, 0, size);
  const std::size_t last = startOfLast(joined_);
  writeEscaped(joined_, last);
  last_.assign(joined_, last);
  isAlone_ = last == 0 && lastKind_ == Kind::Punctuation;
}

// A text of any size, with a piece in place at a time.
void InlineText::writeEscaped(std::string_view text, std::size_t size) {
  isAtStart_ = isAtStart_ && size == 0;
  isAfterCode_ = isAfterCode_ && size == 0;
  while (size > 0) {
    const std::size_t piece = std::min(size, kPiece);
    out_.advance(escaper_.put(out_.reserve(piece * Escaper::kGrowth), text, piece));
    text.remove_prefix(piece);
    size -= piece;
  }
}

void InlineText::writeReference(std::string_view character) {
  const char* at = character.data();
  char32_t c = 0;
  nextUtf8(at, at + character.size(), c);
  writeMarkup("&#" + std::to_string(static_cast<std::uint32_t>(c)) + ';');
}

void InlineText::writeMarkup(std::string_view markup) {
  start();
  write(markup);
  escaper_.continueAfter(markup.back());
  isAtStart_ = false;
  isAfterCode_ = false;
  lastKind_ = Kind::Punctuation;
}

// Writes the last character, which was kept back.
void InlineText::writeLast(std::string_view next) {
  if (last_.empty()) {
    return;
  }
  const std::size_t size = last_.size();
  lastKind_ = kindOf(last_);
  last_ += next;
  writeEscaped(last_, size);
  last_.clear();
}

// Two spans of one kind that touch are one.
void InlineText::joinMarks() {
  while (!isSpaced() && !closing_.empty() && !opening_.empty() && closing_.back() == opening_.front() &&
         closing_.back() != Mark::Link) {
    closing_.pop_back();
    opening_.erase(opening_.begin());
  }
}

// Writes what waits: the last character, the marks that end, blanks or line breaks, and the marks that begin.
// @param next      of what comes now
// @param endsWord  whether it is the end of the block, a full stop or the like
// @return whether the next character must be a reference, so that the marks are marks
bool InlineText::writeMarks(Kind next, bool endsWord) {
  joinMarks();
  if (closing_.empty() && opening_.empty()) {
    if (isSpaced()) {
      writeLast(" ");
      writeGap();
    }
    return false;
  }
  // A blank that is no space, such as U+00A0.
  if (!closing_.empty() && closing_.front() != Mark::Link && !last_.empty() && kindOf(last_) == Kind::Blank) {
    writeReference(std::exchange(last_, {}));
  }
  const Kind last = last_.empty() ? lastKind_ : kindOf(last_);
  const Kind afterClosing = isSpaced() ? Kind::Blank : opening_.empty() ? next : Kind::Punctuation;
  const bool isNextReference = isClosingBlocked(last, afterClosing) || (!opening_.empty() && mayBe(next, Kind::Blank));
  if (isNextReference) {
    next = Kind::Punctuation;
  }
  const Kind beforeOpening = isSpaced() ? Kind::Blank : closing_.empty() ? last : Kind::Punctuation;
  const Kind afterOpening = opening_.size() > 1 ? Kind::Punctuation : next;
  const bool isWithinWord = mayBe(beforeOpening, Kind::Letter);
  const bool isEmphasisOnly = opening_.size() == 1 && opening_.front() == Mark::Emphasis;
  const char emphasis = isWithinWord && isEmphasisOnly && !mayBe(afterOpening, Kind::Punctuation) ? '*' : '_';
  if (isWithinWord && !last_.empty() && !opening_.empty() && opening_.front() != Mark::Link &&
      (mayBe(afterOpening, Kind::Punctuation) || (opening_.front() == Mark::Emphasis && emphasis == '_'))) {
    writeBeforeMark();
  } else if (last_ == "!" && closing_.empty() && !isSpaced() && opening_.front() == Mark::Link) {
    last_.clear();
    writeMarkup("\\!");
  } else {
    writeLast({});
  }
  writeClosing(isSpaced() || (opening_.empty() && endsWord));
  writeGap();
  writeOpening(emphasis);
  return isNextReference;
}

// Writes a letter that would prevent the mark after it. As a reference it could prevent one before it.
void InlineText::writeBeforeMark() {
  if (isAlone_) {
    writeLast({});
    writeMarkup(kNothing);
  } else {
    writeReference(std::exchange(last_, {}));
  }
}

// Whether a mark would not end (CommonMark 0.30, 6.2: right-flanking) before what comes after it.
bool InlineText::isClosingBlocked(Kind last, Kind next) const {
  if (closing_.empty() || closing_.back() == Mark::Link || !mayBe(next, Kind::Letter)) {
    return false;
  }
  return closing_.size() > 1 || mayBe(last, Kind::Punctuation) ||
         (closing_.back() == Mark::Emphasis && emphasis_ == '_');
}

// Whether a mark has begun, and in the output as well.
bool InlineText::isOpen(Mark mark) const {
  return depths_[static_cast<std::size_t>(mark)] > 0 &&
         std::find(opening_.begin(), opening_.end(), mark) == opening_.end();
}

// @param endsWord  whether a blank, a full stop or the like comes next
void InlineText::writeClosing(bool endsWord) {
  const bool isInMark = isOpen(Mark::Strong) || isOpen(Mark::Emphasis) || isOpen(Mark::Deleted);
  const bool mayBeBare = endsWord && closing_.size() == 1 && !isInMark;
  for (const Mark mark : closing_) {
    if (mark == Mark::Link) {
      // Some readers look for an address in the text of the file and take the marks after it for a part of it.
      writeMarkup(linkEndOf(link_.address, link_.title, mayBeBare));
      link_ = std::exchange(nextLink_, {});
    } else {
      writeMarkup(markOf(mark));
    }
  }
  const bool touches = !closing_.empty() && closing_.back() == Mark::Emphasis && emphasis_ == '*' && !isSpaced() &&
                       !opening_.empty() && opening_.front() == Mark::Strong;
  if (touches) {
    writeMarkup(kNothing);
  }
  closing_.clear();
}

void InlineText::writeGap() {
  for (; breaks_ > 0; --breaks_) {
    blanks_ = 0;
    start();
    if (place_ != Place::Line) {
      writeMarkup("<br>");
      continue;
    }
    write("\\");
    lines_.endLine();
    lines_.startLine();
    escaper_.beginLine();
    isAtStart_ = true;
    isAfterCode_ = false;
    lastKind_ = Kind::Blank;
  }
  for (; blanks_ > 0; --blanks_) {
    if (!isAtStart_) {
      write(" ");
      escaper_.continueAfter(' ');
      isAfterCode_ = false;
      lastKind_ = Kind::Blank;
    }
  }
}

void InlineText::writeOpening(char emphasis) {
  for (const Mark mark : opening_) {
    if (mark == Mark::Emphasis) {
      emphasis_ = emphasis;
    }
    writeMarkup(mark == Mark::Link ? "[" : markOf(mark));
  }
  opening_.clear();
}

std::string_view InlineText::markOf(Mark mark) const {
  switch (mark) {
    case Mark::Strong: return "**";
    case Mark::Emphasis: return emphasis_ == '_' ? "_" : "*";
    case Mark::Deleted: return "~~";
    case Mark::Link: break;
  }
  return "";
}

void InlineText::beginMark(Mark mark) {
  writeCode();
  if (depths_[static_cast<std::size_t>(mark)]++ == 0) {
    opening_.push_back(mark);
  }
}

void InlineText::endMark(Mark mark) {
  writeCode();
  if (--depths_[static_cast<std::size_t>(mark)] > 0) {
    return;
  }
  if (opening_.empty()) {
    closing_.push_back(mark);
  } else {
    opening_.pop_back();
  }
}

void InlineText::beginLink(std::string_view address, std::string_view title) {
  beginMark(Mark::Link);
  const bool isEndWaiting = std::find(closing_.begin(), closing_.end(), Mark::Link) != closing_.end();
  (isEndWaiting ? nextLink_ : link_) = {std::string(address), std::string(title)};
}

void InlineText::endLink() { endMark(Mark::Link); }

void InlineText::autolink(std::string_view text) {
  writeCode();
  start();
  writeMarks(Kind::Punctuation);
  writeLast({});
  writeMarkup(std::string("<").append(text).append(">"));
}

void InlineText::writeCode() {
  if (code_.empty()) {
    return;
  }
  start();
  writeMarks(Kind::Punctuation);
  writeLast({});
  std::string_view rest = code_;
  // A bar in a cell is escaped, in code as well; a backslash before it would escape the escape.
  for (std::size_t at = rest.find("\\|"); place_ == Place::Cell && at != rest.npos; at = rest.find("\\|")) {
    writeCodeSpan(rest.substr(0, at + 1));
    rest.remove_prefix(at + 1);
  }
  writeCodeSpan(rest);
  code_.clear();
}

void InlineText::writeCodeSpan(std::string_view code) {
  if (isAfterCode_) {
    writeMarkup(kNothing);
  }
  const std::string fence = fenceOf(code);
  const std::string_view blank = needsBlanks(code) ? " " : "";
  std::string span = fence;
  span += blank;
  appendEscaped(span, code, place_ == Place::Cell ? "|" : "");
  span += blank;
  writeMarkup(span += fence);
  isAfterCode_ = true;
}

void InlineText::picture(const document::Picture& picture, std::string_view alternative) {
  writeCode();
  start();
  writeMarks(Kind::Punctuation);
  writeLast({});
  writeMarkup("![");
  writeEscaped(alternative, alternative.size());
  write("](data:");
  write(picture.mediaType());
  write(";base64,");
  document::putBase64(out_, picture.bytes());
  writeMarkup(")");
}

void InlineText::raw(std::string_view markup) {
  if (markup.empty()) {
    return;
  }
  writeCode();
  start();
  writeMarks(Kind::Punctuation);
  writeLast({});
  lines_.writeLines(markup);
  escaper_.continueAfter(markup.back());
  isAtStart_ = false;
  isAfterCode_ = false;
  lastKind_ = Kind::Punctuation;
}

}  // namespace scrivalen::markdown

#include "readers/markdown/markup_text.h"

#include "readers/markdown/entities.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <optional>

namespace scrivalen::command {
namespace {

// Inline elements; any other element begins and ends a block.
constexpr std::array<std::string_view, 34> kInlineElements = {
    "a",      "abbr", "b",   "bdi",  "bdo",   "cite", "code", "data", "del",  "dfn",   "em",   "font",
    "i",      "img",  "ins", "kbd",  "label", "mark", "q",    "s",    "samp", "small", "span", "strike",
    "strong", "sub",  "sup", "time", "tt",    "u",    "var",  "wbr",  "ruby", "rt"};

// Elements that browsers show in lines of their own even where they begin within one.
constexpr std::array<std::string_view, 35> kBlockElements = {
    "address", "article",    "aside",  "blockquote", "center", "dd",  "details", "div",    "dl",
    "dt",      "figcaption", "figure", "footer",     "h1",     "h2",  "h3",      "h4",     "h5",
    "h6",      "header",     "hr",     "li",         "main",   "nav", "ol",      "p",      "pre",
    "section", "summary",    "table",  "td",         "th",     "tr",  "ul",      "caption"};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\f'; }
bool endsTagName(char c) { return isBlank(c) || c == '/' || c == '>'; }

// The position after the mark; npos if it is missing.
std::size_t endOf(std::string_view mark, std::string_view markup, std::size_t from = 0) {
  const std::size_t at = markup.find(mark, from);
  return at == std::string_view::npos ? at : at + mark.size();
}

std::size_t endOfElement(std::string_view element, std::string_view markup) {
  for (std::size_t at = endOf("</", markup); at != std::string_view::npos; at = endOf("</", markup, at)) {
    const std::size_t end = at + element.size();
    if (scrivalen::equalIgnoringCase(markup.substr(at, element.size()), element) &&
        (end == markup.size() || endsTagName(markup[end]))) {
      return std::min(endOf(">", markup, end), markup.size());
    }
  }
  return std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isBlank(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

// Appends what begins with "&", and returns its size: one if it is no character reference.
std::size_t appendReference(std::string& text, std::string_view markup) {
  const auto isPartOfName = [](char c) {
    return scrivalen::isAsciiLetter(c) || scrivalen::isAsciiDigit(c) || c == '#';
  };
  const auto end = std::find_if_not(markup.begin() + 1, markup.end(), isPartOfName);
  if (end == markup.end() || *end != ';') {
    text += '&';
    return 1;
  }
  const auto size = static_cast<std::size_t>(end - markup.begin()) + 1;
  appendEntity(text, markup.substr(0, size));
  return size;
}

// In one line.
std::string decoded(std::string_view value) {
  std::string text;
  while (!value.empty()) {
    if (value.front() == '&') {
      value.remove_prefix(appendReference(text, value));
    } else {
      text += value.front();
      value.remove_prefix(1);
    }
  }
  std::replace_if(
      text.begin(), text.end(), [](char c) { return isBlank(c); }, ' ');
  return text;
}

// The longest beginning of a text without any of some characters, which is taken off it.
std::string_view takeUpTo(std::string_view characters, std::string_view& text) {
  const std::string_view taken = text.substr(0, text.find_first_of(characters));
  text.remove_prefix(taken.size());
  return taken;
}

std::string_view takeValue(std::string_view& rest) {
  if (!rest.starts_with('"') && !rest.starts_with('\'')) {
    return takeUpTo(" \t\n\r\f>", rest);
  }
  const std::string_view quote = rest.substr(0, 1);
  rest.remove_prefix(1);
  const std::string_view value = takeUpTo(quote, rest);
  rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
  return value;
}

// The value of the first attribute of this name; empty if there is none.
std::string attributeOf(std::string_view tag, std::string_view name) {
  takeUpTo(" \t\n\r\f/>", tag);
  while (true) {
    tag.remove_prefix(std::min(tag.find_first_not_of(" \t\n\r\f/="), tag.size()));
    if (tag.empty() || tag.front() == '>') {
      return {};
    }
    const std::string_view found = takeUpTo(" \t\n\r\f/>=", tag);
    tag.remove_prefix(std::min(tag.find_first_not_of(" \t\n\r\f"), tag.size()));
    std::string_view value;
    if (tag.starts_with('=')) {
      tag.remove_prefix(1);
      tag.remove_prefix(std::min(tag.find_first_not_of(" \t\n\r\f"), tag.size()));
      value = takeValue(tag);
    }
    if (scrivalen::equalIgnoringCase(found, name)) {
      return decoded(value);
    }
  }
}

// A tag that never ends makes the reader look at the rest again.
constexpr int kMostUnclosedTags = 16;

class MarkupReader {
 public:
  MarkupReader(std::string& text, std::string_view markup, bool isBlock, HiddenContent hidden,
               std::vector<MarkupPart>& parts)
      : text_(text), rest_(markup), isBlock_(isBlock), hidden_(hidden), parts_(parts) {}

  /// Returns the hidden content that is still open at the end.
  HiddenContent read();

 private:
  void skipHidden();
  void readCharacter();
  void readAngle();
  void readTag();
  void readPart(std::string_view name, std::string_view tag);
  void readReference();
  void skip(std::size_t size) { rest_.remove_prefix(std::min(size, rest_.size())); }
  void skipTo(std::string_view end);
  void keepAngle();
  std::string_view takeTag();
  bool isAfterImage() const;
  void appendBlank();
  void endBlock();
  void separateWords();

  std::string& text_;
  std::string_view rest_;
  bool isBlock_;
  HiddenContent hidden_;
  std::vector<MarkupPart>& parts_;
  int unclosedTags_ = 0;
  std::vector<std::string_view> missingEnds_;  // that do not occur in the rest
  std::optional<std::size_t> lastImage_;       // where it is in the text
};

HiddenContent MarkupReader::read() {
  while (!rest_.empty()) {
    if (hidden_ != HiddenContent::None) {
      skipHidden();
    } else if (rest_.front() == '<') {
      readAngle();
    } else if (rest_.front() == '&') {
      readReference();
    } else {
      readCharacter();
    }
  }
  return hidden_;
}

void MarkupReader::skipHidden() {
  const std::size_t end = endOfHidden(hidden_, rest_);
  if (end != std::string_view::npos) {
    hidden_ = HiddenContent::None;
  }
  skip(end);
}

void MarkupReader::readCharacter() {
  const char c = rest_.front();
  skip(1);
  if (isBlank(c)) {
    appendBlank();
  } else {
    text_ += c;
  }
}

void MarkupReader::readAngle() {
  const char next = rest_.size() > 1 ? rest_[1] : ' ';
  if (rest_.starts_with("<!--")) {
    hidden_ = HiddenContent::Comment;
    skip(2);  // in "<!-->" the dashes are also part of the end
  } else if (rest_.starts_with("<?")) {
    skipTo("?>");
  } else if (rest_.starts_with("<![CDATA[")) {
    skipTo("]]>");
  } else if (next == '!') {
    skipTo(">");
  } else if (next == '/' || scrivalen::isAsciiLetter(next)) {
    readTag();
  } else {
    keepAngle();
  }
}

void MarkupReader::skipTo(std::string_view end) {
  if (std::find(missingEnds_.begin(), missingEnds_.end(), end) != missingEnds_.end()) {
    return keepAngle();
  }
  const std::size_t size = endOf(end, rest_);
  if (size == std::string_view::npos) {
    missingEnds_.push_back(end);
    return keepAngle();
  }
  skip(size);
}

void MarkupReader::keepAngle() {
  text_ += '<';
  skip(1);
}

void MarkupReader::readTag() {
  const bool closing = rest_[1] == '/';
  const std::string_view tag = takeTag();
  if (tag.empty()) {
    return keepAngle();
  }
  std::string_view name = tag.substr(closing ? 2 : 1);
  name = name.substr(0, static_cast<std::size_t>(std::find_if(name.begin(), name.end(), endsTagName) - name.begin()));
  const auto is = [name](std::string_view element) { return scrivalen::equalIgnoringCase(name, element); };
  if (is("br")) {
    if (!isBlock_ || !text_.empty() || isAfterImage()) {
      text_ += '\n';
    }
  } else if (!closing && is("script")) {
    hidden_ = HiddenContent::Script;
  } else if (!closing && is("style")) {
    hidden_ = HiddenContent::StyleSheet;
  } else if (is("a") && closing) {
    parts_.push_back({MarkupPart::Kind::EndOfLink, text_.size(), {}, {}});
  } else if (!closing && (is("a") || is("img"))) {
    readPart(name, tag);
  } else if (isBlock_ && (is("td") || is("th"))) {
    appendBlank();
  } else if (isBlock_ && std::none_of(kInlineElements.begin(), kInlineElements.end(), is)) {
    endBlock();
  } else if (!isBlock_ && std::any_of(kBlockElements.begin(), kBlockElements.end(), is)) {
    separateWords();
  }
}

void MarkupReader::readPart(std::string_view name, std::string_view tag) {
  if (name.size() > 1) {
    lastImage_ = text_.size();
    parts_.push_back({MarkupPart::Kind::Image, text_.size(), std::string(trimmed(attributeOf(tag, "src"))),
                      attributeOf(tag, "alt")});
  } else if (const std::string address = attributeOf(tag, "href"); !trimmed(address).empty()) {
    parts_.push_back({MarkupPart::Kind::Link, text_.size(), std::string(trimmed(address)), attributeOf(tag, "title")});
  }
}

// Empty if the tag does not end. A '>' inside a quoted attribute value does not end its tag. A quote that does not
// follow '=' is an ordinary character.
std::string_view MarkupReader::takeTag() {
  char quote = '\0';
  char previous = '\0';
  for (std::size_t at = 0; at < rest_.size() && unclosedTags_ < kMostUnclosedTags; ++at) {
    const char c = rest_[at];
    if (quote != '\0') {
      quote = c == quote ? '\0' : quote;
    } else if ((c == '"' || c == '\'') && previous == '=') {
      quote = c;
    } else if (c == '>') {
      const std::string_view tag = rest_.substr(0, at + 1);
      skip(at + 1);
      return tag;
    }
    previous = isBlank(c) ? previous : c;
  }
  ++unclosedTags_;
  return {};
}

void MarkupReader::readReference() { skip(appendReference(text_, rest_)); }

// Whether an image, or a link that ends with one, is the last that a page shows.
bool MarkupReader::isAfterImage() const { return lastImage_ && *lastImage_ == text_.size(); }

void MarkupReader::appendBlank() {
  if (isAfterImage() || (!text_.empty() && !isBlank(text_.back()))) {
    text_ += ' ';
  }
}

void MarkupReader::endBlock() {
  while (!text_.empty() && text_.back() == ' ' && !isAfterImage()) {
    text_.pop_back();
  }
  for (auto part = parts_.rbegin(); part != parts_.rend() && part->at > text_.size(); ++part) {
    part->at = text_.size();
  }
  if (isAfterImage() || (!text_.empty() && text_.back() != '\n')) {
    text_ += '\n';
  }
}

void MarkupReader::separateWords() {
  if (text_.empty() || isAfterImage() || !isBlank(text_.back())) {
    text_ += ' ';
  }
}

}  // namespace

void MarkupText::appendBlock(std::string& text, std::string_view markup) {
  parts_.clear();
  hidden_ = MarkupReader(text, markup, true, hidden_, parts_).read();
}

void MarkupText::appendInline(std::string& text, std::string_view markup) {
  parts_.clear();
  hidden_ = MarkupReader(text, markup, false, hidden_, parts_).read();
}

std::size_t endOfHidden(HiddenContent hidden, std::string_view markup) {
  switch (hidden) {
    case HiddenContent::Script: return endOfElement("script", markup);
    case HiddenContent::StyleSheet: return endOfElement("style", markup);
    case HiddenContent::Comment: return endOf("-->", markup);
    case HiddenContent::None: break;
  }
  return 0;
}

}  // namespace scrivalen::command

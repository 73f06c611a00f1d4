#include "readers/markdown/markup_text.h"

#include "readers/markdown/entities.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>

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

class MarkupReader {
 public:
  MarkupReader(std::string& text, std::string_view markup, bool isBlock, HiddenContent hidden)
      : text_(text), rest_(markup), isBlock_(isBlock), hidden_(hidden) {}

  /// Returns the hidden content that is still open at the end.
  HiddenContent read();

 private:
  void skipHidden();
  void readCharacter();
  void readAngle();
  void readTag();
  void readReference();
  void skip(std::size_t size) { rest_.remove_prefix(std::min(size, rest_.size())); }
  std::string_view takeTag();
  void appendBlank();
  void endBlock();
  void separateWords();

  std::string& text_;
  std::string_view rest_;
  bool isBlock_;
  HiddenContent hidden_;
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
    skip(endOf("?>", rest_));
  } else if (rest_.starts_with("<![CDATA[")) {
    skip(endOf("]]>", rest_));
  } else if (next == '!') {
    skip(endOf(">", rest_));
  } else if (next == '/' || scrivalen::isAsciiLetter(next)) {
    readTag();
  } else {
    text_ += '<';
    skip(1);
  }
}

void MarkupReader::readTag() {
  const bool closing = rest_[1] == '/';
  std::string_view name = takeTag().substr(closing ? 2 : 1);
  name = name.substr(0, static_cast<std::size_t>(std::find_if(name.begin(), name.end(), endsTagName) - name.begin()));
  const auto is = [name](std::string_view element) { return scrivalen::equalIgnoringCase(name, element); };
  if (is("br")) {
    text_ += '\n';
  } else if (!closing && is("script")) {
    hidden_ = HiddenContent::Script;
  } else if (!closing && is("style")) {
    hidden_ = HiddenContent::StyleSheet;
  } else if (isBlock_ && (is("td") || is("th"))) {
    appendBlank();
  } else if (isBlock_ && std::none_of(kInlineElements.begin(), kInlineElements.end(), is)) {
    endBlock();
  } else if (!isBlock_ && std::any_of(kBlockElements.begin(), kBlockElements.end(), is)) {
    separateWords();
  }
}

// A '>' inside a quoted attribute value does not end its tag. A quote that does not follow '=' is an ordinary
// character.
std::string_view MarkupReader::takeTag() {
  char quote = '\0';
  char previous = '\0';
  std::size_t size = 0;
  while (size < rest_.size()) {
    const char c = rest_[size++];
    if (quote != '\0') {
      quote = c == quote ? '\0' : quote;
    } else if ((c == '"' || c == '\'') && previous == '=') {
      quote = c;
    } else if (c == '>') {
      break;
    }
    previous = isBlank(c) ? previous : c;
  }
  const std::string_view tag = rest_.substr(0, size);
  skip(size);
  return tag;
}

void MarkupReader::readReference() {
  const auto isPartOfName = [](char c) {
    return scrivalen::isAsciiLetter(c) || scrivalen::isAsciiDigit(c) || c == '#';
  };
  const auto end = std::find_if_not(rest_.begin() + 1, rest_.end(), isPartOfName);
  if (end == rest_.end() || *end != ';') {
    text_ += '&';
    return skip(1);
  }
  const auto size = static_cast<std::size_t>(end - rest_.begin()) + 1;
  appendEntity(text_, rest_.substr(0, size));
  skip(size);
}

void MarkupReader::appendBlank() {
  if (!text_.empty() && !isBlank(text_.back())) {
    text_ += ' ';
  }
}

void MarkupReader::endBlock() {
  while (!text_.empty() && text_.back() == ' ') {
    text_.pop_back();
  }
  if (!text_.empty() && text_.back() != '\n') {
    text_ += '\n';
  }
}

void MarkupReader::separateWords() {
  if (text_.empty() || !isBlank(text_.back())) {
    text_ += ' ';
  }
}

}  // namespace

void MarkupText::appendBlock(std::string& text, std::string_view markup) {
  hidden_ = MarkupReader(text, markup, true, hidden_).read();
}

void MarkupText::appendInline(std::string& text, std::string_view markup) {
  hidden_ = MarkupReader(text, markup, false, hidden_).read();
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

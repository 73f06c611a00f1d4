#include "readers/markup_text.h"

#include "readers/entities.h"
#include "text/ascii.h"
#include "text/utf.h"
#include "texts.h"

#include <algorithm>
#include <array>

namespace scrivalen::command {
namespace {

// Inline elements; any other element begins and ends a block.
constexpr std::array<std::wstring_view, 34> kInlineElements = {
    L"a",      L"abbr", L"b",   L"bdi",  L"bdo",   L"cite", L"code", L"data", L"del",  L"dfn",   L"em",   L"font",
    L"i",      L"img",  L"ins", L"kbd",  L"label", L"mark", L"q",    L"s",    L"samp", L"small", L"span", L"strike",
    L"strong", L"sub",  L"sup", L"time", L"tt",    L"u",    L"var",  L"wbr",  L"ruby", L"rt"};

bool isBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r' || c == L'\f'; }
bool endsTagName(wchar_t c) { return isBlank(c) || c == L'/' || c == L'>'; }

// The position after the mark; npos if it is missing.
std::size_t endOf(std::wstring_view mark, std::wstring_view markup, std::size_t from = 0) {
  const std::size_t at = markup.find(mark, from);
  return at == std::wstring_view::npos ? at : at + mark.size();
}

std::size_t endOfElement(std::wstring_view element, std::wstring_view markup) {
  for (std::size_t at = endOf(L"</", markup); at != std::wstring_view::npos; at = endOf(L"</", markup, at)) {
    const std::size_t end = at + element.size();
    if (scrivalen::equalIgnoringCase(markup.substr(at, element.size()), element) &&
        (end == markup.size() || endsTagName(markup[end]))) {
      return std::min(endOf(L">", markup, end), markup.size());
    }
  }
  return std::wstring_view::npos;
}

class MarkupReader {
 public:
  MarkupReader(std::wstring& text, std::wstring_view markup, bool isBlock, HiddenContent hidden)
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
  std::wstring_view takeTag();
  void appendBlank();
  void endBlock();

  std::wstring& text_;
  std::wstring_view rest_;
  bool isBlock_;
  HiddenContent hidden_;
};

HiddenContent MarkupReader::read() {
  while (!rest_.empty()) {
    if (hidden_ != HiddenContent::None) {
      skipHidden();
    } else if (rest_.front() == L'<') {
      readAngle();
    } else if (rest_.front() == L'&') {
      readReference();
    } else {
      readCharacter();
    }
  }
  return hidden_;
}

void MarkupReader::skipHidden() {
  const std::size_t end = endOfHidden(hidden_, rest_);
  if (end != std::wstring_view::npos) {
    hidden_ = HiddenContent::None;
  }
  skip(end);
}

void MarkupReader::readCharacter() {
  const wchar_t c = rest_.front();
  skip(1);
  if (isBlank(c)) {
    appendBlank();
  } else {
    text_ += c;
  }
}

void MarkupReader::readAngle() {
  const wchar_t next = rest_.size() > 1 ? rest_[1] : L' ';
  if (rest_.starts_with(L"<!--")) {
    hidden_ = HiddenContent::Comment;
    skip(2);  // in "<!-->" the dashes are also part of the end
  } else if (rest_.starts_with(L"<?")) {
    skip(endOf(L"?>", rest_));
  } else if (rest_.starts_with(L"<![CDATA[")) {
    skip(endOf(L"]]>", rest_));
  } else if (next == L'!') {
    skip(endOf(L">", rest_));
  } else if (next == L'/' || scrivalen::isAsciiLetter(next)) {
    readTag();
  } else {
    text_ += L'<';
    skip(1);
  }
}

void MarkupReader::readTag() {
  const bool closing = rest_[1] == L'/';
  std::wstring_view name = takeTag().substr(closing ? 2 : 1);
  name = name.substr(0, static_cast<std::size_t>(std::find_if(name.begin(), name.end(), endsTagName) - name.begin()));
  const auto is = [name](std::wstring_view element) { return scrivalen::equalIgnoringCase(name, element); };
  if (is(L"br")) {
    text_ += L'\n';
  } else if (!closing && is(L"script")) {
    hidden_ = HiddenContent::Script;
  } else if (!closing && is(L"style")) {
    hidden_ = HiddenContent::StyleSheet;
  } else if (isBlock_ && std::none_of(kInlineElements.begin(), kInlineElements.end(), is)) {
    endBlock();
  }
}

// A '>' inside a quoted attribute value does not end its tag. A quote that does not follow '=' is an ordinary
// character.
std::wstring_view MarkupReader::takeTag() {
  wchar_t quote = L'\0';
  wchar_t previous = L'\0';
  std::size_t size = 0;
  while (size < rest_.size()) {
    const wchar_t c = rest_[size++];
    if (quote != L'\0') {
      quote = c == quote ? L'\0' : quote;
    } else if ((c == L'"' || c == L'\'') && previous == L'=') {
      quote = c;
    } else if (c == L'>') {
      break;
    }
    previous = isBlank(c) ? previous : c;
  }
  const std::wstring_view tag = rest_.substr(0, size);
  skip(size);
  return tag;
}

void MarkupReader::readReference() {
  const auto isPartOfName = [](wchar_t c) {
    return scrivalen::isAsciiLetter(c) || scrivalen::isAsciiDigit(c) || c == L'#';
  };
  const auto end = std::find_if_not(rest_.begin() + 1, rest_.end(), isPartOfName);
  if (end == rest_.end() || *end != L';') {
    text_ += L'&';
    return skip(1);
  }
  const auto size = static_cast<std::size_t>(end - rest_.begin()) + 1;
  appendEntity(text_, toUtf8(rest_.substr(0, size)));
  skip(size);
}

void MarkupReader::appendBlank() {
  if (!text_.empty() && !isBlank(text_.back())) {
    text_ += L' ';
  }
}

void MarkupReader::endBlock() {
  while (!text_.empty() && text_.back() == L' ') {
    text_.pop_back();
  }
  if (!text_.empty() && text_.back() != L'\n') {
    text_ += L'\n';
  }
}

}  // namespace

void MarkupText::appendBlock(std::wstring& text, std::wstring_view markup) {
  hidden_ = MarkupReader(text, markup, true, hidden_).read();
}

void MarkupText::appendInline(std::wstring& text, std::wstring_view markup) {
  hidden_ = MarkupReader(text, markup, false, hidden_).read();
}

std::size_t endOfHidden(HiddenContent hidden, std::wstring_view markup) {
  switch (hidden) {
    case HiddenContent::Script: return endOfElement(L"script", markup);
    case HiddenContent::StyleSheet: return endOfElement(L"style", markup);
    case HiddenContent::Comment: return endOf(L"-->", markup);
    case HiddenContent::None: break;
  }
  return 0;
}

}  // namespace scrivalen::command

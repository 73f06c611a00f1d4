#include "readers/markup_text.h"

#include "readers/entities.h"
#include "text/utf.h"
#include "texts.h"

#include <algorithm>
#include <array>

namespace scrivalen::command {
namespace {

// Elements that stand within a line; every other one begins and ends a block.
constexpr std::array<std::wstring_view, 34> kInlineElements = {
    L"a",      L"abbr", L"b",   L"bdi",  L"bdo",   L"cite", L"code", L"data", L"del",  L"dfn",   L"em",   L"font",
    L"i",      L"img",  L"ins", L"kbd",  L"label", L"mark", L"q",    L"s",    L"samp", L"small", L"span", L"strike",
    L"strong", L"sub",  L"sup", L"time", L"tt",    L"u",    L"var",  L"wbr",  L"ruby", L"rt"};

bool isLetter(wchar_t c) { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); }
bool isNameCharacter(wchar_t c) { return isLetter(c) || (c >= L'0' && c <= L'9') || c == L'-'; }
bool isBlank(wchar_t c) { return c == L' ' || c == L'\t' || c == L'\n' || c == L'\r'; }

class MarkupReader {
 public:
  MarkupReader(std::wstring& text, std::wstring_view markup, bool isBlock)
      : text_(text), rest_(markup), isBlock_(isBlock) {}

  void read();

 private:
  void readAngle();
  void readTag();
  void readReference();
  void skipTo(std::wstring_view end);
  void skipContent(std::wstring_view element);
  std::wstring_view takeTag();
  void appendBlank();
  void endBlock();

  std::wstring& text_;
  std::wstring_view rest_;
  bool isBlock_;
};

void MarkupReader::read() {
  while (!rest_.empty()) {
    const wchar_t c = rest_.front();
    if (c == L'<') {
      readAngle();
    } else if (c == L'&') {
      readReference();
    } else {
      rest_.remove_prefix(1);
      if (isBlank(c)) {
        appendBlank();
      } else {
        text_ += c;
      }
    }
  }
}

void MarkupReader::readAngle() {
  const wchar_t next = rest_.size() > 1 ? rest_[1] : L' ';
  if (rest_.starts_with(L"<!--")) {
    skipTo(L"-->");
  } else if (rest_.starts_with(L"<?")) {
    skipTo(L"?>");
  } else if (next == L'!') {
    skipTo(L">");
  } else if (next == L'/' || isLetter(next)) {
    readTag();
  } else {
    text_ += L'<';
    rest_.remove_prefix(1);
  }
}

void MarkupReader::readTag() {
  const bool closing = rest_[1] == L'/';
  std::wstring_view name = takeTag().substr(closing ? 2 : 1);
  name = name.substr(
      0, static_cast<std::size_t>(std::find_if_not(name.begin(), name.end(), isNameCharacter) - name.begin()));
  const auto is = [name](std::wstring_view element) { return platform::equalIgnoringCase(name, element); };
  if (is(L"br")) {
    text_ += L'\n';
  } else if (!closing && (is(L"script") || is(L"style"))) {
    skipContent(name);
  } else if (isBlock_ && std::none_of(kInlineElements.begin(), kInlineElements.end(), is)) {
    endBlock();
  }
}

// A '>' inside a quoted attribute value does not end its tag.
std::wstring_view MarkupReader::takeTag() {
  wchar_t quote = L'\0';
  std::size_t size = 0;
  while (size < rest_.size()) {
    const wchar_t c = rest_[size++];
    if (quote != L'\0') {
      quote = c == quote ? L'\0' : quote;
    } else if (c == L'"' || c == L'\'') {
      quote = c;
    } else if (c == L'>') {
      break;
    }
  }
  const std::wstring_view tag = rest_.substr(0, size);
  rest_.remove_prefix(size);
  return tag;
}

void MarkupReader::readReference() {
  const std::size_t end = rest_.find(L';');
  constexpr std::size_t kLongestName = 48;
  if (end == std::wstring_view::npos || end > kLongestName) {
    text_ += L'&';
    rest_.remove_prefix(1);
    return;
  }
  appendEntity(text_, utf8(rest_.substr(0, end + 1)));
  rest_.remove_prefix(end + 1);
}

void MarkupReader::skipTo(std::wstring_view end) {
  const std::size_t at = rest_.find(end);
  rest_.remove_prefix(at == std::wstring_view::npos ? rest_.size() : at + end.size());
}

void MarkupReader::skipContent(std::wstring_view element) {
  while (!rest_.empty()) {
    skipTo(L"</");
    if (platform::equalIgnoringCase(rest_.substr(0, element.size()), element)) {
      skipTo(L">");
      return;
    }
  }
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

void appendTextOfMarkupBlock(std::wstring& text, std::wstring_view markup) { MarkupReader(text, markup, true).read(); }

void appendTextOfInlineMarkup(std::wstring& text, std::wstring_view markup) {
  MarkupReader(text, markup, false).read();
}

}  // namespace scrivalen::command

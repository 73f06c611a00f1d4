#include "document_check.h"

#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <iterator>
#include <vector>

namespace scrivalen::fuzz {
namespace {

bool isVoid(std::string_view name) {
  constexpr std::string_view kVoid[] = {"br", "hr", "img", "input", "meta", "col", "link"};
  return std::find(std::begin(kVoid), std::end(kVoid), name) != std::end(kVoid);
}

// The end of a tag: its '>' outside quoted values.
std::size_t endOfTag(std::string_view page, std::size_t at) {
  char quote = 0;
  for (; at < page.size(); ++at) {
    const char c = page[at];
    if (quote != 0) {
      quote = c == quote ? 0 : quote;
    } else if (c == '"' || c == '\'') {
      quote = c;
    } else if (c == '>') {
      return at;
    }
  }
  return std::string_view::npos;
}

std::string around(std::string_view page, std::size_t at) {
  return std::string(page.substr(at > 20 ? at - 20 : 0, 60));
}

class PageCheck {
 public:
  explicit PageCheck(std::string_view page) : page_(page) {}

  std::string problem() {
    std::size_t at = 0;
    while (problem_.empty() && (at = page_.find_first_of("<>&", at)) != std::string_view::npos) {
      if (page_[at] == '<') {
        at = tag(at);
      } else if (page_[at] == '&') {
        at = reference(at);
      } else {
        // In text, '>' is always escaped.
        fail("a '>' in text", at);
      }
    }
    if (problem_.empty() && !open_.empty()) {
      fail("not ended: " + open_.back(), page_.size());
    }
    return problem_;
  }

 private:
  void fail(const std::string& what, std::size_t at) { problem_ = what + " in: " + around(page_, at); }

  std::size_t tag(std::size_t at) {
    const std::size_t end = endOfTag(page_, at);
    if (end == std::string_view::npos) {
      fail("a tag that does not end", at);
      return at;
    }
    std::string_view tag = page_.substr(at + 1, end - at - 1);
    const bool ends = tag.starts_with('/');
    tag.remove_prefix(ends ? 1 : 0);
    const std::string name(tag.substr(0, tag.find_first_of(" \n")));
    if (name == "!DOCTYPE" || name == "?xml" || tag.ends_with('/') || isVoid(name)) {
      return end + 1;
    }
    if (!ends) {
      open_.push_back(name);
    } else if (open_.empty() || open_.back() != name) {
      fail("an end that does not match: " + name, at);
    } else {
      open_.pop_back();
    }
    const bool isStyle = !ends && name == "style";
    return isStyle ? std::min(page_.find("</style>", end), page_.size()) : end + 1;
  }

  std::size_t reference(std::size_t at) {
    const std::size_t end = page_.find(';', at);
    if (end == std::string_view::npos || end - at > 10) {
      fail("an '&' in text", at);
    }
    return at + 1;
  }

  std::string_view page_;
  std::vector<std::string> open_;
  std::string problem_;
};

// The size of the group that a text begins with.
std::size_t groupSize(std::string_view text) {
  int depth = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char c = text[at];
    depth += c == '{' ? 1 : c == '}' ? -1 : 0;
    if (depth == 0) {
      return at + 1;
    }
    at += c == '\\' ? 1 : 0;
  }
  return text.size();
}

constexpr char32_t kFirst = 0x0430;
constexpr char32_t kLast = 0x044F;

}  // namespace

std::string problemOfTags(std::string_view page) { return PageCheck(page).problem(); }

// Destinations that a reader may skip, such as bookmarks and the instructions of fields, hold no text.
std::map<char32_t, std::size_t> lettersOfRtf(std::string_view document) {
  std::map<char32_t, std::size_t> letters;
  for (std::size_t at = 0; at < document.size(); ++at) {
    const std::string_view rest = document.substr(at);
    if (rest.starts_with("{\\*")) {
      at += groupSize(rest) - 1;
    } else if (rest.starts_with("\\u") && rest.size() > 2 && isAsciiDigit(rest[2])) {
      char32_t number = 0;
      for (std::size_t digit = 2; digit < rest.size() && isAsciiDigit(rest[digit]); ++digit) {
        number = number * 10 + static_cast<char32_t>(rest[digit] - '0');
      }
      if (number >= kFirst && number <= kLast) {
        ++letters[number];
      }
    } else if (rest.front() == '\\') {
      ++at;
    }
  }
  return letters;
}

std::map<char32_t, std::size_t> lettersOf(std::string_view text) {
  std::map<char32_t, std::size_t> letters;
  const char* at = text.data();
  while (at != text.data() + text.size()) {
    char32_t c = 0;
    if (nextUtf8(at, text.data() + text.size(), c) && c >= kFirst && c <= kLast) {
      ++letters[c];
    }
  }
  return letters;
}

// A letter is a reference where it would keep a mark from beginning or ending what it marks.
std::map<char32_t, std::size_t> lettersOfMarkdown(std::string_view text) {
  std::map<char32_t, std::size_t> letters = lettersOf(text);
  for (std::size_t at = text.find("&#"); at != text.npos; at = text.find("&#", at + 2)) {
    char32_t number = 0;
    std::size_t end = at + 2;
    for (; end < text.size() && end < at + 9 && isAsciiDigit(text[end]); ++end) {
      number = number * 10 + static_cast<char32_t>(text[end] - '0');
    }
    const bool isEscaped = at > 0 && text[at - 1] == '\\';
    if (!isEscaped && end < text.size() && text[end] == ';' && number >= kFirst && number <= kLast) {
      ++letters[number];
    }
  }
  return letters;
}

std::map<char32_t, std::size_t> lettersOfTagged(std::string_view page) {
  std::string text;
  const std::size_t body = page.find("<body");
  std::size_t at = body == page.npos ? 0 : body;
  while (at < page.size()) {
    const std::size_t tag = std::min(page.find('<', at), page.size());
    text += page.substr(at, tag - at);
    const std::size_t end = tag < page.size() ? endOfTag(page, tag) : tag;
    at = end == std::string_view::npos ? page.size() : end + 1;
  }
  return lettersOf(text);
}

}  // namespace scrivalen::fuzz

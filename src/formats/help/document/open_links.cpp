#include "formats/help/document/open_links.h"

#include "text/ascii.h"

#include <algorithm>
#include <charconv>

namespace scrivalen::help {
namespace {

constexpr char kMark = '\x01';

// RFC 3986, 2.1.
std::string percentDecoded(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int high = at + 2 < text.size() ? hexValue(text[at + 1]) : -1;
    const int low = high < 0 ? -1 : hexValue(text[at + 2]);
    if (text[at] == '%' && low >= 0) {
      result += static_cast<char>(high * 16 + low);
      at += 2;
    } else {
      result += text[at];
    }
  }
  return result;
}

}  // namespace

std::string openLink(std::size_t number) { return kMark + std::to_string(number) + kMark; }

std::string withoutMarks(std::string_view markup) {
  std::string result(markup);
  std::erase(result, kMark);
  return result;
}

std::string_view OpenLinks::completed(std::string_view piece) {
  completed_.clear();
  while (!piece.empty()) {
    if (isInLink_) {
      takeNumber(piece);
    } else {
      const std::size_t mark = std::min(piece.find(kMark), piece.size());
      completed_.append(piece.substr(0, mark));
      isInLink_ = mark < piece.size();
      piece.remove_prefix(isInLink_ ? mark + 1 : mark);
    }
  }
  return completed_;
}

void OpenLinks::takeNumber(std::string_view& piece) {
  const std::size_t mark = std::min(piece.find(kMark), piece.size());
  digits_.append(piece.substr(0, mark));
  if (mark == piece.size()) {
    return piece.remove_prefix(mark);
  }
  piece.remove_prefix(mark + 1);
  std::size_t number = 0;
  std::from_chars(digits_.data(), digits_.data() + digits_.size(), number);
  completed_.append(addressOf_(number));
  digits_.clear();
  isInLink_ = false;
}

std::optional<LinkInside> nextLinkInside(std::string_view markup) {
  constexpr std::string_view kStart = " href=\"#";
  const std::size_t start = markup.find(kStart);
  if (start == markup.npos) {
    return std::nullopt;
  }
  const std::size_t place = start + kStart.size();
  const std::size_t end = std::min(markup.find('"', place), markup.size());
  return LinkInside{place - 1, end, percentDecoded(markup.substr(place, end - place))};
}

}  // namespace scrivalen::help

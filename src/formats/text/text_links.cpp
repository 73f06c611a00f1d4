#include "formats/text/text_links.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace scrivalen::text {
namespace {

constexpr std::size_t kMostBytes = 65536;  // of the list after a table

}  // namespace

bool needsAddress(std::string_view text, std::string_view address) {
  if (address.empty() || address.front() == '#' || text == address) {
    return false;
  }
  constexpr std::string_view kSchemes[] = {"http://", "https://", "mailto:", "tel:"};
  return std::none_of(std::begin(kSchemes), std::end(kSchemes), [&](std::string_view scheme) {
    return address.starts_with(scheme) && address.substr(scheme.size()) == text;
  });
}

void TableLinks::add(const document::Cell& cell) { cell.replay(*this); }

void TableLinks::write(const document::Event& event) {
  switch (event.kind) {
    case document::EventKind::BeginLink:
      text_.clear();
      address_ = event.address;
      break;
    case document::EventKind::Text:
    case document::EventKind::Image: text_ += event.text; break;
    case document::EventKind::EndLink: addLine(); break;
    default: break;
  }
}

void TableLinks::addLine() {
  if (!needsAddress(text_, address_)) {
    return;
  }
  std::replace(text_.begin(), text_.end(), '\n', ' ');
  std::string line = text_.empty() ? address_ : text_ + " (" + address_ + ")";
  if (known_.contains(line)) {
    return;
  }
  if (bytes_ + line.size() > kMostBytes) {
    ++leftOut_;
    return;
  }
  bytes_ += line.size();
  lines_.push_back(std::move(line));
  known_.insert(lines_.back());
}

void TableLinks::clear() {
  known_.clear();
  lines_.clear();
  bytes_ = 0;
  leftOut_ = 0;
}

}  // namespace scrivalen::text

#include "formats/text/text_lines.h"

#include <algorithm>
#include <array>

namespace scrivalen::text {
namespace {

constexpr std::size_t kFewestColumns = 20;
constexpr std::size_t kLargestShare = 2;  // deeper containers leave at least half of the line
constexpr std::size_t kBlanks = 64;
constexpr std::array<char, kBlanks> kBlankBlock = [] {
  std::array<char, kBlanks> result{};
  result.fill(' ');
  return result;
}();

std::string_view withoutBlanksAtEnd(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

}  // namespace

void TextLines::open(std::string_view first, std::string_view further) {
  if (!isFirst_) {
    first_ = prefix_;
    isFirst_ = true;
  }
  containers_.push_back({prefix_.size(), first_.size()});
  const bool isTooDeep = prefix_.size() + further.size() > columns_ / kLargestShare;
  if (!isTooDeep) {
    prefix_ += further;
  }
  if (!isTooDeep || first != further) {  // markers stay
    first_ += first;
  }
}

void TextLines::close() {
  const Container container = containers_.back();
  containers_.pop_back();
  prefix_.resize(container.prefixSize);
  if (container.hasLines) {
    isFirst_ = false;
  } else {
    first_.resize(container.firstSize);
  }
}

void TextLines::beginBlock(bool isSeparated) {
  if (containers_.back().hasLines) {
    blankLine_ = isSeparated ? prefix_.size() : kNoBlankLine;
  }
}

std::size_t TextLines::columns() const {
  return columns_ > prefix_.size() + kFewestColumns ? columns_ - prefix_.size() : kFewestColumns;
}

std::string_view TextLines::beginLine() {
  if (isLineOpen_) {
    isLineOpen_ = false;
    return {};
  }
  if (blankLine_ != kNoBlankLine) {
    const auto prefix = withoutBlanksAtEnd(std::string_view(prefix_).substr(0, blankLine_));
    out_.write(prefix.data(), prefix.size());
    out_.put('\n');
    blankLine_ = kNoBlankLine;
  }
  for (auto container = containers_.rbegin(); container != containers_.rend() && !container->hasLines; ++container) {
    container->hasLines = true;
  }
  if (!isFirst_) {
    return prefix_;
  }
  isFirst_ = false;
  return first_;
}

void TextLines::write(std::string_view text, std::size_t indent) {
  writePart(text, indent);
  isLineOpen_ = false;
  out_.put('\n');
}

void TextLines::writePart(std::string_view text, std::size_t indent) {
  const bool isRest = isLineOpen_;
  const std::string_view prefix = text.empty() ? withoutBlanksAtEnd(beginLine()) : beginLine();
  out_.write(prefix.data(), prefix.size());
  if (!text.empty() && !isRest) {
    writeBlanks(indent);
  }
  out_.write(text.data(), text.size());
  isLineOpen_ = true;
}

void TextLines::endPart() {
  if (isLineOpen_) {
    write({});
  }
}

void TextLines::writeBlanks(std::size_t count) {
  while (count > 0) {
    const std::size_t some = std::min(count, kBlanks);
    out_.write(kBlankBlock.data(), some);
    count -= some;
  }
}

}  // namespace scrivalen::text

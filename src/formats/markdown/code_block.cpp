#include "formats/markdown/code_block.h"

#include <algorithm>

namespace scrivalen::markdown {
namespace {

constexpr std::size_t kHeld = 65536;
constexpr std::size_t kShortestFence = 3;
constexpr std::size_t kMostIndent = 3;

template <typename Take>
void forEachLine(std::string_view text, Take take) {
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    take(text.substr(0, end));
    text.remove_prefix(end == text.npos ? text.size() : end + 1);
  }
}

}  // namespace

void CodeBlock::begin(std::string_view language) {
  language_.assign(language.starts_with('~') ? 1 : 0, ' ');
  for (const char c : language) {
    language_ += c == '\\' || c == '&' ? "\\" : "";
    language_ += c;
  }
  // A fence of backticks has none after it (CommonMark 0.30, 4.5).
  mark_ = language.find('`') == language.npos ? '`' : '~';
  fence_.clear();
}

void CodeBlock::text(std::string_view text) {
  code_ += text;
  if (code_.size() >= kHeld) {
    const std::string rest = code_.substr(code_.rfind('\n') + 1);
    if (rest.size() < code_.size()) {
      code_.resize(code_.size() - rest.size());
      writeLines();
      code_ = rest;
    }
  }
}

void CodeBlock::end() {
  writeLines();
  closeFence();
}

void CodeBlock::writeLines() {
  if (!isOpen_) {
    std::size_t size = kShortestFence;
    forEachLine(code_, [&](std::string_view line) { size = std::max(size, fenceIn(line) + 1); });
    fence_.assign(size, mark_);
    openFence();
  }
  forEachLine(code_, [this](std::string_view line) { writeLine(line); });
  code_.clear();
}

void CodeBlock::writeLine(std::string_view line) {
  if (const std::size_t size = fenceIn(line); size >= fence_.size()) {
    closeFence();
    fence_.assign(size + 1, mark_);
    openFence();
  }
  if (line.empty()) {
    return lines_.writeEmptyLine();
  }
  lines_.startLine();
  write(line);
  lines_.endLine();
}

void CodeBlock::openFence() {
  lines_.startBlock(Block::Code);
  lines_.startLine();
  write(fence_);
  write(language_);
  lines_.endLine();
  isOpen_ = true;
}

void CodeBlock::closeFence() {
  lines_.startLine();
  write(fence_);
  lines_.endLine();
  isOpen_ = false;
}

// The marks of a line that could end a fence; 0 for any other line.
std::size_t CodeBlock::fenceIn(std::string_view line) const {
  const std::size_t begin = line.find_first_not_of(' ');
  if (begin == line.npos || begin > kMostIndent || line[begin] != mark_) {
    return 0;
  }
  const std::size_t end = std::min(line.find_first_not_of(mark_, begin), line.size());
  return line.find_first_not_of(" \t", end) == line.npos ? end - begin : 0;
}

}  // namespace scrivalen::markdown

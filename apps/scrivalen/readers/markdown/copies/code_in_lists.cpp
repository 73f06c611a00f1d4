#include "readers/markdown/copies/code_in_lists.h"

#include <md4c.h>

#include <algorithm>

namespace scrivalen::command {
namespace {

constexpr std::size_t kLongestSearch = 16384;  // for the fence that begins a code
constexpr std::size_t kStep = 256;             // the parser looks at the lowest byte of a position

std::size_t endOfLine(std::string_view text, std::size_t at) {
  return std::min(text.find_first_of("\r\n", at), text.size());
}

std::size_t startOfNextLine(std::string_view text, std::size_t end) {
  return std::min(end + (text.substr(end, 2) == "\r\n" ? 2 : 1), text.size());
}

std::string_view withoutFirst(std::string_view line, std::string_view characters) {
  line.remove_prefix(std::min(line.find_first_not_of(characters), line.size()));
  return line;
}

bool isBlankLine(std::string_view line) { return withoutFirst(line, " \t>").empty(); }

// Of backticks or tildes; 0 if a line does not begin with a fence.
std::size_t lengthOfFence(std::string_view line) {
  const char mark = line.empty() ? '\0' : line.front();
  if (mark != '`' && mark != '~') {
    return 0;
  }
  const std::size_t length = std::min(line.find_first_not_of(mark), line.size());
  return length < 3 ? 0 : length;
}

// Whether a line that ends here may be the last one of a code, with an empty line after its fence.
bool mayEndCode(std::string_view text, std::size_t end) {
  if ((text[end] != '\n' && text[end] != '\r') || (text[end] == '\n' && end > 0 && text[end - 1] == '\r')) {
    return false;
  }
  const std::size_t fence = startOfNextLine(text, end);
  const std::size_t fenceEnd = endOfLine(text, fence);
  const std::string_view line = withoutFirst(text.substr(fence, fenceEnd - fence), " \t>");
  const std::size_t length = lengthOfFence(line);
  if (length == 0 || !isBlankLine(line.substr(length))) {
    return false;
  }
  const std::size_t after = startOfNextLine(text, fenceEnd);
  return after < text.size() && isBlankLine(text.substr(after, endOfLine(text, after) - after));
}

// The end of the line with the fence that begins the code, which is not before a position; npos if there is none.
std::size_t endOfOpeningFence(std::string_view text, std::size_t codeEnd, std::size_t from) {
  const std::size_t first = std::max(from, codeEnd - std::min(codeEnd, kLongestSearch));
  std::size_t lineEnd = codeEnd;
  while (lineEnd > first) {
    const std::size_t before = text.find_last_of("\r\n", lineEnd - 1);
    const std::size_t start = before == text.npos ? 0 : before + 1;
    if (lengthOfFence(withoutFirst(text.substr(start, lineEnd - start), " \t>-+*.)0123456789")) > 0) {
      return lineEnd;
    }
    if (before == text.npos) {
      break;
    }
    lineEnd = before;
  }
  return text.npos;
}

}  // namespace

std::optional<std::string> withCodeKeptInLists(std::string_view text) {
  std::string copy;
  std::size_t copied = 0;
  std::size_t blanks = 0;
  for (std::size_t at = MD_BLOCK_LI; at - blanks < text.size(); at += kStep) {
    const std::size_t end = at - blanks;
    const std::size_t fence = mayEndCode(text, end) ? endOfOpeningFence(text, end, copied) : text.npos;
    if (fence != text.npos) {
      copy.reserve(text.size() + text.size() / kStep + 1);
      copy.append(text.substr(copied, fence - copied)).append(1, ' ');
      copied = fence;
      ++blanks;
    }
  }
  if (blanks == 0) {
    return std::nullopt;
  }
  return copy.append(text.substr(copied));
}

}  // namespace scrivalen::command

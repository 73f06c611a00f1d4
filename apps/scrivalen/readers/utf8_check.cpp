#include "readers/utf8_check.h"

#include "text/utf.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace scrivalen::command {
namespace {

constexpr std::size_t kBlock = 16;

// The high bit of each byte is set if the byte is 0 or not ASCII. A borrow can only set further bits above a 0.
bool isPlainBlock(const char* at) {
  std::uint64_t words[2];
  std::memcpy(words, at, kBlock);
  constexpr std::uint64_t kOnes = 0x0101010101010101u;
  constexpr std::uint64_t kHighBits = 0x8080808080808080u;
  return (((words[0] - kOnes) | words[0] | (words[1] - kOnes) | words[1]) & kHighBits) == 0;
}

}  // namespace

bool isCleanUtf8(std::string_view text) {
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    if (static_cast<std::size_t>(end - at) >= kBlock && isPlainBlock(at)) {
      at += kBlock;
      continue;
    }
    const auto lead = static_cast<unsigned char>(*at);
    if (lead != 0 && lead < 0x80) {
      ++at;
      continue;
    }
    char32_t c = 0;
    if (lead == 0 || !scrivalen::nextUtf8(at, end, c)) {
      return false;
    }
  }
  return true;
}

std::size_t incompleteSequence(std::string_view text) {
  const std::size_t longest = std::min<std::size_t>(3, text.size());
  for (std::size_t back = 1; back <= longest; ++back) {
    const char c = text[text.size() - back];
    if ((static_cast<unsigned char>(c) & 0xC0) != 0x80) {
      return scrivalen::utf8Length(c) > back ? back : 0;
    }
  }
  return 0;
}

}  // namespace scrivalen::command

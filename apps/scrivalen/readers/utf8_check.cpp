#include "readers/utf8_check.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace scrivalen::command {
namespace {

constexpr std::size_t kBlock = 16;

struct Sequence {
  std::size_t length = 0;  // 0: no sequence starts like this
  unsigned char firstLow = 0x80;
  unsigned char firstHigh = 0xBF;
};

Sequence sequenceOf(unsigned char lead) {
  if (lead >= 0xC2 && lead <= 0xDF) return {2};
  if (lead == 0xE0) return {3, 0xA0, 0xBF};
  if (lead == 0xED) return {3, 0x80, 0x9F};
  if (lead >= 0xE1 && lead <= 0xEF) return {3};
  if (lead == 0xF0) return {4, 0x90, 0xBF};
  if (lead >= 0xF1 && lead <= 0xF3) return {4};
  if (lead == 0xF4) return {4, 0x80, 0x8F};
  return {};
}

bool isContinuation(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

bool isWellFormed(const char* at, const Sequence& sequence) {
  const auto first = static_cast<unsigned char>(at[1]);
  return first >= sequence.firstLow && first <= sequence.firstHigh &&
         std::all_of(at + 2, at + sequence.length, isContinuation);
}

// In each byte of a block the highest bit is set when the byte is 0 or not ASCII; borrows only add such bits above a 0.
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
    const Sequence sequence = sequenceOf(lead);
    if (sequence.length == 0 || static_cast<std::size_t>(end - at) < sequence.length || !isWellFormed(at, sequence)) {
      return false;
    }
    at += sequence.length;
  }
  return true;
}

std::size_t unfinishedSequence(std::string_view text) {
  const std::size_t longest = std::min<std::size_t>(3, text.size());
  for (std::size_t back = 1; back <= longest; ++back) {
    const char c = text[text.size() - back];
    if (!isContinuation(c)) {
      return sequenceOf(static_cast<unsigned char>(c)).length > back ? back : 0;
    }
  }
  return 0;
}

}  // namespace scrivalen::command

#include "output/markup_text.h"

#include "text/plain_text.h"

#include <bit>
#include <cstring>

namespace scrivalen {
namespace {

constexpr std::size_t kCopiedBlock = 16;
constexpr std::string_view kReplacementBytes = "\xEF\xBF\xBD";
constexpr std::string_view kBreakInValue = "&#10;";

// The first byte of U+FFFE and U+FFFF in UTF-8, and of the other characters from U+F000 on.
constexpr unsigned char kLastLead = 0xEF;

// Marks the top bit of the first of eight bytes, from the lowest, that is a character, and perhaps of later ones.
// @param ignored  bits that are not compared, so that one test serves two characters
constexpr std::uint64_t markFirst(std::uint64_t bytes, unsigned char character, unsigned ignored = 0) {
  const std::uint64_t other = (bytes | eightTimes(ignored)) ^ eightTimes(character | ignored);
  return (other - eightTimes(1)) & ~other & eightTimes(0x80);
}

struct Content {
  // '<' and '>' differ in one bit.
  static constexpr bool isSpecial(unsigned char c) {
    return (static_cast<int>(c == '\n') | static_cast<int>((c | ('<' ^ '>')) == '>') | static_cast<int>(c == '&') |
            static_cast<int>(c == kLastLead)) != 0;
  }
  static constexpr std::uint64_t firstSpecial(std::uint64_t bytes) {
    return markFirst(bytes, '\n') | markFirst(bytes, '<', '<' ^ '>') | markFirst(bytes, '&') |
           markFirst(bytes, kLastLead);
  }
};

struct Value {
  // So do '"' and '&'.
  static constexpr bool isSpecial(unsigned char c) {
    return (static_cast<int>(c == '\n') | static_cast<int>((c | ('<' ^ '>')) == '>') |
            static_cast<int>((c | ('"' ^ '&')) == '&') | static_cast<int>(c == kLastLead)) != 0;
  }
  static constexpr std::uint64_t firstSpecial(std::uint64_t bytes) {
    return markFirst(bytes, '\n') | markFirst(bytes, '<', '<' ^ '>') | markFirst(bytes, '&', '&' ^ '"') |
           markFirst(bytes, kLastLead);
  }
};

template <typename Word>
std::uint64_t load(const char* from) {
  Word word = 0;
  std::memcpy(&word, from, sizeof word);
  return word;
}

// Up to eight bytes, the first one lowest, then zeros. They are put together from parts that overlap: no byte after
// the text may be read, and a copy of any length costs more.
std::uint64_t wordOf(const char* text, std::size_t size) {
  if constexpr (std::endian::native != std::endian::little) {
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < size; ++i) {
      word |= load<unsigned char>(text + i) << (8 * i);
    }
    return word;
  }
  if (size == 8) {
    return load<std::uint64_t>(text);
  }
  if (size >= 4) {
    return load<std::uint32_t>(text) | load<std::uint32_t>(text + size - 4) << (8 * (size - 4));
  }
  return load<unsigned char>(text) | load<unsigned char>(text + size / 2) << (8 * (size / 2)) |
         load<unsigned char>(text + size - 1) << (8 * (size - 1));
}

void storeWord(char* out, std::uint64_t word) {
  if constexpr (std::endian::native == std::endian::little) {
    std::memcpy(out, &word, sizeof word);
  } else {
    for (std::size_t i = 0; i < sizeof word; ++i) {
      out[i] = static_cast<char>(word >> (8 * i));
    }
  }
}

// Copies up to eight bytes, and returns the place of the first special one; 8 without one.
template <typename Place>
std::size_t copyWord(char* out, const char* text, std::size_t size) {
  const std::uint64_t word = wordOf(text, size);
  storeWord(out, word);
  return static_cast<std::size_t>(std::countr_zero(Place::firstSpecial(word))) / 8;
}

std::size_t firstMarked(std::uint64_t marks) {
  const int bits = std::endian::native == std::endian::little ? std::countr_zero(marks) : std::countl_zero(marks);
  return static_cast<std::size_t>(bits) / 8;
}

// Copies sixteen bytes, and returns the place of the first special one; kCopiedBlock without one. The compiler makes
// vector instructions of the loop; the local arrays let it, as `out` might alias `text`.
template <typename Place>
std::size_t copyBlock(char* out, const char* text) {
  unsigned char bytes[kCopiedBlock];
  unsigned char special[kCopiedBlock];
  std::memcpy(bytes, text, kCopiedBlock);
  std::memcpy(out, bytes, kCopiedBlock);
  for (std::size_t i = 0; i < kCopiedBlock; ++i) {
    special[i] = Place::isSpecial(bytes[i]) ? 1 : 0;
  }
  std::uint64_t marks[2];
  std::memcpy(marks, special, sizeof marks);
  if ((marks[0] | marks[1]) == 0) {
    return kCopiedBlock;
  }
  return marks[0] != 0 ? firstMarked(marks[0]) : 8 + firstMarked(marks[1]);
}

char* copy(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

// An escape with the space to be copied in one piece.
struct Escape {
  char bytes[8];
  std::uint8_t size;
};

constexpr Escape escapeOf(char c) {
  switch (c) {
    case '&': return {"&amp;", 5};
    case '<': return {"&lt;", 4};
    case '>': return {"&gt;", 4};
    default: return {"&quot;", 6};
  }
}

bool isNoncharacter(std::string_view text) {
  return text.size() >= 3 && text[1] == '\xBF' && (text[2] == '\xBE' || text[2] == '\xBF');
}

// Writes the special character at the beginning of a text and removes it.
char* putSpecial(char* out, std::string_view& text, std::string_view lineBreak, std::uint64_t& replaced) {
  const char c = text.front();
  if (c == static_cast<char>(kLastLead)) {
    const bool isReplaced = isNoncharacter(text);
    replaced += isReplaced ? 1 : 0;
    out = copy(out, isReplaced ? kReplacementBytes : text.substr(0, 1));
    text.remove_prefix(isReplaced ? kReplacementBytes.size() : 1);
    return out;
  }
  text.remove_prefix(1);
  if (c == '\n') {
    return copy(out, lineBreak);
  }
  const Escape escape = escapeOf(c);
  std::memcpy(out, escape.bytes, sizeof escape.bytes);
  return out + escape.size;
}

template <typename Place>
char* put(char* out, std::string_view text, std::string_view lineBreak, std::uint64_t& replaced) {
  while (!text.empty()) {
    const std::size_t size = text.size() >= kCopiedBlock ? kCopiedBlock : text.size() < 8 ? text.size() : 8;
    const std::size_t plain =
        size == kCopiedBlock ? copyBlock<Place>(out, text.data()) : copyWord<Place>(out, text.data(), size);
    if (plain >= size) {
      out += size;
      text.remove_prefix(size);
    } else {
      text.remove_prefix(plain);
      out = putSpecial(out + plain, text, lineBreak, replaced);
    }
  }
  return out;
}

// The size of the next piece that is written in place. It ends before a character, never inside.
std::size_t pieceOf(std::string_view text) {
  constexpr std::size_t kLongest = MarkupText::longestInPlace(OutputBuffer::kBlock);
  if (text.size() <= kLongest) {
    return text.size();
  }
  std::size_t size = kLongest;
  while (size > kLongest - 3 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) {
    --size;
  }
  return size;
}

template <typename Place>
void put(OutputBuffer& buffer, std::string_view text, std::string_view lineBreak, std::uint64_t& replaced) {
  while (!text.empty()) {
    const std::size_t size = pieceOf(text);
    char* const out = buffer.reserve(MarkupText::spaceFor(size));
    buffer.advance(put<Place>(out, text.substr(0, size), lineBreak, replaced));
    text.remove_prefix(size);
  }
}

}  // namespace

void MarkupText::content(OutputBuffer& out, std::string_view text, std::string_view lineBreak) {
  put<Content>(out, text, lineBreak, replaced_);
}

char* MarkupText::content(char* out, std::string_view text, std::string_view lineBreak) {
  return put<Content>(out, text, lineBreak, replaced_);
}

void MarkupText::value(OutputBuffer& out, std::string_view text) { put<Value>(out, text, kBreakInValue, replaced_); }

char* MarkupText::value(char* out, std::string_view text) { return put<Value>(out, text, kBreakInValue, replaced_); }

}  // namespace scrivalen

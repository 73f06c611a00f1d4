#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

// A fast path for text: characters that an output takes unchanged, which is most of almost every text, are copied eight
// at a time.
namespace scrivalen {

inline constexpr std::size_t kPlainBlock = 8;

inline unsigned characterValue(wchar_t c) { return static_cast<unsigned>(c); }

/// The characters that an output takes unchanged: those below a power of two, one unit each. An output that takes fewer
/// derives from this and hides both functions.
template <typename OutputUnit, unsigned kLimit>
struct PlainBelow {
  using Unit = OutputUnit;
  static constexpr unsigned kEnd = kLimit;
  static bool isPlain(unsigned c) { return c < kEnd; }
  /// Whether eight bytes, all below kEnd, are plain.
  static bool arePlain(std::uint64_t) { return true; }
};

constexpr std::uint64_t eightTimes(std::uint64_t byte) { return byte * 0x0101010101010101; }

/// Sets the top bit of each of eight bytes that differs from a character. The bytes are below 0x80, so none carries
/// into the next.
/// @param ignored  bits that are not compared, so that one test serves two characters
constexpr std::uint64_t differFrom(std::uint64_t bytes, char character, unsigned ignored = 0) {
  const std::uint64_t other = eightTimes(static_cast<unsigned char>(character) | ignored);
  return ((bytes | eightTimes(ignored)) ^ other) + eightTimes(0x7F);
}

constexpr bool allMarked(std::uint64_t bytes) { return (bytes & eightTimes(0x80)) == eightTimes(0x80); }

/// The unit in the byte order of files, little-endian.
template <typename Unit>
Unit storedUnit(unsigned c) {
  if constexpr (sizeof(Unit) == 2 && std::endian::native == std::endian::big) {
    return static_cast<Unit>((c & 0xFF) << 8 | c >> 8);
  } else {
    return static_cast<Unit>(c);
  }
}

/// Copies eight characters unchanged. The local array lets the compiler use vector instructions: `out` might alias
/// `from`.
/// @return false when one of them is not plain; the bytes written must then be overwritten
template <typename Plain>
bool copyPlainBlock(const wchar_t* from, char* out) {
  using Unit = typename Plain::Unit;
  Unit units[kPlainBlock];
  unsigned all = 0;
  for (std::size_t i = 0; i < kPlainBlock; ++i) {
    all |= characterValue(from[i]);
    units[i] = storedUnit<Unit>(characterValue(from[i]));
  }
  std::memcpy(out, units, sizeof units);
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, units, sizeof bytes);
  return all < Plain::kEnd && Plain::arePlain(bytes);
}

/// Copies the plain blocks at the beginning of a text. A remainder shorter than a block is copied as a block that
/// overlaps the previous one.
/// @param out  must have space for one unit per character
/// @return the number of characters copied
template <typename Plain>
std::size_t copyPlainBlocks(const wchar_t* from, std::size_t length, char* out) {
  constexpr std::size_t kUnit = sizeof(typename Plain::Unit);
  std::size_t done = 0;
  while (done < length) {
    const std::size_t left = length - done;
    const std::size_t again = left < kPlainBlock ? kPlainBlock - left : 0;
    if (again > done || !copyPlainBlock<Plain>(from + (done - again), out + (done - again) * kUnit)) {
      break;
    }
    done += kPlainBlock - again;
  }
  return done;
}

/// Writes a text: plain blocks as far as possible, then one block's worth of characters singly, then plain blocks
/// again.
/// @param stop  where to end; writeCharacter may move past it
/// @param copyBlocks  (at, length): copies the plain blocks there and returns the number of characters
/// @param writeCharacter  (at): writes the character and moves past it; returns false to stop
/// @return where it stopped
template <typename CopyBlocks, typename WriteCharacter>
const wchar_t* transcode(const wchar_t* at, const wchar_t* stop, CopyBlocks copyBlocks, WriteCharacter writeCharacter) {
  while (at < stop) {
    at += copyBlocks(at, static_cast<std::size_t>(stop - at));
    const wchar_t* const blockEnd = at + std::min(kPlainBlock, static_cast<std::size_t>(stop - at));
    while (at < blockEnd) {
      if (!writeCharacter(at)) {
        return at;
      }
    }
  }
  return at;
}

/// Appends the leading plain characters of a text.
/// @return how many there are
template <typename Plain>
std::size_t appendPlain(std::string& out, std::wstring_view text) {
  const std::size_t used = out.size();
  out.resize(used + text.size());
  std::size_t plain = copyPlainBlocks<Plain>(text.data(), text.size(), out.data() + used);
  for (; plain < text.size() && Plain::isPlain(characterValue(text[plain])); ++plain) {
    out[used + plain] = static_cast<char>(text[plain]);
  }
  out.resize(used + plain);
  return plain;
}

}  // namespace scrivalen

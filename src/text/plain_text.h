#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

// The part of a text that an output takes as it stands, which is nearly all of nearly every text, goes there eight
// characters at a time.
namespace scrivalen {

inline constexpr std::size_t kPlainBlock = 8;

inline unsigned characterValue(wchar_t c) { return static_cast<unsigned>(c); }

/// What an output takes as it stands: characters below a power of two, in units of its own. An output that takes fewer
/// derives from it and hides both functions.
template <typename OutputUnit, unsigned kLimit>
struct PlainBelow {
  using Unit = OutputUnit;
  static constexpr unsigned kEnd = kLimit;
  static bool isPlain(unsigned c) { return c < kEnd; }
  /// Whether nothing among eight bytes needs care; asked when all of them are below kEnd.
  static bool arePlain(std::uint64_t) { return true; }
};

constexpr std::uint64_t eightTimes(std::uint64_t byte) { return byte * 0x0101010101010101; }

/// Marks, in the top bit of each of eight bytes below 0x80, which of them differ from a character. Such bytes do not
/// carry into each other.
/// @param ignored  bits that are not compared, so that one test serves two characters
constexpr std::uint64_t differFrom(std::uint64_t bytes, char character, unsigned ignored = 0) {
  const std::uint64_t other = eightTimes(static_cast<unsigned char>(character) | ignored);
  return ((bytes | eightTimes(ignored)) ^ other) + eightTimes(0x7F);
}

constexpr bool allMarked(std::uint64_t bytes) { return (bytes & eightTimes(0x80)) == eightTimes(0x80); }

/// The unit as the file has it, little-endian.
template <typename Unit>
Unit storedUnit(unsigned c) {
  if constexpr (sizeof(Unit) == 2 && std::endian::native == std::endian::big) {
    return static_cast<Unit>((c & 0xFF) << 8 | c >> 8);
  } else {
    return static_cast<Unit>(c);
  }
}

/// Writes eight characters as they stand. The array keeps the compiler free to use wide moves: `out` alone could be
/// anywhere, in `from` too.
/// @return false when something in them was not plain; what was written is then to be written over
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

/// Writes the plain blocks that a text begins with; what is left behind the last one goes with a block that begins
/// inside that one.
/// @param out  room for as many units as there are characters
/// @return how many characters were written
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

/// Takes a text apart: first the plain blocks, then a block's worth of characters one by one, then plain blocks again.
/// @param stop           where to end; what writeCharacter takes may lie beyond
/// @param copyBlocks     (at, length): writes the plain blocks that begin there and returns how many characters they
/// are
/// @param writeCharacter  (at): writes the character and moves past it; false ends it all
/// @return where it ended
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

/// Appends the plain characters that a text begins with.
/// @return how many they are
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

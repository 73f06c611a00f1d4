#include "document/clean_text.h"

#include "text/plain_text.h"
#include "text/utf.h"
#include "text/xml_characters.h"

#include <cstring>

namespace scrivalen::document {
namespace {

constexpr char32_t kFirstControlAboveAscii = 0x80;
constexpr char32_t kLastControl = 0x9F;
constexpr char kDelete = 0x7F;

// Whether eight bytes are ASCII and none of them is a control character.
bool arePrintable(std::uint64_t bytes) {
  const std::uint64_t noControls = bytes + eightTimes(0x80 - 0x20);
  return (bytes & eightTimes(0x80)) == 0 && allMarked(noControls & differFrom(bytes, kDelete));
}

std::uint64_t eightBytes(const char* at) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, at, sizeof bytes);
  return bytes;
}

// Whether a text is printable ASCII, as most are. The last bytes are looked at as a block that overlaps the one before.
bool isPrintable(std::string_view text) {
  const char* at = text.data();
  const char* const end = at + text.size();
  if (text.size() < kPlainBlock) {
    std::uint64_t bytes = eightTimes(' ');
    std::memcpy(&bytes, at, text.size());
    return arePrintable(bytes);
  }
  for (; end - at > static_cast<std::ptrdiff_t>(kPlainBlock); at += kPlainBlock) {
    if (!arePrintable(eightBytes(at))) {
      return false;
    }
  }
  return arePrintable(eightBytes(end - kPlainBlock));
}

bool isCleanAscii(char c, TextKind kind) {
  if (c >= ' ') {
    return c != kDelete;
  }
  return (c == '\n' && kind != TextKind::Line) || (c == '\t' && kind == TextKind::Code);
}

// Whether U+00C0 to U+07FF comes next, such as most letters of Latin, Greek, Cyrillic, Hebrew and Arabic. All are
// allowed.
bool isLetterOfTwoBytes(const char* at, const char* end) {
  const auto lead = static_cast<unsigned char>(*at);
  return lead >= 0xC3 && lead <= 0xDF && end - at > 1 && (static_cast<unsigned char>(at[1]) & 0xC0) == 0x80;
}

bool isForbidden(char32_t c) { return (c >= kFirstControlAboveAscii && c <= kLastControl) || !isXmlCharacter(c); }

}  // namespace

std::size_t cleanLength(std::string_view text, TextKind kind) {
  if (text.empty() || isPrintable(text)) {
    return text.size();
  }
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    if (isLetterOfTwoBytes(at, end)) {
      at += 2;
    } else if (end - at >= static_cast<std::ptrdiff_t>(kPlainBlock) && arePrintable(eightBytes(at))) {
      at += kPlainBlock;
    } else if (static_cast<unsigned char>(*at) < 0x80) {
      if (!isCleanAscii(*at, kind)) {
        break;
      }
      ++at;
    } else {
      const char* next = at;
      char32_t c = 0;
      if (!nextUtf8(next, end, c) || isForbidden(c)) {
        break;
      }
      at = next;
    }
  }
  return static_cast<std::size_t>(at - text.data());
}

void appendClean(std::string& out, std::string_view text, TextKind kind, Replaced& replaced) {
  while (true) {
    const std::size_t clean = cleanLength(text, kind);
    out.append(text, 0, clean);
    text.remove_prefix(clean);
    if (text.empty()) {
      return;
    }
    const char* at = text.data();
    char32_t c = 0;
    const bool isWellFormed = nextUtf8(at, at + text.size(), c);
    text.remove_prefix(static_cast<std::size_t>(at - text.data()));
    if (isWellFormed && c == '\t') {
      out += ' ';
    } else if (isWellFormed && (c == '\r' || c == '\n')) {
      if (c == '\r' && text.starts_with('\n')) {
        text.remove_prefix(1);
      }
      out += kind == TextKind::Line ? ' ' : '\n';
    } else {
      ++(isWellFormed ? replaced.controls : replaced.badBytes);
      char bytes[4];
      out.append(bytes, putUtf8(kReplacement, bytes));
    }
  }
}

}  // namespace scrivalen::document

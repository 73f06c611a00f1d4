#include "formats/rtf/fragment.h"

#include "system/code_page.h"
#include "text/plain_text.h"
#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>

using namespace scrivalen;

namespace scrivalen::rtf {
namespace {

// The characters that the conforming form writes unescaped.
struct PlainText : PlainBelow<char, 0x80> {
  static bool isPlain(unsigned c) { return c < kEnd && c != '\\' && c != '{' && c != '}' && c != '\n'; }
  static bool arePlain(std::uint64_t bytes) {
    return allMarked(differFrom(bytes, '\\') & differFrom(bytes, '{') & differFrom(bytes, '}') &
                     differFrom(bytes, '\n'));
  }
};

}  // namespace

ClassicFragment& ClassicFragment::control(std::string_view words) {
  words = words.substr(0, unitsLeft_);
  if (unitsLeft_ != kUnlimited) {
    unitsLeft_ -= words.size();
  }
  appendOrDrop(words);
  return *this;
}

ClassicFragment& ClassicFragment::number(int value) {
  char digits[kNumberBytes];
  return control({digits, putNumber(value, digits)});
}

ClassicFragment& ClassicFragment::text(std::wstring_view text) {
  const std::size_t whole = wholeCharacters(text);
  countCharacters(text, whole);
  const auto size = toCodePage(text.substr(0, whole), end(), freeBytes(), lost_);
  isDropped_ = isDropped_ || !size;
  grow(size.value_or(0));
  // Where the limit falls between the two code units of a character, only half of its "??" is written.
  if (whole < text.size() && unitsLeft_ > 0) {
    unitsLeft_ = 0;
    appendOrDrop("?");
  }
  return *this;
}

void ClassicFragment::appendOrDrop(std::string_view bytes) {
  if (bytes.size() > freeBytes()) {
    isDropped_ = true;
  } else {
    append(bytes);
  }
}

// How much of a text fits within the limit, in whole characters.
std::size_t ClassicFragment::wholeCharacters(std::wstring_view text) {
  if (unitsLeft_ == kUnlimited) {
    return text.size();
  }
  std::size_t length = 0;
  for (; length < text.size(); ++length) {
    const std::size_t units = unitsOf(static_cast<char32_t>(text[length]));
    if (units > unitsLeft_) {
      break;
    }
    unitsLeft_ -= units;
  }
  return length;
}

// All characters are lost when the fragment is dropped, otherwise those that are cut off.
void ClassicFragment::countCharacters(std::wstring_view text, std::size_t arriving) {
  if (!text.empty()) {
    characters_.add({text.size(), static_cast<char32_t>(text.front())});
  }
  if (arriving < text.size()) {
    lost_.add({text.size() - arriving, static_cast<char32_t>(text[arriving])});
  }
}

ConformingFragment& ConformingFragment::control(std::string_view words) {
  appendOrWrite(words);
  return *this;
}

ConformingFragment& ConformingFragment::number(int value) {
  char digits[kNumberBytes];
  return control({digits, putNumber(value, digits)});
}

ConformingFragment& ConformingFragment::text(std::wstring_view text) {
  const wchar_t* const stop = text.data() + text.size();
  transcode(
      text.data(), stop,
      [this](const wchar_t* at, std::size_t length) {
        const std::size_t plain = copyPlainBlocks<PlainText>(at, std::min(freeBytes(), length), end());
        grow(plain);
        return plain;
      },
      [this, stop](const wchar_t*& at) {
        escapeCharacter(at, stop);
        return true;
      });
  return *this;
}

ConformingFragment& ConformingFragment::bookmark(std::wstring_view name) {
  for (std::size_t quote = name.find(L'"'); quote != name.npos; quote = name.find(L'"')) {
    text(name.substr(0, quote)).control("'");
    name.remove_prefix(quote + 1);
  }
  return text(name);
}

ConformingFragment& ConformingFragment::controlText(std::wstring_view words) {
  const wchar_t* at = words.data();
  const wchar_t* const stop = at + words.size();
  while (at != stop) {
    const char32_t c = nextCharacter(at, stop);
    if (const auto byte = toWindows1252(c)) {
      appendByte(static_cast<char>(*byte));
    } else {
      lost_.note(c);
      appendOrWrite(std::string_view("??").substr(0, unitsOf(c)));
    }
  }
  return *this;
}

void ConformingFragment::appendOrWrite(std::string_view bytes) {
  if (bytes.size() > freeBytes()) {
    write();
  }
  append(bytes);
}

void ConformingFragment::escapeCharacter(const wchar_t*& at, const wchar_t* end) {
  const char32_t c = asCharacter(nextCharacter(at, end));
  const char escaped[] = {'\\', static_cast<char>(c)};
  if (PlainText::isPlain(c)) {
    appendByte(escaped[1]);
  } else if (c == '\n') {
    appendOrWrite(kLineBreak);  // readers ignore the character itself
  } else if (c < 0x80) {
    appendOrWrite({escaped, sizeof escaped});
  } else {
    character(c);
  }
}

// "\\ansi" means Windows-1252 to readers, whatever the code page of the system that wrote the document.
void ConformingFragment::character(char32_t c) {
  if (const auto byte = toWindows1252(c)) {
    appendByte(static_cast<char>(*byte));
  } else if (c > 0xFFFF) {
    unicode(highSurrogate(c));
    unicode(lowSurrogate(c));
  } else {
    unicode(c);
  }
}

// RTF 1.9, "Unicode RTF": the code unit as a signed 16-bit number, then the substitute for readers without Unicode.
void ConformingFragment::unicode(char32_t unit) {
  char bytes[kNumberBytes + 3] = {'\\', 'u'};
  char* const digitsEnd = putNumber(static_cast<std::int16_t>(static_cast<std::uint16_t>(unit)), bytes + 2);
  *digitsEnd = '?';
  appendOrWrite({bytes, digitsEnd + 1});
}

}  // namespace scrivalen::rtf

#include "readers/utf8_check.h"

#include "text/utf.h"

#include <algorithm>

namespace scrivalen::command {

bool isCleanUtf8(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) {
    return false;
  }
  const char* at = text.data();
  const char* const end = at + text.size();
  for (at = scrivalen::endOfAscii(at, end); at != end; at = scrivalen::endOfAscii(at, end)) {
    char32_t c = 0;
    if (!scrivalen::nextUtf8(at, end, c)) {
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

#include "document/plain/tabs.h"

namespace scrivalen::document {

std::string withoutTabs(std::string_view code, std::size_t& column) {
  std::string plain;
  for (const char c : code) {
    if (c == '\t') {
      const std::size_t blanks = kTabWidth - column % kTabWidth;
      plain.append(blanks, ' ');
      column += blanks;
    } else {
      plain += c;
      column = c == '\n' ? 0 : column + ((static_cast<unsigned char>(c) & 0xC0) == 0x80 ? 0 : 1);
    }
  }
  return plain;
}

}  // namespace scrivalen::document

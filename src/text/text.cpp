#include "scrivalen/text.h"

#include "output/contain.h"
#include "text/utf.h"

namespace scrivalen {

std::wstring FromUtf8(std::string_view text) {
  return platform::contained(std::wstring(), [text] {
    std::wstring wide;
    wide.reserve(text.size());
    platform::appendWide(wide, text);
    return wide;
  });
}

std::string ToUtf8(std::wstring_view text) {
  return platform::contained(std::string(), [text] {
    std::string utf8;
    utf8.reserve(text.size());
    platform::appendUtf8(utf8, text);
    return utf8;
  });
}

}  // namespace scrivalen

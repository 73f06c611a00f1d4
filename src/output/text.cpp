#include "scrivalen/text.h"

#include "output/exception_barrier.h"
#include "text/utf.h"

namespace scrivalen {

std::wstring FromUtf8(std::string_view text) {
  return scrivalen::contained(std::wstring(), [text] { return scrivalen::toWide(text); });
}

std::string ToUtf8(std::wstring_view text) {
  return scrivalen::contained(std::string(), [text] { return scrivalen::toUtf8(text); });
}

}  // namespace scrivalen

#include "scrivalen/text.h"

#include "output/contain.h"
#include "text/utf.h"

namespace scrivalen {

std::wstring FromUtf8(std::string_view text) {
  return platform::contained(std::wstring(), [text] { return platform::toWide(text); });
}

std::string ToUtf8(std::wstring_view text) {
  return platform::contained(std::string(), [text] { return platform::toUtf8(text); });
}

}  // namespace scrivalen

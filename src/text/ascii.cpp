#include "text/ascii.h"

namespace scrivalen {

bool equalIgnoringCase(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return asciiLower(x) == asciiLower(y); });
}

bool endsWithIgnoringCase(std::wstring_view text, std::wstring_view suffix) {
  return text.size() >= suffix.size() && equalIgnoringCase(text.substr(text.size() - suffix.size()), suffix);
}

}  // namespace scrivalen

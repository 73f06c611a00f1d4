#include "text/ascii.h"

namespace scrivalen {
namespace {

template <typename Char>
bool areEqual(std::basic_string_view<Char> a, std::basic_string_view<Char> b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](Char x, Char y) { return asciiLower(x) == asciiLower(y); });
}

}  // namespace

bool equalIgnoringCase(std::wstring_view a, std::wstring_view b) { return areEqual(a, b); }
bool equalIgnoringCase(std::string_view a, std::string_view b) { return areEqual(a, b); }

bool endsWithIgnoringCase(std::wstring_view text, std::wstring_view suffix) {
  return text.size() >= suffix.size() && equalIgnoringCase(text.substr(text.size() - suffix.size()), suffix);
}

}  // namespace scrivalen

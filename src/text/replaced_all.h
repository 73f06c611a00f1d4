#pragma once

#include <string>
#include <string_view>
#include <type_traits>

namespace scrivalen {

/// Returns a text with every occurrence of @p part replaced, from left to right; an empty part is not replaced.
template <typename Char>
std::basic_string<Char> replacedAll(std::basic_string_view<Char> text,
                                    std::type_identity_t<std::basic_string_view<Char>> part,
                                    std::type_identity_t<std::basic_string_view<Char>> replacement) {
  std::basic_string<Char> result;
  std::size_t found = part.empty() ? text.npos : text.find(part);
  for (; found != text.npos; found = text.find(part)) {
    result.append(text.substr(0, found)).append(replacement);
    text.remove_prefix(found + part.size());
  }
  return result.append(text);
}

}  // namespace scrivalen

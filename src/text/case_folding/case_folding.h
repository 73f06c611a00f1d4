#pragma once

#include <string>
#include <string_view>

namespace scrivalen {

/// The simple case folding of Unicode (CaseFolding.txt, statuses C and S), independent of the locale: characters that
/// differ only in case are folded into the same one. Other characters are returned unchanged.
char32_t foldCase(char32_t c);

/// Folds each character. Texts that differ only in case become equal.
/// @param utf8  ill-formed sequences become U+FFFD
std::string foldCase(std::string_view utf8);
/// The same with the full case folding (statuses C and F), in which "ß" is "ss".
std::string foldCaseFully(std::string_view utf8);

}  // namespace scrivalen

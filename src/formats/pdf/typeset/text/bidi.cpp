#include "formats/pdf/typeset/text/bidi.h"

#include "text/utf.h"

#include <fribidi.h>

#include <algorithm>
#include <new>
#include <numeric>

namespace scrivalen::typeset {

void levelsOf(std::string_view text, bool isRightToLeft, std::vector<std::uint8_t>& levels) {
  std::vector<FriBidiChar> characters;
  std::vector<std::size_t> ends;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    characters.push_back(c);
    ends.push_back(static_cast<std::size_t>(at - text.data()));
  }
  const auto count = static_cast<FriBidiStrIndex>(characters.size());
  std::vector<FriBidiCharType> types(characters.size());
  std::vector<FriBidiBracketType> brackets(characters.size());
  std::vector<FriBidiLevel> found(characters.size());
  fribidi_get_bidi_types(characters.data(), count, types.data());
  fribidi_get_bracket_types(characters.data(), count, types.data(), brackets.data());
  FriBidiParType direction = isRightToLeft ? FRIBIDI_PAR_RTL : FRIBIDI_PAR_LTR;
  if (count > 0 &&
      fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &direction, found.data()) == 0) {
    throw std::bad_alloc();
  }
  levels.assign(text.size(), 0);
  std::size_t begin = 0;
  for (std::size_t i = 0; i < ends.size(); ++i) {
    std::fill(levels.begin() + static_cast<std::ptrdiff_t>(begin),
              levels.begin() + static_cast<std::ptrdiff_t>(ends[i]), static_cast<std::uint8_t>(found[i]));
    begin = ends[i];
  }
}

void orderOf(const std::vector<std::uint8_t>& levels, std::vector<std::size_t>& order) {
  order.resize(levels.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (levels.empty()) {
    return;
  }
  const std::uint8_t highest = *std::max_element(levels.begin(), levels.end());
  for (std::uint8_t level = highest; level > 0; --level) {
    for (std::size_t begin = 0; begin < levels.size();) {
      std::size_t end = begin;
      while (end < levels.size() && levels[order[end]] >= level) {
        ++end;
      }
      std::reverse(order.begin() + static_cast<std::ptrdiff_t>(begin),
                   order.begin() + static_cast<std::ptrdiff_t>(end));
      begin = std::max(end, begin + 1);
    }
  }
}

}  // namespace scrivalen::typeset

#include "options/suggestion.h"

#include "text/names/similar.h"

namespace scrivalen::command {

std::string suggestion(std::string_view wrong, const std::vector<std::string_view>& known, const std::string& otherwise,
                       const std::string& start) {
  const std::string_view similar = scrivalen::mostSimilar(wrong, known);
  return similar.empty() ? otherwise : "; did you mean '" + start + std::string(similar) + "'?";
}

}  // namespace scrivalen::command

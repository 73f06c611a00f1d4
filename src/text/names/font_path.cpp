#include "text/names/font_path.h"

#include <charconv>
#include <system_error>

namespace scrivalen {

FontPath fontPathOf(std::string_view value) {
  const std::size_t mark = value.rfind('#');
  if (mark == std::string_view::npos || mark + 1 == value.size()) {
    return {value};
  }
  unsigned index = 0;
  const char* const end = value.data() + value.size();
  const auto result = std::from_chars(value.data() + mark + 1, end, index);
  if (result.ptr != end || result.ec == std::errc::invalid_argument) {
    return {value};
  }
  return {value.substr(0, mark), result.ec == std::errc() ? index : kLargestFontIndex};
}

}  // namespace scrivalen

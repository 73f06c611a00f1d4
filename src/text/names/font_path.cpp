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
  return result.ec == std::errc() && result.ptr == end ? FontPath{value.substr(0, mark), index} : FontPath{value};
}

}  // namespace scrivalen

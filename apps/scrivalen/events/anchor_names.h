#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace scrivalen::command {

/// Makes the anchor names of headings as Markdown hosting sites do: in lower case, with hyphens for blanks and without
/// punctuation. A name already in use gets the suffix "-1", "-2", ...
class AnchorNames {
 public:
  /// Valid until the next call.
  const std::wstring& next(std::wstring_view heading);

 private:
  std::wstring name_;
  std::unordered_map<std::wstring, int> used_;  // how often each name was used
};

}  // namespace scrivalen::command

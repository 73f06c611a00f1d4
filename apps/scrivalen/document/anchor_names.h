#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace scrivalen::command {

/// Gives headings the names by which links reach them: lower case, blanks as hyphens, punctuation dropped, as the
/// places where Markdown is read online do it. A name that is taken gets "-1", "-2", ... behind it.
class AnchorNames {
 public:
  /// Valid until the next call.
  const std::wstring& next(std::wstring_view heading);

 private:
  std::wstring name_;
  std::unordered_map<std::wstring, int> used_;  // how many names came from each
};

}  // namespace scrivalen::command

#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace scrivalen::document {

/// Makes the ids of headings as Markdown hosting sites do: in lower case, with hyphens for blanks and without
/// punctuation. An id already in use gets the suffix "-1", "-2", ... Keeps every id, so it makes that of a long heading
/// from the first 1,000 bytes or so.
class AnchorNames {
 public:
  /// A new id for a heading, marked as used. Never empty; valid until the next call.
  /// @param heading  well-formed UTF-8
  std::string_view next(std::string_view heading);
  /// Marks an id that the host chose as used.
  /// @return false when it was used already
  bool claim(std::string_view id);
  bool isUsed(std::string_view id) const { return used_.contains(id); }

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };

  std::string name_;
  std::unordered_map<std::string, int, Hash, std::equal_to<>> used_;  // with the next suffix to try
};

}  // namespace scrivalen::document

#pragma once

#include "formats/pdf/typeset/file/outline.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace scrivalen::typeset {

/// The places that links and contents lead to, by name. Their tree is written last (PDF 1.7, 7.9.6), so that a link may
/// lead to a place that comes later.
class NamedPlaces {
 public:
  /// The first place of a name counts.
  void add(std::string_view name, const Place& place);
  /// Null for an unknown name.
  const Place* find(std::string_view name) const;
  /// Writes them without those whose names the file's standard has no room for, to which no link leads.
  /// @return the number of the tree's root; 0 without places
  int write(PdfFile& file) const;

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
  };

  std::unordered_map<std::string, Place, Hash, std::equal_to<>> places_;
};

}  // namespace scrivalen::typeset

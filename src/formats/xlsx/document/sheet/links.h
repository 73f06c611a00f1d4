#pragma once

#include "formats/xlsx/workbook/relations.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

/// The places that links in a workbook lead to. Each that a link names becomes a defined name.
class NamedPlaces {
 public:
  /// The defined name of a place, which may come later.
  const std::string& nameOf(std::string_view id);
  /// @param cell  as in "'Sheet1'!$A$1"
  void add(std::string_view id, std::string cell);
  /// The defined names of places that there are, as elements.
  std::string xml() const;

 private:
  std::string newName(std::string_view id);

  std::map<std::string, std::string, std::less<>> names_;  // of ids that links name
  std::map<std::string, std::string, std::less<>> cells_;  // of ids
  std::set<std::string, std::less<>> usedNames_;           // in lower case
  std::map<std::string, std::size_t> numbers_;             // the last ones of names that several places wish, likewise
};

/// The hyperlinks of a sheet.
class SheetLinks {
 public:
  static constexpr std::size_t kMost = 65530;           ///< on a sheet
  static constexpr std::size_t kLongestAddress = 2079;  ///< in bytes, as the file has it

  /// @param places  not owned; must outlive this object
  explicit SheetLinks(NamedPlaces& places) : places_(places) {}

  /// Whether the sheet takes a link to this address.
  bool takes(std::string_view address) const;
  /// @param cell   its name
  /// @param title  at most 255 UTF-16 code units
  void add(const std::string& cell, std::string_view address, std::string_view title);

  /// How many bytes the links have so far.
  std::size_t size() const { return links_.size(); }
  /// The element "hyperlinks"; empty without any.
  std::string xml() const;
  const std::vector<Relation>& relations() const { return relations_; }

 private:
  NamedPlaces& places_;
  std::string links_;
  std::vector<Relation> relations_;
  std::size_t count_ = 0;
};

}  // namespace scrivalen::xlsx

#pragma once

#include "document/model/event.h"
#include "formats/pdf/typeset/length.h"

#include <cstdint>
#include <string>
#include <vector>

namespace scrivalen::typeset {

/// Numbers the items of nested lists.
class ListNesting {
 public:
  static constexpr Length kTightGap = 2 * kPoint;   ///< after an item that is a line
  static constexpr Length kMarkerGap = 5 * kPoint;  ///< between a marker and its text
  static constexpr Length kWidestMarker = 40 * kPoint;

  /// @param list  a BeginList
  void begin(const document::Event& list);
  void end() { lists_.pop_back(); }
  bool isTight() const { return !lists_.empty() && lists_.back().isTight; }
  /// Of the items of the innermost list, from what is around it.
  Length indent() const;
  /// The marker of the next item, as UTF-8.
  std::string next(document::Task task);

 private:
  struct List {
    bool isOrdered;
    bool isTight;
    std::int64_t number;
  };

  std::vector<List> lists_;
};

}  // namespace scrivalen::typeset

#pragma once

#include "document/model/event.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// Numbers the items of nested lists, for formats that write markers as text.
class ListMarkers {
 public:
  /// @param list  a BeginList
  void enter(const Event& list) { lists_.push_back({list.ordered, list.number}); }
  void leave() { lists_.pop_back(); }
  /// The marker of the next item of the innermost list, such as "3. " or "- [x] ".
  /// @param bullet  the marker of an unnumbered item, with a trailing blank
  std::string next(Task task, std::string_view bullet);

 private:
  struct List {
    bool ordered;
    std::int64_t next;
  };

  std::vector<List> lists_;
};

}  // namespace scrivalen::document

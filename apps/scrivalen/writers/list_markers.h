#pragma once

#include "events/document.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Numbers the items of nested lists.
class ListMarkers {
 public:
  void enter(const Event& list) { lists_.push_back({list.ordered, static_cast<unsigned>(list.number)}); }
  void leave() { lists_.pop_back(); }
  /// The marker of the next item of the innermost list, such as "3. " or "- [x] ".
  /// @param bullet  the marker of an unnumbered item
  /// @param suffix  the text after an item's number
  std::wstring next(Task task, std::wstring_view bullet, std::wstring_view suffix);

 private:
  struct List {
    bool ordered;
    unsigned next;
  };

  std::vector<List> lists_;
};

}  // namespace scrivalen::command

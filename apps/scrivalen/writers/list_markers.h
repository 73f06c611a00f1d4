#pragma once

#include "document/document.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Counts the items of lists within lists.
class ListMarkers {
 public:
  void enter(const Event& list) { lists_.push_back({list.ordered, static_cast<unsigned>(list.number)}); }
  void leave() { lists_.pop_back(); }
  /// What stands before the next item of the innermost list, such as "3. " or "- [x] ".
  /// @param bullet  before an item without a number
  /// @param suffix  what follows the number of one that has it
  std::wstring next(Task task, std::wstring_view bullet, std::wstring_view suffix);

 private:
  struct List {
    bool ordered;
    unsigned next;
  };

  std::vector<List> lists_;
};

}  // namespace scrivalen::command

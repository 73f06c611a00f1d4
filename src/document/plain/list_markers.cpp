#include "document/plain/list_markers.h"

namespace scrivalen::document {
namespace {

std::string_view taskMarker(Task task) {
  switch (task) {
    case Task::Open: return "[ ] ";
    case Task::Done: return "[x] ";
    case Task::None: break;
  }
  return "";
}

}  // namespace

std::string ListMarkers::next(Task task, std::string_view bullet) {
  List& list = lists_.back();
  std::string marker = list.ordered ? std::to_string(list.next++) + ". " : std::string(bullet);
  return marker.append(taskMarker(task));
}

}  // namespace scrivalen::document

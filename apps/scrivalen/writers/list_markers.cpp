#include "writers/list_markers.h"

namespace scrivalen::command {
namespace {

std::wstring_view taskMarker(Task task) {
  switch (task) {
    case Task::Open: return L"[ ] ";
    case Task::Done: return L"[x] ";
    case Task::None: break;
  }
  return L"";
}

}  // namespace

std::wstring ListMarkers::next(Task task, std::wstring_view bullet, std::wstring_view suffix) {
  List& list = lists_.back();
  std::wstring marker(bullet);
  if (list.ordered) {
    marker = std::to_wstring(list.next++);
    marker += suffix;
  }
  return marker.append(taskMarker(task));
}

}  // namespace scrivalen::command

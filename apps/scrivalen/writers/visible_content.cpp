#include "writers/visible_content.h"

namespace scrivalen::command {

bool VisibleContent::includes(const Event& event) {
  if (groupOf(event.kind) != EventGroup::Inline) {
    markup_.reveal();
    return true;
  }
  switch (event.kind) {
    case EventKind::Markup: return true;
    case EventKind::BeginEmphasis:
    case EventKind::BeginStrong:
    case EventKind::BeginDeleted:
    case EventKind::BeginCode:
    case EventKind::BeginLink: return beginSpan();
    case EventKind::EndEmphasis:
    case EventKind::EndStrong:
    case EventKind::EndDeleted:
    case EventKind::EndCode:
    case EventKind::EndLink: return endSpan();
    default: return !isHidden();
  }
}

bool VisibleContent::beginSpan() {
  spans_.push_back(!isHidden());
  return spans_.back();
}

bool VisibleContent::endSpan() {
  const bool isVisible = spans_.back();
  spans_.pop_back();
  return isVisible;
}

}  // namespace scrivalen::command

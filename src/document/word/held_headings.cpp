#include "document/word/held_headings.h"

#include <utility>

namespace scrivalen::document {

// A place after a heading leads to what follows, so it waits, too.
bool HeldHeadings::hold(const Event& event) {
  const bool begins = event.kind == EventKind::BeginHeading;
  const bool belongs =
      event.kind == EventKind::Title || begins || isInHeading_ || (event.kind == EventKind::Anchor && !isEmpty());
  if (belongs) {
    events_.write(event);
    isInHeading_ = event.kind != EventKind::EndHeading && (begins || isInHeading_);
  }
  return belongs;
}

EventLog HeldHeadings::take() { return std::exchange(events_, {}); }

}  // namespace scrivalen::document

#pragma once

#include "document/model/event.h"
#include "document/model/event_log.h"

namespace scrivalen::document {

/// Headings, and the document's title, that wait for what comes after them. If that is a table on turned pages, they are on the first of these.
class HeldHeadings {
 public:
  /// @return whether the event belongs to a heading, and waits
  bool hold(const Event& event);
  bool isEmpty() const { return events_.size() == 0; }
  EventLog take();

 private:
  EventLog events_;
  bool isInHeading_ = false;
};

}  // namespace scrivalen::document

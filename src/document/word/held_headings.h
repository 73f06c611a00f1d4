#pragma once

#include "document/model/event.h"
#include "document/model/event_log.h"

#include <cstddef>

namespace scrivalen::document {

/// Headings, and the document's title, that wait for what comes after them. If that is a table on turned pages, they
/// are on the first of these.
class HeldHeadings {
 public:
  static constexpr std::size_t kMostBytes = 16384;  ///< far more than a page has room for

  /// @return whether the event belongs to a heading, and waits
  bool hold(const Event& event);
  bool isEmpty() const { return events_.size() == 0; }
  /// Whether the headings have to be written before another event is held.
  bool isFull() const { return !isInHeading_ && events_.size() + events_.pictureBytes() > kMostBytes; }
  EventLog take();

 private:
  EventLog events_;
  bool isInHeading_ = false;
};

}  // namespace scrivalen::document

#include "document/model/table.h"

#include "document/model/event_log.h"

namespace scrivalen::document {

void Cell::replay(EventSink& sink) const {
  if (content != nullptr) {
    content->replay(sink, contentBegin, contentEnd);
  } else if (!text.empty()) {
    sink.write({.kind = EventKind::Text, .text = text});
  }
}

}  // namespace scrivalen::document

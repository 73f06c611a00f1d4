#pragma once

#include "events/document.h"

#include <cstddef>
#include <string>

namespace scrivalen::command {

/// Keeps events for replay. Texts are stored as UTF-8, which takes a quarter of the memory of 32-bit wide text.
class EventLog : public EventSink {
 public:
  void write(const Event& event) override;
  void replay(EventSink& sink) const;
  bool isEmpty() const { return bytes_.empty(); }
  void clear() { bytes_.clear(); }

 private:
  std::string bytes_;
};

}  // namespace scrivalen::command

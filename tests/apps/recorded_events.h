#pragma once

#include "events/document.h"

#include <string>
#include <vector>

namespace scrivalen::command::test {

using Lines = std::vector<std::string>;

/// Records each event as one line: its kind, then the fields that are set.
class RecordedEvents : public EventSink {
 public:
  void write(const Event& event) override;
  const Lines& lines() const { return lines_; }

 private:
  Lines lines_;
};

}  // namespace scrivalen::command::test

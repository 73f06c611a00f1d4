#pragma once

#include "document/model/event.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace scrivalen::document {

/// Keeps events for replay.
class EventLog : public EventSink {
 public:
  void write(const Event& event) override;
  void replay(EventSink& sink) const { replay(sink, 0, size()); }
  /// Replays what was written between two sizes.
  void replay(EventSink& sink, std::size_t begin, std::size_t end) const;

  /// In bytes, without the pictures.
  std::size_t size() const { return bytes_.size(); }
  std::size_t pictureBytes() const { return pictureBytes_; }
  void clear();

 private:
  std::string bytes_;
  std::size_t pictureBytes_ = 0;
  std::vector<std::shared_ptr<const Picture>> pictures_;
};

}  // namespace scrivalen::document

#include "document/event_log.h"

#include "document/picture.h"

#include <cstdint>
#include <cstring>
#include <type_traits>

namespace scrivalen::document {
namespace {

// What an event has besides its head. Most events of a line have nothing or only a text.
enum Part : std::uint16_t {
  kNumber = 1 << 0,
  kPoints = 1 << 1,
  kColor = 1 << 2,
  kBackground = 1 << 3,
  kPicture = 1 << 4,
  kText = 1 << 5,
  kId = 1 << 6,
  kAddress = 1 << 7,
  kTitle = 1 << 8
};

struct Head {
  EventKind kind;
  Align align;
  Task task;
  Span span;
  bool ordered;
  bool tight;
  std::uint16_t parts;
};

std::uint16_t partsOf(const Event& event) {
  unsigned parts = 0;
  const auto add = [&parts](bool has, Part part) { parts |= has ? static_cast<unsigned>(part) : 0; };
  add(event.number != 0, kNumber);
  add(event.points != 0, kPoints);
  add(event.color.has_value(), kColor);
  add(event.background.has_value(), kBackground);
  add(event.picture != nullptr, kPicture);
  add(!event.text.empty(), kText);
  add(!event.id.empty(), kId);
  add(!event.address.empty(), kAddress);
  add(!event.title.empty(), kTitle);
  return static_cast<std::uint16_t>(parts);
}

class Packer {
 public:
  Packer(std::string& bytes, std::uint16_t parts) : bytes_(bytes), parts_(parts) {}

  template <typename Value>
  void put(const Value& value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    bytes_.append(raw, sizeof raw);
  }

  template <typename Value>
  void put(Part part, const Value& value) {
    if ((parts_ & part) != 0) {
      put(value);
    }
  }

  void putText(Part part, std::string_view text) {
    if ((parts_ & part) != 0) {
      put(text.size());
      bytes_.append(text);
    }
  }

 private:
  std::string& bytes_;
  std::uint16_t parts_;
};

class Unpacker {
 public:
  explicit Unpacker(std::string_view bytes) : left_(bytes) {}

  bool atEnd() const { return left_.empty(); }

  Head head() {
    const Head head = take<Head>();
    parts_ = head.parts;
    return head;
  }

  template <typename Value>
  Value value(Part part, Value otherwise) {
    return (parts_ & part) != 0 ? take<Value>() : otherwise;
  }

  std::optional<Rgb> color(Part part) { return (parts_ & part) != 0 ? std::optional<Rgb>(take<Rgb>()) : std::nullopt; }

  std::string_view text(Part part) {
    if ((parts_ & part) == 0) {
      return {};
    }
    const auto size = take<std::size_t>();
    const std::string_view text = left_.substr(0, size);
    left_.remove_prefix(size);
    return text;
  }

 private:
  template <typename Value>
  Value take() {
    Value value;
    std::memcpy(&value, left_.data(), sizeof value);
    left_.remove_prefix(sizeof value);
    return value;
  }

  std::string_view left_;
  std::uint16_t parts_ = 0;
};

}  // namespace

void EventLog::write(const Event& event) {
  const std::uint16_t parts = partsOf(event);
  if (event.picture != nullptr) {
    pictures_.push_back(event.picture->shared_from_this());
  }
  Packer packer(bytes_, parts);
  packer.put(Head{event.kind, event.align, event.task, event.span, event.ordered, event.tight, parts});
  packer.put(kNumber, event.number);
  packer.put(kPoints, event.points);
  packer.put(kColor, event.color.value_or(0));
  packer.put(kBackground, event.background.value_or(0));
  packer.put(kPicture, pictures_.size());
  packer.putText(kText, event.text);
  packer.putText(kId, event.id);
  packer.putText(kAddress, event.address);
  packer.putText(kTitle, event.title);
}

void EventLog::replay(EventSink& sink, std::size_t begin, std::size_t end) const {
  Unpacker unpacker(std::string_view(bytes_).substr(begin, end - begin));
  while (!unpacker.atEnd()) {
    const Head head = unpacker.head();
    Event event{head.kind, head.align, head.task, head.span, head.ordered, head.tight};
    event.number = unpacker.value(kNumber, 0);
    event.points = unpacker.value(kPoints, 0.0);
    event.color = unpacker.color(kColor);
    event.background = unpacker.color(kBackground);
    const std::size_t picture = unpacker.value(kPicture, std::size_t{0});
    event.picture = picture > 0 ? pictures_[picture - 1].get() : nullptr;
    event.text = unpacker.text(kText);
    event.id = unpacker.text(kId);
    event.address = unpacker.text(kAddress);
    event.title = unpacker.text(kTitle);
    sink.write(event);
  }
}

void EventLog::clear() {
  bytes_.clear();
  pictures_.clear();
}

}  // namespace scrivalen::document

#include "document/model/event_log.h"

#include "document/pictures/picture.h"

#include <cstdint>
#include <cstring>
#include <type_traits>

namespace scrivalen::document {
namespace {

// What an event has besides its head. Most events of a line have nothing or only a text.
enum Extra : std::uint16_t {
  kHasNumber = 1 << 0,
  kHasPoints = 1 << 1,
  kHasColor = 1 << 2,
  kHasBackground = 1 << 3,
  kHasPicture = 1 << 4,
  kHasText = 1 << 5,
  kHasId = 1 << 6,
  kHasAddress = 1 << 7,
  kHasTitle = 1 << 8
};

struct Head {
  EventKind kind;
  Align align;
  Task task;
  Span span;
  bool ordered;
  bool tight;
  std::uint16_t extras;
};

std::uint16_t extrasOf(const Event& event) {
  unsigned extras = 0;
  const auto add = [&extras](bool has, Extra extra) { extras |= has ? static_cast<unsigned>(extra) : 0; };
  add(event.number != 0, kHasNumber);
  add(event.points != 0, kHasPoints);
  add(event.color.has_value(), kHasColor);
  add(event.background.has_value(), kHasBackground);
  add(event.picture != nullptr, kHasPicture);
  add(!event.text.empty(), kHasText);
  add(!event.id.empty(), kHasId);
  add(!event.address.empty(), kHasAddress);
  add(!event.title.empty(), kHasTitle);
  return static_cast<std::uint16_t>(extras);
}

class Packer {
 public:
  Packer(std::string& bytes, std::uint16_t extras) : bytes_(bytes), extras_(extras) {}

  template <typename Value>
  void put(const Value& value) {
    static_assert(std::is_trivially_copyable_v<Value>);
    char raw[sizeof value];
    std::memcpy(raw, &value, sizeof value);
    bytes_.append(raw, sizeof raw);
  }

  template <typename Value>
  void put(Extra extra, const Value& value) {
    if ((extras_ & extra) != 0) {
      put(value);
    }
  }

  void putText(Extra extra, std::string_view text) {
    if ((extras_ & extra) != 0) {
      put(text.size());
      bytes_.append(text);
    }
  }

 private:
  std::string& bytes_;
  std::uint16_t extras_;
};

class Unpacker {
 public:
  explicit Unpacker(std::string_view bytes) : left_(bytes) {}

  bool atEnd() const { return left_.empty(); }

  Head head() {
    const Head head = take<Head>();
    extras_ = head.extras;
    return head;
  }

  template <typename Value>
  Value value(Extra extra, Value otherwise) {
    return (extras_ & extra) != 0 ? take<Value>() : otherwise;
  }

  std::optional<Rgb> color(Extra extra) {
    return (extras_ & extra) != 0 ? std::optional<Rgb>(take<Rgb>()) : std::nullopt;
  }

  std::string_view text(Extra extra) {
    if ((extras_ & extra) == 0) {
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
  std::uint16_t extras_ = 0;
};

}  // namespace

void EventLog::write(const Event& event) {
  const std::uint16_t extras = extrasOf(event);
  if (event.picture != nullptr) {
    pictures_.push_back(event.picture->shared_from_this());
    pictureBytes_ += event.picture->bytes().size();
  }
  Packer packer(bytes_, extras);
  packer.put(Head{event.kind, event.align, event.task, event.span, event.ordered, event.tight, extras});
  packer.put(kHasNumber, event.number);
  packer.put(kHasPoints, event.points);
  packer.put(kHasColor, event.color.value_or(0));
  packer.put(kHasBackground, event.background.value_or(0));
  packer.put(kHasPicture, pictures_.size());
  packer.putText(kHasText, event.text);
  packer.putText(kHasId, event.id);
  packer.putText(kHasAddress, event.address);
  packer.putText(kHasTitle, event.title);
}

void EventLog::replay(EventSink& sink, std::size_t begin, std::size_t end) const {
  Unpacker unpacker(std::string_view(bytes_).substr(begin, end - begin));
  while (!unpacker.atEnd()) {
    const Head head = unpacker.head();
    Event event{head.kind, head.align, head.task, head.span, head.ordered, head.tight};
    event.number = unpacker.value(kHasNumber, 0);
    event.points = unpacker.value(kHasPoints, 0.0);
    event.color = unpacker.color(kHasColor);
    event.background = unpacker.color(kHasBackground);
    const std::size_t picture = unpacker.value(kHasPicture, std::size_t{0});
    event.picture = picture > 0 ? pictures_[picture - 1].get() : nullptr;
    event.text = unpacker.text(kHasText);
    event.id = unpacker.text(kHasId);
    event.address = unpacker.text(kHasAddress);
    event.title = unpacker.text(kHasTitle);
    sink.write(event);
  }
}

void EventLog::clear() {
  bytes_.clear();
  pictures_.clear();
  pictureBytes_ = 0;
}

}  // namespace scrivalen::document

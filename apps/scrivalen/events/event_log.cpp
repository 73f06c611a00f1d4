#include "events/event_log.h"

#include "text/utf.h"

#include <cstdint>
#include <cstring>

namespace scrivalen::command {
namespace {

// Precedes the texts of an event; the sizes are in bytes.
struct Header {
  EventKind kind;
  Align align;
  Task task;
  bool header;
  bool ordered;
  bool tight;
  std::int32_t number;
  std::uint32_t textSize;
  std::uint32_t addressSize;
  std::uint32_t titleSize;
};

std::uint32_t appendText(std::string& bytes, std::wstring_view text) {
  const std::size_t start = bytes.size();
  scrivalen::appendUtf8(bytes, text);
  return static_cast<std::uint32_t>(bytes.size() - start);
}

class Reader {
 public:
  explicit Reader(const std::string& bytes) : bytes_(bytes) {}

  bool atEnd() const { return at_ == bytes_.size(); }

  Header header() {
    Header header;
    std::memcpy(&header, bytes_.data() + at_, sizeof header);
    at_ += sizeof header;
    return header;
  }

  std::wstring_view text(std::uint32_t size, std::wstring& storage) {
    storage.clear();
    scrivalen::appendWide(storage, std::string_view(bytes_).substr(at_, size));
    at_ += size;
    return storage;
  }

 private:
  const std::string& bytes_;
  std::size_t at_ = 0;
};

}  // namespace

void EventLog::write(const Event& event) {
  Header header{event.kind, event.align, event.task, event.header, event.ordered, event.tight, event.number, 0, 0, 0};
  const std::size_t start = bytes_.size();
  bytes_.append(sizeof header, '\0');
  header.textSize = appendText(bytes_, event.text);
  header.addressSize = appendText(bytes_, event.address);
  header.titleSize = appendText(bytes_, event.title);
  std::memcpy(bytes_.data() + start, &header, sizeof header);
}

void EventLog::replay(EventSink& sink) const {
  std::wstring text;
  std::wstring address;
  std::wstring title;
  Reader reader(bytes_);
  while (!reader.atEnd()) {
    const Header header = reader.header();
    Event event{header.kind, header.align, header.task, header.header, header.ordered, header.tight, header.number};
    event.text = reader.text(header.textSize, text);
    event.address = reader.text(header.addressSize, address);
    event.title = reader.text(header.titleSize, title);
    sink.write(event);
  }
}

}  // namespace scrivalen::command

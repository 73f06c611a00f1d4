#include "messages.h"

#include "text/utf.h"

#include <new>
#include <utility>

namespace scrivalen::command {
namespace {

constexpr std::string_view kRed = "\x1b[31m";
constexpr std::string_view kYellow = "\x1b[33m";
constexpr std::string_view kUncoloured;
constexpr std::string_view kPlain = "\x1b[0m";
constexpr std::string_view kClearLine = "\r\x1b[K";
constexpr std::chrono::milliseconds kProgressPause{100};

// Collects a message and writes it at once. It allocates no memory, because the message may be that memory ran out. A
// message longer than the buffer is written in several pieces.
class ErrorWriter {
 public:
  explicit ErrorWriter(const Environment& environment) : environment_(environment) {}
  ErrorWriter(const ErrorWriter&) = delete;
  ErrorWriter& operator=(const ErrorWriter&) = delete;
  ~ErrorWriter() { environment_.writeError({bytes_, size_}); }

  ErrorWriter& add(std::string_view text) {
    for (const char c : text) {
      put(c);
    }
    return *this;
  }

  // A file name may contain anything. The message stays on one line and must not send control sequences to the
  // terminal, nor reverse what is read.
  ErrorWriter& addPrintable(std::string_view text) {
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at != end) {
      const char* const begin = at;
      char32_t c = 0;
      if (!scrivalen::nextUtf8(at, end, c)) {
        addBytes({begin, static_cast<std::size_t>(at - begin)});
      } else if (isControl(c) || isDirection(c)) {
        put(' ');
      } else {
        add({begin, static_cast<std::size_t>(at - begin)});
      }
    }
    return *this;
  }

 private:
  static bool isControl(char32_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }

  // The embeddings, overrides and isolates of bidirectional text.
  static bool isDirection(char32_t c) { return (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069); }

  // Bytes that are no UTF-8, which a terminal may take for Latin-1.
  void addBytes(std::string_view bytes) {
    for (const char c : bytes) {
      put(isControl(static_cast<unsigned char>(c)) ? ' ' : c);
    }
  }

  void put(char c) {
    if (size_ == sizeof bytes_) {
      environment_.writeError({bytes_, std::exchange(size_, 0)});
    }
    bytes_[size_++] = c;
  }

  const Environment& environment_;
  std::size_t size_ = 0;
  char bytes_[4096];
};

// NO_COLOR has an effect if it is not empty (no-color.org).
bool wantsColours(const Environment& environment) noexcept {
  try {
    return environment.errorIsTerminal && environment.variable("NO_COLOR").value_or("").empty();
  } catch (const std::bad_alloc&) {
    return false;
  }
}

}  // namespace

Messages::Messages(const Environment& environment)
    : environment_(environment),
      coloured_(wantsColours(environment)),
      lastProgress_(std::chrono::steady_clock::now()) {}

Messages::~Messages() { clearProgress(); }

void Messages::error(std::initializer_list<std::string_view> parts) { line(kRed, "", parts); }

void Messages::warning(std::initializer_list<std::string_view> parts) {
  ++warnings_;
  if (!quiet_) {
    line(kYellow, "warning: ", parts);
  }
}

void Messages::note(std::initializer_list<std::string_view> parts) {
  if (verbose_) {
    line(kUncoloured, "", parts);
  }
}

void Messages::progress(std::string_view text) {
  const auto now = std::chrono::steady_clock::now();
  if (quiet_ || !environment_.errorIsTerminal || now - lastProgress_ < kProgressPause) {
    return;
  }
  lastProgress_ = now;
  progressShown_ = true;
  ErrorWriter(environment_).add(kClearLine).add("scrivalen: ").addPrintable(text);
}

void Messages::line(std::string_view colour, std::string_view kind, std::initializer_list<std::string_view> parts) {
  clearProgress();
  ErrorWriter message(environment_);
  const bool isColoured = coloured_ && !colour.empty();
  message.add(isColoured ? colour : "").add("scrivalen: ").add(kind);
  for (const std::string_view part : parts) {
    message.addPrintable(part);
  }
  message.add(isColoured ? kPlain : "").add("\n");
}

void Messages::clearProgress() {
  if (progressShown_) {
    environment_.writeError(kClearLine);
    progressShown_ = false;
  }
}

}  // namespace scrivalen::command

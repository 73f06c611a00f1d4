#include "messages.h"

namespace scrivalen::command {
namespace {

constexpr std::string_view kRed = "\x1b[31m";
constexpr std::string_view kYellow = "\x1b[33m";
constexpr std::string_view kPlain = "\x1b[0m";
constexpr std::string_view kClearLine = "\r\x1b[K";
constexpr std::chrono::milliseconds kProgressPause{100};

// A name may hold anything; a message stays one line and changes nothing about the terminal.
std::string printable(std::string_view text) {
  std::string result(text);
  for (char& c : result) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) {
      c = ' ';
    }
  }
  return result;
}

}  // namespace

// NO_COLOR counts when it is not empty (no-color.org).
Messages::Messages(const Host& host)
    : host_(host),
      coloured_(host.errorIsTerminal && host.variable("NO_COLOR").value_or("").empty()),
      lastProgress_(std::chrono::steady_clock::now()) {}

Messages::~Messages() { clearProgress(); }

void Messages::error(std::string_view text) { line(kRed, "", text); }

void Messages::warning(std::string_view text) {
  if (!quiet_) {
    line(kYellow, "warning: ", text);
  }
}

void Messages::progress(std::string_view text) {
  const auto now = std::chrono::steady_clock::now();
  if (quiet_ || !host_.errorIsTerminal || now - lastProgress_ < kProgressPause) {
    return;
  }
  lastProgress_ = now;
  progressShown_ = true;
  host_.writeError(std::string(kClearLine) + "scrivalen: " + printable(text));
}

void Messages::line(std::string_view colour, std::string_view kind, std::string_view text) {
  clearProgress();
  std::string message;
  message.append(coloured_ ? colour : "").append("scrivalen: ").append(kind).append(printable(text));
  message.append(coloured_ ? kPlain : "").append("\n");
  host_.writeError(message);
}

void Messages::clearProgress() {
  if (progressShown_) {
    host_.writeError(kClearLine);
    progressShown_ = false;
  }
}

}  // namespace scrivalen::command

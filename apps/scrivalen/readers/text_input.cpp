#include "readers/text_input.h"

#include "errors.h"
#include "readers/utf8_check.h"
#include "system/messages.h"
#include "text/utf.h"
#include "texts.h"

#include <algorithm>
#include <cstring>

namespace scrivalen::command {
namespace {

constexpr std::size_t kChunk = 256 * 1024;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

// Whether a file is a program, a picture or the like, told by its control characters. A damaged text has few of them.
bool isBinary(std::string_view start) {
  constexpr std::size_t kFewest = 16;
  constexpr std::size_t kOneIn = 20;
  static constexpr std::string_view kOfText = "\t\n\r\f\x1B";
  const auto count = static_cast<std::size_t>(std::count_if(start.begin(), start.end(), [](char c) {
    return (static_cast<unsigned char>(c) < 0x20 && kOfText.find(c) == kOfText.npos) || c == 0x7F;
  }));
  return count >= kFewest && count > start.size() / kOneIn;
}

}  // namespace

TextInput::TextInput(const Environment& environment, std::string name, ByteOrderMark mark)
    : environment_(environment), name_(std::move(name)), mark_(mark) {
  bytes_.resize(kChunk);
  if (name_ == "-") {
    return;
  }
  file_ = scrivalen::openForReading(scrivalen::widePath(name_));
  if (!file_) {
    fail();
  }
}

std::string_view TextInput::next() {
  while (fill()) {
    if (encoding_ == Encoding::Unknown) {
      recognizeEncoding();
    }
    const std::string_view text = encoding_ == Encoding::Utf8 ? takeUtf8() : takeUtf16();
    if (!text.empty()) {
      return text;
    }
  }
  return {};
}

std::string TextInput::rest() {
  std::string all;
  for (std::string_view piece = next(); !piece.empty(); piece = next()) {
    all += piece;
  }
  return all;
}

void TextInput::fail() const {
  const std::string reason = lastErrorText();
  if (environment_.wasInterrupted()) {
    throw Interrupted();
  }
  throw InputError("cannot read '" + name_ + "': " + reason);
}

// Moves the remaining bytes to the front and reads more after them, until a byte-order mark can be recognized.
bool TextInput::fill() {
  std::memmove(bytes_.data(), bytes_.data() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  while (!ended_) {
    if (environment_.wasInterrupted()) {
      throw Interrupted();
    }
    char* const space = bytes_.data() + end_;
    const std::size_t size = bytes_.size() - end_;
    const auto count = file_ ? scrivalen::readSome(file_, space, size) : environment_.readInput(space, size);
    if (!count) {
      fail();
    }
    end_ += *count;
    size_ += *count;
    ended_ = *count == 0;
    if (end_ >= kUtf8Mark.size()) {
      break;
    }
  }
  return end_ > 0;
}

void TextInput::recognizeEncoding() {
  const std::string_view start(bytes_.data(), end_);
  std::size_t markSize = 0;
  encoding_ = Encoding::Utf8;
  if (start.starts_with(kUtf8Mark)) {
    markSize = kUtf8Mark.size();
  } else if (start.starts_with("\xFF\xFE")) {
    encoding_ = Encoding::Utf16Little;
    markSize = 2;
  } else if (start.starts_with("\xFE\xFF")) {
    encoding_ = Encoding::Utf16Big;
    markSize = 2;
  }
  begin_ = mark_ == ByteOrderMark::Removed ? markSize : 0;
  if (encoding_ == Encoding::Utf8 && isBinary(start)) {
    throw InputError("'" + name_ + "' is not a text file");
  }
}

std::string_view TextInput::takeUtf8() {
  std::string_view text(bytes_.data() + begin_, end_ - begin_);
  if (!ended_) {
    text.remove_suffix(incompleteSequence(text));
  }
  begin_ += text.size();
  return isCleanUtf8(text) ? text : repaired(text);
}

std::string_view TextInput::repaired(std::string_view text) {
  wide_.clear();
  replaced_ += scrivalen::appendWide(wide_, text);
  for (wchar_t& c : wide_) {
    if (c == L'\0') {
      c = static_cast<wchar_t>(scrivalen::kReplacement);
      ++replaced_;
    }
  }
  converted_.clear();
  scrivalen::appendUtf8(converted_, wide_);
  return converted_;
}

std::string_view TextInput::takeUtf16() {
  const auto unit = [this](std::size_t at) {
    const auto first = static_cast<unsigned char>(bytes_[at]);
    const auto second = static_cast<unsigned char>(bytes_[at + 1]);
    return static_cast<char32_t>(encoding_ == Encoding::Utf16Little ? first | second << 8 : first << 8 | second);
  };
  converted_.clear();
  while (end_ - begin_ >= 2) {
    char32_t c = unit(begin_);
    const bool isPairPossible = scrivalen::isHighSurrogate(c);
    if (isPairPossible && end_ - begin_ < 4 && !ended_) {
      break;
    }
    begin_ += 2;
    if (isPairPossible && end_ - begin_ >= 2 && scrivalen::isLowSurrogate(unit(begin_))) {
      c = scrivalen::fromSurrogates(c, unit(begin_));
      begin_ += 2;
    }
    if (c == 0 || scrivalen::isSurrogate(c)) {
      c = scrivalen::kReplacement;
      ++replaced_;
    }
    char bytes[4];
    converted_.append(bytes, scrivalen::putUtf8(c, bytes));
  }
  if (ended_ && end_ - begin_ == 1) {
    begin_ = end_;
    ++replaced_;
    converted_ += "\xEF\xBF\xBD";
  }
  return converted_;
}

}  // namespace scrivalen::command

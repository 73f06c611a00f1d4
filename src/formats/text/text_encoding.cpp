#include "formats/text/text_encoding.h"

#include "text/utf.h"

#include <algorithm>

namespace scrivalen::text {
namespace {

// The size of the text without the character at its end that another block completes.
std::size_t wholeSize(std::string_view text) {
  constexpr std::size_t kLongest = 4;
  for (std::size_t back = 1; back <= std::min(kLongest, text.size()); ++back) {
    const std::size_t at = text.size() - back;
    if ((static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) {
      return utf8Length(text[at]) > back ? at : text.size();
    }
  }
  return text.size();
}

}  // namespace

bool EncodingSink::take(const char* data, std::size_t size) {
  std::string_view text(data, size);
  if (!cut_.empty()) {
    const std::size_t missing = std::min(size, utf8Length(cut_.front()) - cut_.size());
    cut_.append(text.substr(0, missing));
    text.remove_prefix(missing);
    if (wholeSize(cut_) < cut_.size()) {
      return true;
    }
    encode(cut_);
    cut_.clear();
  }
  const std::size_t whole = wholeSize(text);
  encode(text.substr(0, whole));
  cut_ = text.substr(whole);
  return !out_.hasLostBytes();
}

void EncodingSink::encode(std::string_view utf8) {
  const char* at = utf8.data();
  const char* const end = at + utf8.size();
  while (at != end) {
    const char* const ascii = at;
    at = endOfAscii(at, end);
    putAscii({ascii, static_cast<std::size_t>(at - ascii)});
    while (at != end && static_cast<unsigned char>(*at) >= 0x80) {
      char32_t c = 0;
      put(nextUtf8(at, end, c) ? c : kReplacement);
    }
  }
}

void EncodingSink::putAscii(std::string_view text) {
  if (encoding_ == Encoding::Latin1) {
    out_.write(text.data(), text.size());
    return;
  }
  constexpr std::size_t kMost = OutputBuffer::kBlock / 2;
  while (!text.empty()) {
    const std::size_t size = std::min(text.size(), kMost);
    char* const units = out_.reserve(2 * size);
    for (std::size_t i = 0; i < size; ++i) {
      units[2 * i] = text[i];
      units[2 * i + 1] = 0;
    }
    out_.advance(units + 2 * size);
    text.remove_prefix(size);
  }
}

void EncodingSink::put(char32_t c) {
  if (encoding_ == Encoding::Latin1) {
    const bool isInside = c <= 0xFF;
    out_.put(isInside ? static_cast<char>(static_cast<unsigned char>(c)) : '?');
    replaced_ += isInside ? 0 : 1;
    return;
  }
  const auto putUnit = [this](char32_t unit) {
    const char bytes[] = {static_cast<char>(static_cast<unsigned char>(unit & 0xFF)),
                          static_cast<char>(static_cast<unsigned char>(unit >> 8))};
    out_.write(bytes, sizeof bytes);
  };
  if (unitsOf(c) == 1) {
    putUnit(c);
  } else {
    putUnit(highSurrogate(c));
    putUnit(lowSurrogate(c));
  }
}

}  // namespace scrivalen::text

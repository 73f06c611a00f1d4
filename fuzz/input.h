#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iterator>
#include <string>

namespace scrivalen::fuzz {

/// Turns the fuzzer's bytes into arguments of calls. After the last byte, further bytes are 0 and texts are null.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

  bool empty() const { return at_ == end_; }

  int byte() { return empty() ? 0 : *at_++; }

  /// A number, likely a small or an extreme one.
  int number() {
    const int kind = byte();
    if (kind < 128) {
      return kind - 32;
    }
    int value = 0;
    for (int i = 0; i < 4; ++i) {
      value = static_cast<int>((static_cast<unsigned>(value) << 8) | static_cast<unsigned>(byte()));
    }
    return value;
  }

  /// A text, sometimes null, very long or of special characters. Valid for the lifetime of this input.
  const wchar_t* text() {
    const int kind = byte();
    if (kind == 0) {
      return nullptr;
    }
    std::wstring& text = texts_.emplace_back();
    const int length = kind < 250 ? kind % 24 : kind * 40;
    for (int i = 0; i < length; ++i) {
      text += character();
    }
    return text.c_str();
  }

 private:
  wchar_t character() {
    static constexpr wchar_t kOdd[] = {L'\\', L'{', L'}', L'<', L'&',   L'"',   L'%',   L'\n',  L'\r',
                                       L'\t', L';', L'#', 0x80, 0x20AC, 0x4E2D, 0xD83D, 0xDE00, 0xFFFE};
    const int value = byte();
    return value < 128 ? static_cast<wchar_t>(value == 0 ? L' ' : value)
                       : kOdd[static_cast<std::size_t>(value) % std::size(kOdd)];
  }

  const std::uint8_t* at_;
  const std::uint8_t* end_;
  std::deque<std::wstring> texts_;
};

}  // namespace scrivalen::fuzz

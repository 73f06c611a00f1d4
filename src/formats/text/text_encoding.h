#pragma once

#include "output/output_buffer.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::text {

/// Turns UTF-8 that comes in blocks into another encoding.
class EncodingSink : public ByteSink {
 public:
  enum class Encoding : std::uint8_t { Utf16, Latin1 };

  /// @param out  not owned; gets the encoded text
  EncodingSink(OutputBuffer& out, Encoding encoding) : out_(out), encoding_(encoding) {}

  bool take(const char* data, std::size_t size) override;

  /// How many characters became '?', because the encoding has no others.
  std::uint64_t replaced() const { return replaced_; }

 private:
  void encode(std::string_view utf8);
  void putAscii(std::string_view text);
  void put(char32_t c);

  OutputBuffer& out_;
  Encoding encoding_;
  std::string cut_;  // the beginning of a character at the end of a block
  std::uint64_t replaced_ = 0;
};

}  // namespace scrivalen::text

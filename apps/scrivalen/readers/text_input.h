#pragma once

#include "environment.h"
#include "system/files/files.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// The input as valid UTF-8, whatever it was: a byte-order mark is taken off, UTF-16 with such a mark is converted, and
/// what is no text (ill-formed sequences, NULs) becomes U+FFFD.
class TextInput {
 public:
  /// @param name  a path, or "-" for standard input
  TextInput(const Environment& environment, std::string name);
  TextInput(const TextInput&) = delete;
  TextInput& operator=(const TextInput&) = delete;

  /// The next piece of the text, whole characters only, valid until the next call; empty at the end.
  std::string_view next();
  /// All that is left.
  std::string rest();

  const std::string& name() const { return name_; }

  /// How many U+FFFD stand for something else so far.
  std::size_t replaced() const { return replaced_; }

 private:
  enum class Encoding { Unknown, Utf8, Utf16Little, Utf16Big };

  bool fill();
  [[noreturn]] void fail() const;
  void recognizeEncoding();
  std::string_view takeUtf8();
  std::string_view takeUtf16();
  std::string_view repaired(std::string_view text);

  const Environment& environment_;
  std::string name_;
  scrivalen::File file_;
  Encoding encoding_ = Encoding::Unknown;
  bool ended_ = false;
  std::size_t replaced_ = 0;
  std::string bytes_;      // as read
  std::size_t begin_ = 0;  // of what was not yet taken
  std::size_t end_ = 0;
  std::wstring wide_;
  std::string converted_;
};

}  // namespace scrivalen::command

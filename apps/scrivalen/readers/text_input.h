#pragma once

#include "environment.h"
#include "readers/input_encoding.h"
#include "system/files/files.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::command {

/// Reads the input as valid UTF-8, into which other encodings are converted. A byte-order mark is removed unless it is
/// to be kept; ill-formed sequences and NULs become U+FFFD.
class TextInput {
 public:
  enum class ByteOrderMark { Removed, Kept };

  /// @param name  a path, or "-" for standard input
  TextInput(const Environment& environment, std::string name, InputEncoding encoding = InputEncoding::Default,
            ByteOrderMark mark = ByteOrderMark::Removed);
  TextInput(const TextInput&) = delete;
  TextInput& operator=(const TextInput&) = delete;

  /// Returns the next piece of the text, which never splits a character. Valid until the next call; empty at the end.
  std::string_view next();
  /// Returns the rest of the text.
  std::string rest();

  const std::string& name() const { return name_; }

  /// How many bytes were read so far.
  std::size_t size() const { return size_; }

  /// How many U+FFFD were substituted so far.
  std::size_t replaced() const { return replaced_; }
  /// Whether the input was taken for UTF-8 and is not: it may have an encoding that was not given.
  bool isEncodingDoubtful() const { return isDoubtful_; }

 private:
  bool fill();
  [[noreturn]] void fail() const;
  void recognizeEncoding();
  void requireText(std::string_view start) const;
  std::string_view take();
  std::string_view takeUtf8();
  std::string_view takeUtf16();
  std::string_view takeSingleBytes();
  std::string_view repaired(std::string_view text);

  const Environment& environment_;
  std::string name_;
  ByteOrderMark mark_;
  scrivalen::File file_;
  InputEncoding given_;
  InputEncoding encoding_ = InputEncoding::Default;  // until it is known
  std::optional<SingleByteDecoder> decoder_;
  bool ended_ = false;
  std::size_t size_ = 0;
  std::size_t replaced_ = 0;
  bool isDoubtful_ = false;
  std::string bytes_;      // as read
  std::size_t begin_ = 0;  // of the bytes not yet returned
  std::size_t end_ = 0;
  std::wstring wide_;
  std::string converted_;
};

}  // namespace scrivalen::command

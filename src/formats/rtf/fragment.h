#pragma once

#include "output/output_buffer.h"
#include "scrivalen/output_file.h"
#include "text/loss_counter.h"

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <string_view>

// A document's fragments: each is put together in one place and written once. The classic form has limits that programs
// know; the conforming form escapes its texts and takes any length.
namespace scrivalen::rtf {

inline constexpr std::size_t kFragmentBytes = 4096;
inline constexpr std::size_t kFormattedUnits = 1024;
inline constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

inline constexpr std::string_view kLineBreak = "\\line ";

inline constexpr std::size_t kNumberBytes = std::numeric_limits<std::int64_t>::digits10 + 2;

/// Writes a number's digits; @p out has room for kNumberBytes. @return their end
inline char* putNumber(std::int64_t number, char* out) { return std::to_chars(out, out + kNumberBytes, number).ptr; }

/// Where fragments go. Neither is owned.
struct Output {
  OutputFile* file;                 ///< null: nowhere
  scrivalen::OutputBuffer* buffer;  ///< of a file of the library's own; null: its Write takes the fragments
};

/// The bytes of a fragment that is not written yet, at most kFragmentBytes: in the file's buffer where it has one.
class Fragment {
 public:
  Fragment(const Fragment&) = delete;
  Fragment& operator=(const Fragment&) = delete;

 protected:
  explicit Fragment(const Output& output) : output_(output) { begin(); }

  std::size_t freeBytes() const { return kFragmentBytes - size_; }
  char* end() { return bytes_ + size_; }
  void grow(std::size_t size) { size_ += size; }
  void append(std::string_view bytes) {
    std::memcpy(end(), bytes.data(), bytes.size());
    grow(bytes.size());
  }
  void begin() {
    bytes_ = output_.buffer ? output_.buffer->reserve(kFragmentBytes) : own_;
    size_ = 0;
  }
  void handOver() {
    if (output_.buffer) {
      output_.buffer->advance(end());
    } else if (output_.file && size_ > 0) {
      output_.file->Write(bytes_, size_);
    }
  }

 private:
  const Output output_;
  char* bytes_ = nullptr;
  std::size_t size_ = 0;
  char own_[kFragmentBytes];
};

/// Texts go out as they are, in the code page of the system. A fragment of more than kFragmentBytes is dropped.
class ClassicFragment : public Fragment {
 public:
  /// @param units  the fragment is cut after so many UTF-16 code units
  ClassicFragment(const Output& output, std::size_t units) : Fragment(output), unitsLeft_(units) {}

  ClassicFragment& control(std::string_view words);
  ClassicFragment& number(int value);
  ClassicFragment& text(std::wstring_view text);
  ClassicFragment& bookmark(std::wstring_view name) { return text(name); }
  ClassicFragment& controlText(std::wstring_view words) { return text(words); }

  /// The characters of its texts that are not written as they were given.
  scrivalen::LossCounter loss() const { return isDropped_ ? characters_ : lost_; }
  void write() {
    if (!isDropped_) {
      handOver();
    }
  }

 private:
  void appendOrDrop(std::string_view bytes);
  std::size_t wholeCharacters(std::wstring_view text);
  void countCharacters(std::wstring_view text, std::size_t arriving);

  std::size_t unitsLeft_;
  bool isDropped_ = false;
  scrivalen::LossCounter characters_;  // all of its texts
  scrivalen::LossCounter lost_;        // of them
};

/// Texts are escaped, and characters outside of Windows-1252 are written as Unicode (RTF 1.9, "Unicode RTF"). What
/// exceeds kFragmentBytes is written in several pieces.
class ConformingFragment : public Fragment {
 public:
  explicit ConformingFragment(const Output& output) : Fragment(output) {}

  ConformingFragment& control(std::string_view words);
  ConformingFragment& number(int value);
  ConformingFragment& text(std::wstring_view text);
  /// The field that jumps to a bookmark has its name in double quotes, so a name has none: they become apostrophes.
  ConformingFragment& bookmark(std::wstring_view name);
  /// Control words that a caller hands in, which are not escaped.
  ConformingFragment& controlText(std::wstring_view words);

  const scrivalen::LossCounter& loss() const { return lost_; }
  void write() {
    handOver();
    begin();
  }

 private:
  void appendOrWrite(std::string_view bytes);
  void appendByte(char byte) { appendOrWrite({&byte, 1}); }
  void escapeCharacter(const wchar_t*& at, const wchar_t* end);
  void character(char32_t c);
  void unicode(char32_t unit);

  scrivalen::LossCounter lost_;
};

}  // namespace scrivalen::rtf

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

// A document's fragments: each is assembled in one place and written at once. The classic form has fixed limits that
// programs rely on; the conforming form escapes its texts and takes any length.
namespace scrivalen::rtf {

inline constexpr std::size_t kFragmentBytes = 4096;
inline constexpr std::size_t kFormattedUnits = 1024;
inline constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

inline constexpr std::string_view kLineBreak = "\\line ";

inline constexpr std::size_t kNumberBytes = std::numeric_limits<std::int64_t>::digits10 + 2;

/// Writes a number's digits; @p out must have space for kNumberBytes. @return their end
inline char* putNumber(std::int64_t number, char* out) { return std::to_chars(out, out + kNumberBytes, number).ptr; }

/// The destination of fragments. Neither pointer is owned.
struct Output {
  OutputFile* file;                 ///< null: fragments are discarded
  scrivalen::OutputBuffer* buffer;  ///< the file's, if it is the library's own; null: fragments go to Write
};

/// A fragment that is not written yet, of at most kFragmentBytes: assembled in the file's buffer if it has one.
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

/// Writes texts unescaped, in the system's code page. A fragment of more than kFragmentBytes is dropped.
class ClassicFragment : public Fragment {
 public:
  /// @param units  the fragment is cut after this many UTF-16 code units
  ClassicFragment(const Output& output, std::size_t units) : Fragment(output), unitsLeft_(units) {}

  ClassicFragment& control(std::string_view words);
  ClassicFragment& number(int value);
  ClassicFragment& text(std::wstring_view text);
  ClassicFragment& bookmark(std::wstring_view name) { return text(name); }
  ClassicFragment& controlText(std::wstring_view words) { return text(words); }

  /// The characters of its texts that were lost.
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
  scrivalen::LossCounter characters_;  // of all its texts
  scrivalen::LossCounter lost_;        // those of them that are lost
};

/// Escapes texts, and writes characters outside Windows-1252 as Unicode (RTF 1.9, "Unicode RTF"). A fragment of more
/// than kFragmentBytes is written in several pieces.
class ConformingFragment : public Fragment {
 public:
  explicit ConformingFragment(const Output& output) : Fragment(output) {}

  ConformingFragment& control(std::string_view words);
  ConformingFragment& number(int value);
  ConformingFragment& text(std::wstring_view text);
  /// The field that links to a bookmark has its name in double quotes, so those in a name become apostrophes.
  ConformingFragment& bookmark(std::wstring_view name);
  /// Writes a caller's control words, unescaped.
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

#pragma once

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

// The objects of PDF as text (PDF 1.7, 7.3).
namespace scrivalen::typeset {

void appendInteger(std::string& out, std::int64_t value);
/// A number in thousandths, without trailing zeros.
void appendThousandths(std::string& out, std::int64_t value);
/// The bytes of a string, with the characters escaped that have to be.
void appendEscaped(std::string& out, std::string_view bytes);
/// A string of bytes in parentheses.
void appendString(std::string& out, std::string_view bytes);
/// A text for people: ASCII as it is, any other as UTF-16 with a mark (7.9.2.2).
void appendText(std::string& out, std::string_view utf8);
/// As much of a text as makes a string of so many bytes at most.
std::string_view fittingText(std::string_view utf8, std::size_t bytes);
/// The last digits of a number in hexadecimal.
void appendHex(std::string& out, std::uint64_t value, int digits);
/// A name, without its slash in @p name.
void appendName(std::string& out, std::string_view name);
void appendReference(std::string& out, int number);
/// The bytes of a reference to an object, at most.
inline constexpr std::size_t kMostOfReference = 16;

/// Appends a few numbers and operators, which are written where they stay.
class Operators {
 public:
  /// @param most  the bytes that are appended, at most: by default four numbers, and what is between them
  explicit Operators(std::string& out, std::size_t most = 96) : out_(out), size_(out.size()) {
    out.resize(size_ + most);
  }
  Operators(const Operators&) = delete;
  Operators& operator=(const Operators&) = delete;
  ~Operators() { out_.resize(size_); }

  template <typename Integer>
  Operators& number(Integer value) {
    char* const at = out_.data() + size_;
    size_ += static_cast<std::size_t>(std::to_chars(at, out_.data() + out_.size(), value).ptr - at);
    return *this;
  }
  Operators& add(std::string_view operators) {
    std::copy(operators.begin(), operators.end(), out_.data() + size_);
    size_ += operators.size();
    return *this;
  }
  Operators& removeLast() {
    --size_;
    return *this;
  }
  Operators& reference(int object) { return number(object).add(" 0 R"); }

 private:
  std::string& out_;
  std::size_t size_;
};

/// A date in UTC. @param time  seconds since 1970-01-01
void appendDate(std::string& out, std::int64_t time);

}  // namespace scrivalen::typeset

#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace scrivalen {

/// One value for FMT::Format.
struct FormatValue {
  enum class Kind { Text, Signed, Unsigned };

  FormatValue(const wchar_t* value) : kind(Kind::Text), text(value ? value : L"") {}
  FormatValue(std::wstring_view value) : kind(Kind::Text), text(value) {}
  FormatValue(const std::wstring& value) : kind(Kind::Text), text(value) {}
  template <std::signed_integral T>
  FormatValue(T value)
      : kind(Kind::Signed),
        number(static_cast<std::uint64_t>(static_cast<std::int64_t>(value))),
        isLong(sizeof(T) > sizeof(std::int32_t)) {}
  template <std::unsigned_integral T>
  FormatValue(T value) : kind(Kind::Unsigned), number(value) {}
  FormatValue(char32_t value) : kind(Kind::Unsigned), number(value) {}

  Kind kind;
  std::wstring_view text;
  std::uint64_t number = 0;
  bool isLong = false;  ///< whether a signed number has 64 bits; if not, %u and %x print it with 32
};

/// printf-style formatting into wide text, the same on every platform and in every locale: %s and %c take wide text.
///
/// It supports %s %c %d %i %u %x %X and %%, with the flags "-", "0" and "+", a width and a precision, all with their
/// printf meaning; width and precision are limited to 4,096. Size modifiers (h, l, ll, I64) are ignored: a number has
/// the size of its own type, and %d prints a large unsigned number as is. A conversion that is unknown or has no
/// matching value is copied unchanged. A null text is empty.
struct FMT {
  template <typename... Values>
  static std::wstring Format(std::wstring_view format, const Values&... values) {
    if constexpr (sizeof...(Values) == 0) {
      return format_(format, {});
    } else {
      const FormatValue list[] = {FormatValue(values)...};
      return format_(format, list);
    }
  }

 private:
  static std::wstring format_(std::wstring_view format, std::span<const FormatValue> values);
};

}  // namespace scrivalen

using scrivalen::FMT;

#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::document {

/// How numbers are shown: the setting "numbers".
struct NumberStyle {
  std::string_view point = ".";
  std::string_view group = "";  ///< between groups of three digits; empty: none

  /// The style whose sample, such as "1,234.5", is given; nothing for an unknown one.
  static std::optional<NumberStyle> of(std::string_view sample);
};

/// How dates are shown: the setting "dates". An order of yyyy, mm (or m) and dd (or d) with one or two of the
/// characters "-./, " between them, and perhaps a full stop at the end.
class DateStyle {
 public:
  DateStyle() = default;
  static std::optional<DateStyle> of(std::string_view pattern);
  std::string_view pattern() const { return pattern_; }

 private:
  std::string pattern_ = "yyyy-mm-dd";
};

/// How the values of a column are shown, over "numbers" and "dates".
class ValueFormat {
 public:
  ValueFormat() = default;
  /// @param decimals  0: as many as a number needs; -1: none; else their number, up to 15
  explicit ValueFormat(int decimals) : decimals_(decimals) {}
  /// @param pattern  as a spreadsheet has it: "0", "0.00", "#,##0.00", "0.0%" with up to 15 decimals; a date such as
  ///                 "yyyy-mm"; a time, "hh:mm" or "hh:mm:ss"; a date, a blank and a time
  /// @return nothing for a pattern that is none of these
  static std::optional<ValueFormat> of(std::string_view pattern);

  int decimals() const { return decimals_; }
  /// The pattern as given; empty without one.
  std::string_view pattern() const { return pattern_; }

 private:
  friend class Values;

  int decimals_ = 0;
  bool grouped_ = false;
  bool percent_ = false;
  bool isDate_ = false;
  std::string pattern_;
};

/// Writes values as text, whatever the locale: the plain form, or as settings and column say. Each function writes to
/// @p out and returns the end; kLongest bytes are enough.
class Values {
 public:
  static constexpr std::size_t kLongest = 600;

  Values(const NumberStyle& numbers, const DateStyle& dates) : numbers_(numbers), dates_(dates) {}

  /// Shortest round trip, or the exact value rounded half to even. Without decimals or a pattern, numbers from 1e21 on
  /// and below 1e-7 have an exponent, as in 1.5e+300. Zero has no sign. Not finite: nothing is written.
  char* number(char* out, double value, const ValueFormat& format) const;
  /// The number digits / 10^decimals with just so many decimals, or with those of its column.
  /// @param decimals  1 to 15
  char* decimal(char* out, std::int64_t digits, int decimals, const ValueFormat& format) const;
  /// Decimals are zeros: as many as the column has.
  char* integer(char* out, std::int64_t value, const ValueFormat& format) const;
  /// Years have at least four digits; year 0 is 1 BC, and a minus comes before those that precede it.
  /// @param days  since 1970-01-01, in the proleptic Gregorian calendar
  char* date(char* out, std::int32_t days, const ValueFormat& format) const;
  /// @param seconds  since 1970-01-01 00:00
  char* time(char* out, std::int64_t seconds, const ValueFormat& format) const;
  static char* boolean(char* out, bool value);

 private:
  std::string_view groupOf(const ValueFormat& format) const;

  NumberStyle numbers_;
  DateStyle dates_;
};

/// The double nearest to digits / 10^decimals; of more than 15 digits, one beside it.
/// @param decimals  0 to 15
double decimalValue(std::int64_t digits, int decimals);

/// Whether a text reads as a plain number, so that its column may be aligned as one: an optional minus, digits without
/// grouping or leading zeros, an optional fraction.
bool isPlainNumber(std::string_view text);
/// Whether a text is a date in the form yyyy-mm-dd.
bool isIsoDate(std::string_view text);

}  // namespace scrivalen::document

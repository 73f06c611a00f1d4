#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

// Texts that are values: whoever shows the value in its plain form shows the text again, letter for letter.
namespace scrivalen {

/// The number digits / 10^decimals, shown with as many decimals.
struct DecimalNumber {
  std::int64_t digits = 0;
  int decimals = 0;

  friend constexpr bool operator==(const DecimalNumber&, const DecimalNumber&) = default;
};

/// The number that a text is: an optional minus, up to 15 digits without a leading zero, and perhaps a point and up to
/// 9 digits; at most 15 digits count, so that a double has them all. Nothing for any other text, and for minus zero.
std::optional<DecimalNumber> plainNumber(std::string_view text);

/// The days since 1970-01-01 of a date "yyyy-mm-dd" from 1900-03-01 on: spreadsheets count other days before it.
std::optional<std::int32_t> plainDate(std::string_view text);

}  // namespace scrivalen

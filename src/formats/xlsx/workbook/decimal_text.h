#pragma once

#include <string>

namespace scrivalen::xlsx {

/// A number with just so many decimals, rounded half up, whatever the locale.
/// @param value     not negative, and less than a billion
/// @param decimals  1 to 4
std::string decimalText(double value, int decimals);

/// The same without zeros at the end of the decimals.
std::string shortDecimalText(double value, int decimals);

}  // namespace scrivalen::xlsx

#include "formats/xlsx/workbook/decimal_text.h"

#include <cmath>
#include <cstddef>

namespace scrivalen::xlsx {

std::string decimalText(double value, int decimals) {
  constexpr double kScales[] = {1, 10, 100, 1000, 10000};
  std::string digits = std::to_string(std::llround(value * kScales[decimals]));
  const auto places = static_cast<std::size_t>(decimals);
  digits.insert(0, digits.size() <= places ? places + 1 - digits.size() : 0, '0');
  return digits.insert(digits.size() - places, 1, '.');
}

std::string shortDecimalText(double value, int decimals) {
  std::string text = decimalText(value, decimals);
  text.erase(text.find_last_not_of('0') + 1);
  return text.ends_with('.') ? text.substr(0, text.size() - 1) : text;
}

}  // namespace scrivalen::xlsx

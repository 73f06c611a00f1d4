#pragma once

#include <cstdint>
#include <string_view>

namespace scrivalen::document {

/// How a text reads to a person, whatever the language, so that a column of amounts can be aligned as one.
enum class NumberText : std::uint8_t {
  Other,        ///< neither of these: words, dates, times, versions, telephone numbers, ids such as "007"
  Number,       ///< "-1,234.50", "1 234,5", "12 %", "$5", "1.5e-9", "(3.00)"
  Perhaps,      ///< a number beside others, but a label or a telephone number by itself: "(3)", "612 345 678"
  Placeholder,  ///< what stands for a number that is missing: "-", "n/a"
};

/// @param utf8  clean
NumberText numberTextOf(std::string_view utf8);

}  // namespace scrivalen::document

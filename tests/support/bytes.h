#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace scrivalen::test {

/// Compares long contents; a failure shows them from the first difference on, with its line.
testing::AssertionResult areSameBytes(std::string_view expected, std::string_view actual);

/// The bytes as UTF-8 when they are UTF-16, little-endian, with a byte-order mark; else fails the test.
std::string fromMarkedUtf16(std::string_view bytes);

/// One UTF-16 code unit or, where wide characters are larger, one code point.
std::wstring wideUnit(unsigned value);

/// U+1F600 as this platform's wide text has it: one character or two surrogates.
std::wstring grin();

/// @p count times the letter x.
std::wstring longText(std::size_t count);

}  // namespace scrivalen::test

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace scrivalen::test {

/// Compares long contents. A failure shows both from the first difference on, with its line.
testing::AssertionResult areSameBytes(std::string_view expected, std::string_view actual);

/// Converts UTF-16LE with a byte order mark to UTF-8. Fails the test for other bytes.
std::string fromMarkedUtf16(std::string_view bytes);

/// One UTF-16 code unit or, where wide characters are larger, one code point.
std::wstring wideUnit(unsigned value);

/// U+1F600 in this platform's wide text: one character or two surrogates.
std::wstring grin();

/// @p count times the letter x.
std::wstring longText(std::size_t count);

}  // namespace scrivalen::test

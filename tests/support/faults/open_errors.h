#pragma once

#include <string>

namespace scrivalen::test {

/// The text that GetError returns for a path that cannot be opened for writing. Fails the test when it can be opened.
std::wstring openingError(const std::wstring& path);

/// The same for reading.
std::wstring readingError(const std::wstring& path);

}  // namespace scrivalen::test

#pragma once

#include <string>

namespace scrivalen::test {

/// What GetError says of a path that cannot be opened for writing now; fails the test when it can be.
std::wstring openingError(const std::wstring& path);

/// The same of a path that cannot be opened for reading now.
std::wstring readingError(const std::wstring& path);

}  // namespace scrivalen::test

#pragma once

#include <string>
#include <string_view>

namespace scrivalen::test {

/// The text that was compressed in the zlib format. Fails the test where anything is wrong with it, bytes after its end
/// included.
std::string inflated(std::string_view compressed);

}  // namespace scrivalen::test

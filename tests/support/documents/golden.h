#pragma once

#include <string>
#include <string_view>

namespace scrivalen::test {

/// The bytes of an expected document.
/// @param path  relative to the golden folder, with slashes
std::string golden(std::string_view path);

}  // namespace scrivalen::test

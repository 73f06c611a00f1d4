#pragma once

#include <string>

namespace scrivalen::bench {

/// Compares two files byte by byte.
/// @return where they differ, or why they cannot be read; empty when they are the same
std::string difference(const std::string& file, const std::string& other);

}  // namespace scrivalen::bench

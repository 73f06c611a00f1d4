#pragma once

#include <cstdint>
#include <string_view>

namespace scrivalen {

/// The CRC-32 of bytes (ISO 3309), as archives and PNG have it.
/// @param before  the CRC-32 of the bytes before them
std::uint32_t crc32Of(std::string_view bytes, std::uint32_t before = 0);

}  // namespace scrivalen

#pragma once

#include <scrivalen/export.h>

#include <string>
#include <string_view>

/// Conversions between UTF-8 and the wide text of the interface: UTF-16 code units on Windows, code points on Linux.
/// They throw nothing: when memory runs out, this is logged and the result is empty.
namespace scrivalen {

/// @param text  UTF-8; every maximal ill-formed sequence (Unicode 15, 3.9) becomes one U+FFFD
SCRIVALEN_API std::wstring FromUtf8(std::string_view text);

/// @param text  wide text; a surrogate pair becomes its character on both platforms, a lone surrogate U+FFFD
SCRIVALEN_API std::string ToUtf8(std::wstring_view text);

}  // namespace scrivalen

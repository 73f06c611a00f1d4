#pragma once

#include <string>
#include <string_view>

namespace scrivalen {

/// Whether an address begins with a scheme (RFC 3986, 3.1). A single letter is a drive letter instead.
bool hasScheme(std::wstring_view address);

/// An address in the ASCII characters that a URL may have (WHATWG URL, 4.3): the bytes of any other character in UTF-8
/// become "%XX". A percent sign is taken to encode already.
std::string asciiAddress(std::wstring_view address);

}  // namespace scrivalen

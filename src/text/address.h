#pragma once

#include <string>
#include <string_view>

namespace scrivalen {

/// Whether an address begins with a scheme (RFC 3986, 3.1). A single letter is a drive letter instead.
bool hasScheme(std::wstring_view address);

/// An address in the ASCII characters that a URL may have (WHATWG URL, 4.3): the bytes of any other character in UTF-8
/// become "%XX". A percent sign is taken to encode already.
std::string asciiAddress(std::wstring_view address);

enum class AddressUse { Link, Image };

/// Whether following an address may run a script, a macro or a program that it holds or names, such as javascript:,
/// macro: and ms-msdt:; also data:, except in an image. The scheme is recognized as browsers do, in any case and with
/// blanks and control characters around or inside it.
bool runsProgram(std::wstring_view address, AddressUse use);
/// The same for UTF-8.
bool runsProgram(std::string_view address, AddressUse use);

}  // namespace scrivalen

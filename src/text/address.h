#pragma once

#include <string_view>

namespace scrivalen {

/// Whether an address begins with a scheme (RFC 3986, 3.1). A single letter is a drive.
bool hasScheme(std::wstring_view address);

}  // namespace scrivalen

#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace scrivalen::formats {

/// Whether a text is the name of an element (XML 1.0, 2.3). One with a colon is not: its prefix would have to be
/// declared (Namespaces in XML 1.0, 5), and no report can do that.
bool isXmlName(std::wstring_view text);

/// Hands over the nearest name, piece by piece: what no name may have becomes "_", and so does an empty text; a text
/// that begins with what no name begins with has "_" before it.
void mendXmlName(std::wstring_view text, const std::function<void(std::wstring_view)>& put);

/// The nearest name as a whole.
std::wstring mendedXmlName(std::wstring_view text);

}  // namespace scrivalen::formats

#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace scrivalen::formats {

/// Whether a text is a valid element name (XML 1.0, 2.3). One with a colon is not: its prefix would have to be declared
/// (Namespaces in XML 1.0, 5), and no report can do that.
bool isXmlName(std::wstring_view text);

/// Passes the nearest valid name to @p put, piece by piece: an invalid character or an empty text becomes "_", and a
/// character that may not begin a name gets "_" before it if it is the first.
void repairXmlName(std::wstring_view text, const std::function<void(std::wstring_view)>& put);

/// The nearest valid name.
std::wstring repairedXmlName(std::wstring_view text);

}  // namespace scrivalen::formats

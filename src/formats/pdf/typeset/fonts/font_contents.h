#pragma once

#include <string>

namespace scrivalen::typeset {

/// The contents of a font's file. @param reason  set to why there are none, else empty
std::string readFontFile(const std::wstring& path, std::string& reason);

}  // namespace scrivalen::typeset

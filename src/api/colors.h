#pragma once

#include "api/call.h"
#include "text/colors.h"

namespace scrivalen::api {

inline constexpr std::string_view kUnknownAlignment = "an alignment is 0 to 4";

/// Reads a host's colour; a null or empty one is none. @return false for an unknown one
inline bool readColor(const char* text, std::optional<Rgb>& result) {
  result = colorOf(textOf(text));
  return result || textOf(text).empty();
}

inline std::string unknownColor(const char* text) { return "the colour " + quoted(textOf(text)) + " is unknown"; }

}  // namespace scrivalen::api

#pragma once

#include "document/model/event.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {

enum class Script : std::uint8_t { Normal, Superscript, Subscript };

/// The font of code.
inline constexpr std::string_view kMonoFont = "Courier New";

/// How text looks where it differs from the style of its paragraph.
struct RunStyle {
  bool bold = false;
  bool italic = false;
  bool code = false;
  bool deleted = false;
  bool underlined = false;
  bool link = false;
  Script script = Script::Normal;
  int halfPoints = 0;  ///< 0: the paragraph's
  std::optional<Rgb> color = std::nullopt;
  std::optional<Rgb> background = std::nullopt;
  std::string language = {};  ///< its tag; empty: the document's
};

/// The properties of a run (ECMA-376, 17.3.2.28), in the order of the schema; empty if there are none.
std::string runProperties(const RunStyle& style, bool isRightToLeft);

/// The element of the font of a text in any script. The name is an attribute's value already.
std::string fontsElement(std::string_view font);

/// A colour as the attributes have it: "0B5CAD".
std::string colorValue(Rgb color);

/// A language as word processors know it: one without a region has its usual one where they need it. Empty for what
/// is no tag (BCP 47), or longer than they take.
std::string_view languageValue(std::string_view tag);

/// The element of the language of a text in any script; empty where the language's value is.
std::string languageElement(std::string_view tag);

}  // namespace scrivalen::document::docx

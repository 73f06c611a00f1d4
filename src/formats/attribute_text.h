#pragma once

#include "document/model/table.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen {

/// A width as a host gives it.
struct ColumnWidth {
  enum class Unit : std::uint8_t { None, Percent, Points };

  Unit unit = Unit::None;
  double value = 0;
};

/// What an attribute text says, as far as documents show it.
struct Attributes {
  document::Align align = document::Align::Auto;
  std::optional<Rgb> color;
  std::optional<Rgb> background;
  bool isBold = false;
  bool isItalic = false;
  int span = 1;
  ColumnWidth width;
  document::ValueType type = document::ValueType::Auto;
  std::string id;
};

/// Reads an attribute text of the classic interface: attributes as in HTML, or colours as in RTF. Of the attributes,
/// style (a few properties of CSS), align, width, colspan, bgcolor, data-type and id count. What is neither known nor
/// valid is ignored.
/// @param text        UTF-8
/// @param attributes  keeps what the text does not say
void readAttributes(std::string_view text, Attributes& attributes);

/// Reads "background" or "text;background".
/// @return false for a colour that is unknown; the other one counts all the same
bool readColors(std::string_view text, Attributes& attributes);

}  // namespace scrivalen

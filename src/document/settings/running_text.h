#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

class FormatSettings;

enum class RunningField : std::uint8_t { None, Page, Pages, Title, Date, Section };

/// A piece of a header or footer: a field, or a text.
struct RunningPiece {
  RunningField field;
  std::string_view text;  ///< of a piece that is no field
};

/// What is on the left, in the middle and on the right.
using RunningText = std::array<std::vector<RunningPiece>, 3>;

/// Divides the setting "header" or "footer", as in "{title}||{page} / {pages}". What is no field stays as it is.
/// @param setting  must outlive the result
RunningText runningTextOf(std::string_view setting);

/// The date that a document shows: the setting "date", else that of the clock as "dates" says.
std::string shownDate(const FormatSettings& settings);

}  // namespace scrivalen::document

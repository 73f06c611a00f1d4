#pragma once

#include "document/settings/running_text.h"
#include "formats/pdf/typeset/pages/short_text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::typeset {

/// The left, middle or right part of a header or footer as one page shows it.
struct RunningPart {
  struct Piece {
    document::RunningField field = document::RunningField::None;
    std::string text;  ///< what the page shows; of the number of pages: what is shown until it is known
    bool isCut = false;

    bool isNumber() const { return field == document::RunningField::Page || field == document::RunningField::Pages; }
  };

  std::vector<Piece> pieces;

  bool isEmpty() const { return pieces.empty(); }
  std::string text() const;
  /// Cuts its texts, not its numbers, until it is no wider, or as far as possible.
  void shorten(Length width, const TextStyle& style, Shaper& shaper);
};

/// The end of a text as an ellipsis, so that no more than a number of bytes is left.
std::string cutToBytes(std::string_view text, std::size_t most);

}  // namespace scrivalen::typeset

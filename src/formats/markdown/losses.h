#pragma once

#include "document/model/warnings.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen::markdown {

/// What Markdown cannot say.
enum class Loss : std::uint8_t {
  Underlined,
  Superscript,
  Subscript,
  Colors,
  Sizes,
  Languages,
  Aligns,
  PageBreaks,
  Ids,
  Anchors,
  Addresses,
  HeaderRows,
  HeaderCells,
  Spans,
  CellAligns,
  CellColors
};

/// Counts what is left out, for one warning of each kind.
class Losses {
 public:
  void count(Loss loss) { ++counts_[static_cast<std::size_t>(loss)]; }

  void report(document::OutputWarnings& warnings) const {
    for (std::size_t i = 0; i < counts_.size(); ++i) {
      if (counts_[i] > 0) {
        warnings.add(document::WarningCode::SomethingLeftOut, kMessages[i], counts_[i]);
      }
    }
  }

 private:
  // In the order of Loss.
  static constexpr std::string_view kMessages[] = {
      "underlining, which Markdown has no mark for",
      "superscripts, which became plain text",
      "subscripts, which became plain text",
      "colours of text",
      "sizes of text",
      "languages of text",
      "alignments of paragraphs and headings",
      "page breaks",
      "ids of headings that are not made from their texts are left out; links to them lead nowhere",
      "anchors",
      "the address of a link that may run a program",
      "header rows after the first, which became rows of data",
      "header cells outside header rows, which became plain cells",
      "cells that span columns, which became one cell and empty ones",
      "alignments of single cells",
      "colours of cells"};

  std::array<std::uint64_t, std::size(kMessages)> counts_ = {};
};

}  // namespace scrivalen::markdown

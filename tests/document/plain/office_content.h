#pragma once

#include "api/api_support.h"
#include "support/documents/pictures.h"

#include <cstddef>
#include <string>

namespace scrivalen::test {

/// Words that can hardly be compressed, the same ones for the same state.
inline std::string randomWords(unsigned& state, std::size_t letters) {
  std::string text;
  for (std::size_t i = 0; i < letters; ++i) {
    state = state * 1103515245 + 12345;
    text.push_back(i % 8 == 7 ? ' ' : static_cast<char>('!' + (state >> 16) % 94));
  }
  return text;
}

/// Writes what makes the archive of a spreadsheet or Word document long: sections, rows and pictures.
/// @param sections  each takes about 12 KiB
inline scrivalen_status writeMuch(scrivalen_document* document, int sections) {
  scrivalen_status first = SCRIVALEN_OK;
  const auto note = [&first](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
  unsigned state = 1;
  for (int section = 0; section < sections; ++section) {
    note(scrivalen_begin_section(document, ("Section " + std::to_string(section)).c_str(), nullptr));
    // A chunk that readers skip makes the picture heavy, and unlike the others.
    const std::string picture = greyPng(3, 3, pngChunk("teSt", randomWords(state, 4000)));
    note(scrivalen_image(document, picture.data(), picture.size(), "grey", 0));
    note(scrivalen_begin_table(document, nullptr, 0, nullptr));
    for (int row = 0; row < 40; ++row) {
      note(scrivalen_begin_row(document, row == 0));
      note(scrivalen_cell(document, randomWords(state, 200).c_str(), kNul));
      note(scrivalen_cell_integer(document, row));
      note(scrivalen_end(document));
    }
    note(scrivalen_end(document));
    note(scrivalen_end(document));
  }
  return first;
}

}  // namespace scrivalen::test

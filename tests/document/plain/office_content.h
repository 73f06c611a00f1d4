#pragma once

#include "api/api_support.h"
#include "support/documents/pictures.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

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

/// What a section of a long document has.
struct OfficeSection {
  std::string name;
  std::string picture;
  std::vector<std::string> cells;
};

/// The sections are made once, so that writing them takes no memory of the test's own.
/// @param count  at most 100
inline std::span<const OfficeSection> officeSections(std::size_t count) {
  static const std::vector<OfficeSection> all = [] {
    unsigned state = 1;
    std::vector<OfficeSection> sections(100);
    for (OfficeSection& section : sections) {
      section.name = "Section " + std::to_string(&section - sections.data());
      // A chunk that readers skip makes the picture heavy, and unlike the others.
      section.picture = greyPng(3, 3, pngChunk("teSt", randomWords(state, 4000)));
      section.cells.resize(40);
      for (std::string& cell : section.cells) {
        cell = randomWords(state, 200);
      }
    }
    return sections;
  }();
  return std::span(all).first(count);
}

/// Writes a small document with every kind of content: two sections, which the header names, a picture, a numbered
/// page.
inline scrivalen_status writeEveryKind(scrivalen_document* document) {
  scrivalen_status first = SCRIVALEN_OK;
  const auto note = [&first](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
  note(scrivalen_set(document, "title", "A title that is longer than what a string holds in itself"));
  note(scrivalen_set(document, "header", "{title}||{section}"));
  note(scrivalen_set(document, "footer", "Page {page} of {pages}"));
  note(writeContent(document));
  note(scrivalen_begin_section(document, "Second", nullptr));
  note(scrivalen_paragraph(document, "The last words.", kNul));
  note(scrivalen_end(document));
  return first;
}

/// Writes what makes the archive of a spreadsheet or Word document long: sections, rows and pictures.
/// @param sections  at most 100; each takes about 12 KiB
inline scrivalen_status writeMuch(scrivalen_document* document, std::size_t sections) {
  scrivalen_status first = SCRIVALEN_OK;
  const auto note = [&first](scrivalen_status status) { first = first == SCRIVALEN_OK ? status : first; };
  for (const OfficeSection& section : officeSections(sections)) {
    note(scrivalen_begin_section(document, section.name.c_str(), nullptr));
    note(scrivalen_image(document, section.picture.data(), section.picture.size(), "grey", 0));
    note(scrivalen_begin_table(document, nullptr, 0, nullptr));
    for (const std::string& cell : section.cells) {
      note(scrivalen_begin_row(document, &cell == section.cells.data()));
      note(scrivalen_cell(document, cell.c_str(), kNul));
      note(scrivalen_cell_integer(document, 42));
      note(scrivalen_end(document));
    }
    note(scrivalen_end(document));
    note(scrivalen_end(document));
  }
  return first;
}

}  // namespace scrivalen::test

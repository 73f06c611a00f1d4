#pragma once

#include "output/output_buffer.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::text {

/// Places lines in nested containers, such as quotes and list items: what each line begins with, and the blank lines
/// between blocks. Nothing is written for a block or container without lines.
class TextLines {
 public:
  /// @param out      not owned
  /// @param columns  of a line
  TextLines(OutputBuffer& out, std::size_t columns) : out_(out), columns_(columns), containers_(1) {}

  /// Begins a container. Where those that are open take half of a line, it is not indented.
  /// @param first    what its first line begins with, after what the lines around it begin with
  /// @param further  what its other lines begin with
  void open(std::string_view first, std::string_view further);
  void close();
  bool hasLines() const { return containers_.back().hasLines; }

  /// Begins a block of the innermost container.
  /// @param isSeparated  whether a blank line comes before it, unless it is the first
  void beginBlock(bool isSeparated);

  /// The columns that a line has in the innermost container. There are always some: deep nesting makes lines longer.
  std::size_t columns() const;

  /// Writes the blank line that is due before the next line. @return what that line begins with, for the caller to
  /// write; valid until the next call
  std::string_view beginLine();
  /// Writes a line, or an empty one. @param indent  in columns
  void write(std::string_view text, std::size_t indent = 0);
  /// Writes the beginning of a line that is too long to be held. The next line that is written is the rest of it.
  void writePart(std::string_view text, std::size_t indent = 0);
  /// Ends the line if a part of it has been written.
  void endPart();

 private:
  void writeBlanks(std::size_t count);

  static constexpr std::size_t kNoBlankLine = static_cast<std::size_t>(-1);

  struct Container {
    std::size_t prefixSize = 0;  // of what lines outside of it begin with
    std::size_t firstSize = 0;
    bool hasLines = false;
  };

  OutputBuffer& out_;
  std::size_t columns_;
  std::string prefix_;
  std::string first_;  // instead of prefix_ for the next line, if isFirst_
  bool isFirst_ = false;
  std::size_t blankLine_ = kNoBlankLine;  // how much of prefix_ the blank line has
  bool isLineOpen_ = false;
  std::vector<Container> containers_;
};

}  // namespace scrivalen::text

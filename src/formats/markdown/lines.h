#pragma once

#include "output/output_buffer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::markdown {

/// A kind of block, as far as it decides what may follow it.
enum class Block : std::uint8_t { None, Text, Heading, Quote, List, Code, Table, Other };

/// The lines of a Markdown file: what is at the beginning of each, as its quotes and items ask for it, and what is
/// between two blocks. That is a blank line, but not in tight items, which a blank line would loosen: there it is
/// nothing, or a comment where the blocks would become one.
class Lines {
 public:
  /// @param out  not owned; must outlive this object
  explicit Lines(OutputBuffer& out) : out_(out) { containers_.emplace_back(); }

  /// Separates a block from the one before it. Its first line is next.
  void startBlock(Block block);
  /// Writes the beginning of a line.
  void startLine();
  /// The same for a line without content of its own: blanks at its end are left out.
  void writeEmptyLine();
  void endLine() { out_.put('\n'); }
  /// Writes lines as they are, each after the beginning that its container asks for; the last one may end later.
  void writeLines(std::string_view text);

  void beginQuote();
  void endQuote();
  /// @param first  the number of the first item, if ordered
  void beginList(bool ordered, int first, bool tight);
  void endList() { lists_.pop_back(); }
  void beginItem();
  void endItem();
  bool isInItem() const { return containers_.back().isItem; }
  /// Whether anything is in the innermost container.
  bool isContainerEmpty() const { return containers_.back().last == Block::None; }

 private:
  // What holds blocks.
  struct Container {
    bool isItem = false;
    bool isTight = false;
    Block last = Block::None;
    char lastMarker = 0;         // if the last block is a list
    std::size_t prefixSize = 0;  // of what is around it
  };

  struct List {
    bool tight;
    char marker;  // a bullet, or what follows a number
    std::uint32_t number;
    bool isBegun;
  };

  bool isOrdered(char marker) const { return marker == '.' || marker == ')'; }
  void separate(Block next);
  bool mergesInTightItem(Block last, Block next) const;
  void writeComment();
  void open(std::string_view first, std::string_view further, bool isItem, bool isTight);
  void write(std::string_view text) { out_.write(text.data(), text.size()); }

  OutputBuffer& out_;
  std::string prefix_;  // of every line in the innermost container
  std::string first_;   // of the next line instead, if not empty: it has the markers of items
  std::vector<Container> containers_;
  std::vector<List> lists_;
};

}  // namespace scrivalen::markdown

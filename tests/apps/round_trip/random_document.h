#pragma once

#include "document/document.h"
#include "round_trip/outline.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace scrivalen::test {

/// Fills a document from a seed with what Markdown can say, and knows what its outline is. Its texts are full of
/// characters that could be markup.
class RandomDocument {
 public:
  RandomDocument(std::uint32_t seed, document::Document& document) : random_(seed), document_(document) {}

  /// @return the outline
  std::string fill();

 private:
  std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(random_() % end); }
  bool isChosen(std::uint32_t oneIn) { return below(oneIn) == 0; }
  const char* randomToken();
  std::string randomText(std::uint32_t most);

  void addTextOf(const std::string& name, bool mayBeEmpty);
  void addInline(int depth, Outline::Style style);
  void addText(const Outline::Style& style);
  void addLink(int depth, const Outline::Style& style);
  void addCode(const Outline::Style& style);
  void addPicture(const Outline::Style& style);

  void addBlock(int depth);
  void addRule();
  void addHeading();
  void addParagraph();
  void addQuote(int depth);
  void addList(int depth, bool isTight);
  bool addTask();
  bool addItem(int depth, bool isTight);
  void addCodeBlock();
  void addTable();

  std::mt19937 random_;
  document::Document& document_;
  Outline outline_;
};

}  // namespace scrivalen::test

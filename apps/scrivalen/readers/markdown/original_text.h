#pragma once

#include "readers/markdown/copies/masked_tildes.h"
#include "readers/markdown/markdown_parser.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Passes on what the parser finds, with the text as it was written: single tildes are characters, and code keeps its
/// tabs.
class OriginalText final : public MarkdownHandler {
 public:
  /// Both must outlive this object.
  OriginalText(std::string_view original, MarkdownHandler& handler)
      : original_(original), tildes_(original), handler_(handler) {}

  std::string_view toBeParsed() const { return tildes_.text(); }

  void enterBlock(MD_BLOCKTYPE type, void* detail) override;
  void leaveBlock(MD_BLOCKTYPE type, void* detail) override;
  void enterSpan(MD_SPANTYPE type, void* detail) override;
  void leaveSpan(MD_SPANTYPE type) override { handler_.leaveSpan(type); }
  void text(MD_TEXTTYPE type, std::string_view text) override;

 private:
  template <class Detail>
  Detail restored(const void* detail, MD_ATTRIBUTE Detail::*first, MD_ATTRIBUTE Detail::*second);
  MD_ATTRIBUTE restored(MD_ATTRIBUTE attribute, std::string& made);
  std::string_view twinOf(std::size_t attribute);
  void codeText(std::string_view text);
  void flushIndentation();

  std::string_view original_;
  MaskedTildes tildes_;
  MarkdownHandler& handler_;
  std::array<std::string, 2> made_;
  std::size_t attributes_ = 0;  // those before the current one, empty ones left out
  std::optional<std::vector<std::string>> twins_;
  bool isInCode_ = false;
  std::size_t indentation_ = 0;  // of the next line of code, in columns
};

}  // namespace scrivalen::command

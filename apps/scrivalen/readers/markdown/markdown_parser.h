#pragma once

#include <md4c.h>

#include <string_view>

namespace scrivalen::command {

/// Receives what the Markdown parser finds, in the order of the text.
class MarkdownHandler {
 public:
  MarkdownHandler() = default;
  MarkdownHandler(const MarkdownHandler&) = delete;
  MarkdownHandler& operator=(const MarkdownHandler&) = delete;
  virtual ~MarkdownHandler() = default;

  virtual void enterBlock(MD_BLOCKTYPE /*type*/, void* /*detail*/) {}
  virtual void leaveBlock(MD_BLOCKTYPE /*type*/, void* /*detail*/) {}
  virtual void enterSpan(MD_SPANTYPE /*type*/, void* /*detail*/) {}
  virtual void leaveSpan(MD_SPANTYPE /*type*/) {}
  virtual void text(MD_TEXTTYPE type, std::string_view text) = 0;
};

/// Parses CommonMark with tables, strike-through by two tildes, task lists and bare addresses as links. Code keeps its
/// tabs. An exception of the handler stops the parser and is passed on.
/// @param text  valid UTF-8 without NULs
void parseMarkdown(std::string_view text, MarkdownHandler& handler);

/// The same as the parser itself does it: one tilde strikes text out too, and tabs before code become blanks.
void parseUnchanged(std::string_view text, MarkdownHandler& handler);

}  // namespace scrivalen::command

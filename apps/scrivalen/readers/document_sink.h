#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::command {

enum class Align : std::uint8_t { Default, Left, Center, Right };
enum class Task : std::uint8_t { None, Open, Done };
enum class Span : std::uint8_t { Strong, Emphasis, Deleted, Code };

/// Takes the parts of a document from a reader, in reading order and well nested: each begin is ended by one end(), the
/// innermost first. Texts are UTF-8, valid only during the call; a line feed is a line break.
class DocumentSink {
 public:
  virtual ~DocumentSink() = default;

  /// @param id  that the input gives; empty: made from the text
  virtual void beginHeading(int level, const std::string& id) = 0;
  virtual void beginParagraph() = 0;
  virtual void beginQuote() = 0;
  /// @param first  the number of the first item, if ordered
  /// @param tight  the items are lines, not paragraphs
  virtual void beginList(bool ordered, int first, bool tight) = 0;
  virtual void beginItem(Task task) = 0;
  /// @param language  may be empty
  virtual void beginCode(const std::string& language) = 0;
  virtual void beginTable() = 0;
  virtual void beginRow(bool header) = 0;
  virtual void beginCell(Align align) = 0;
  virtual void beginSpan(Span span) = 0;
  /// @param title  may be empty
  virtual void beginLink(const std::string& address, const std::string& title) = 0;
  virtual void end() = 0;

  virtual void text(std::string_view text) = 0;
  /// A cell that has only text.
  virtual void cell(std::string_view text) = 0;
  virtual void rule() = 0;
  virtual void image(const std::string& address, const std::string& alternative) = 0;
  /// Raw HTML, inside a line or among blocks.
  virtual void markup(std::string_view html) = 0;
};

}  // namespace scrivalen::command

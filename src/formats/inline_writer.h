#pragma once

#include "document/document.h"
#include "formats/attribute_text.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen {

/// Writes what is inside a paragraph, a heading or a cell of a document, from operations that need not nest. Styles
/// stay on from one to the next and are spans of each. Blanks, line breaks and anchors wait for the content that comes
/// after them. Texts are UTF-8.
class InlineWriter {
 public:
  /// @param document  not owned; must outlive the writer
  explicit InlineWriter(document::Document& document) : document_(document) {}

  /// Begins to write into what was begun in the document.
  /// @param look  its colours, and whether it is bold or italic
  void enter(const Attributes& look);
  /// The same after text that was outside: blanks at its end count.
  void enterOpenText();
  /// Writes nothing more into it; the document's caller ends it.
  /// @param takesAnchors  whether waiting anchors belong into it, rather than to what comes next
  void leave(bool takesAnchors);
  /// Whether content has been written since enter.
  bool hasContent() const { return hasContent_; }

  void text(std::string_view text);
  void link(std::string_view text, std::string_view address);
  /// Markup for HTML, unchanged.
  void markup(std::string_view markup);

  /// A blank, or a no-break space where a blank would disappear: after another one, and at the beginning of a line.
  void blank() { wait(' '); }
  void lineBreak();
  /// Begins a new line unless this is one.
  void newLine();
  /// Forgets blanks and line breaks after which nothing came.
  void forgetSpace() { space_.clear(); }

  void anchor(std::string_view name);
  /// Takes the first of the anchors that wait; empty if there is none.
  std::string takeAnchor();
  /// Writes the anchors that wait.
  void writeAnchors();

  void beginBold() { ++bold_; }
  void endBold() { bold_ -= bold_ > 0 ? 1 : 0; }
  void beginItalic() { ++italic_; }
  void endItalic() { italic_ -= italic_ > 0 ? 1 : 0; }
  /// @param points  0 or less: a size that the document cannot have, and which changes nothing
  void beginSize(int points);
  void endSize();
  /// Whether a text would be written without anything around or before it.
  bool isPlain() const { return bold_ == 0 && italic_ == 0 && sizes_.empty() && anchors_.empty(); }

 private:
  enum class SpanKind { Colored, Strong, Emphasis, Sized };
  struct OpenSpan {
    SpanKind kind;
    int points;  // of Sized
  };

  bool isWanted(const OpenSpan& span) const;
  bool isOpen(SpanKind kind) const;
  void open(SpanKind kind);
  void closeTo(std::size_t count);
  void wait(char space);
  void writeSpace();
  void beginContent();

  document::Document& document_;
  int bold_ = 0;
  int italic_ = 0;
  std::vector<int> sizes_;
  Attributes look_;
  std::vector<OpenSpan> open_;
  std::string space_;  // blanks and line feeds that wait
  std::vector<std::string> anchors_;
  std::string spaced_;
  bool hasContent_ = false;
  bool endsWithBlank_ = true;
};

}  // namespace scrivalen

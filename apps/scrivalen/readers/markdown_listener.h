#pragma once

#include "document/anchor_names.h"
#include "document/document.h"
#include "document/event_log.h"
#include "readers/hidden_content_ends.h"
#include "readers/markdown_reader.h"
#include "readers/markup_text.h"

#include <md4c.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Makes events of what the Markdown parser tells. A run of text, soft breaks and character references is one event;
/// what is inside a heading is held back until its end, because its anchor name comes from its text. A safe listener
/// makes texts and line breaks of raw HTML; what a script, a style sheet or a comment hides makes no event of a line,
/// and no paragraph, heading or code block of its own.
class MarkdownListener {
 public:
  /// @param markdown  the whole text that the parser reads; must outlive this object
  MarkdownListener(std::string_view markdown, Safety safety, EventSink& document)
      : markdown_(markdown), safety_(safety), document_(document), sink_(&document) {}

  void enterBlock(MD_BLOCKTYPE type, void* detail);
  void leaveBlock(MD_BLOCKTYPE type, void* detail);
  void enterSpan(MD_SPANTYPE type, void* detail);
  void leaveSpan(MD_SPANTYPE type);
  void text(MD_TEXTTYPE type, std::string_view text);

 private:
  enum class Form : std::uint8_t {
    Written,
    Silent,  // not told: hidden, or a link within a link
    Words    // a link whose address is shown rather than linked to
  };

  struct Span {
    MD_SPANTYPE type;
    Form form;
  };

  void put(const Event& event);
  void putVisible(const Event& event);
  void write(const Event& event) {
    if (isParagraphDue_) {
      beginDueParagraph();
    }
    sink_->write(event);
  }
  void beginDueParagraph();
  void flush();
  void flushText();
  void flushMarkup(EventKind kind);
  void flushShown();
  void breakLine();
  void putLines(std::wstring_view text);
  void endMarkupBlock();
  void revealUnlessItEnds();
  void readHidden(MD_TEXTTYPE type, std::string_view text);
  bool isHidden() const { return markupText_.hidden() != HiddenContent::None; }
  bool isEmptied() const;
  void beginParagraph();
  void endParagraph();
  void beginCodeBlock(const MD_BLOCK_CODE_DETAIL& code);
  void beginHeading();
  void endHeading(int level);
  Form beginLink(const MD_SPAN_A_DETAIL& link);
  void endLinkInWords();
  void endSpan();
  void endSpans();
  void beginImage(const MD_SPAN_IMG_DETAIL& image);
  void endImage();

  std::string_view markdown_;
  Safety safety_;
  EventSink& document_;
  EventSink* sink_;  // the document, or the log of the heading that is being read
  EventLog headingLog_;
  std::wstring headingText_;
  AnchorNames anchorNames_;
  std::wstring text_;    // not yet handed on; unless the listener is safe, of text and markup one at least is empty
  std::wstring markup_;  // comes after the text
  std::wstring language_;
  std::wstring address_;  // of the image
  std::wstring title_;
  std::wstring linkAddress_;
  std::wstring linkText_;    // of a link in words
  std::vector<Span> spans_;  // around what is being read
  MarkupText markupText_;
  std::optional<HiddenContentEnds> hiddenContentEnds_;  // found out when something hidden does not end where it began
  std::size_t texts_ = 0;                               // how many the parser has told
  int imageDepth_ = 0;                                  // inside an image only its text counts
  int columns_ = 0;
  bool header_ = false;
  bool isParagraphDue_ = false;  // the beginning of one is written with its content
  bool hasLostMarkup_ = false;   // so that nothing may be left of the paragraph or heading
  bool isLinkInWords_ = false;
  bool isImageHidden_ = false;
};

}  // namespace scrivalen::command

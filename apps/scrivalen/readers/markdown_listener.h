#pragma once

#include "events/anchor_names.h"
#include "events/document.h"
#include "events/event_log.h"
#include "readers/hidden_content_ends.h"
#include "readers/markdown_parser.h"
#include "readers/markdown_reader.h"
#include "readers/markup_text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Converts callbacks of the Markdown parser to events. A run of text, soft breaks and character references becomes one
/// event. The events inside a heading are held back until its end, because its anchor name is made from its text. A
/// safe listener converts raw HTML to text and line breaks. Content hidden by a script, a style sheet or a comment
/// produces no events.
class MarkdownListener final : public MarkdownHandler {
 public:
  /// @param markdown  the whole text to be parsed; must outlive this object
  MarkdownListener(std::string_view markdown, Safety safety, EventSink& document)
      : markdown_(markdown), safety_(safety), document_(document), sink_(&document) {}

  void enterBlock(MD_BLOCKTYPE type, void* detail) override;
  void leaveBlock(MD_BLOCKTYPE type, void* detail) override;
  void enterSpan(MD_SPANTYPE type, void* detail) override;
  void leaveSpan(MD_SPANTYPE type) override;
  void text(MD_TEXTTYPE type, std::string_view text) override;

 private:
  enum class Form : std::uint8_t {
    Written,
    Omitted,      // not written: hidden, or a link inside a link
    ShownAddress  // a link whose address is shown as text
  };

  struct Span {
    MD_SPANTYPE type;
    Form form;
  };

  void put(const Event& event);
  void putVisible(const Event& event);
  void write(const Event& event) {
    if (isParagraphPending_) {
      beginPendingParagraph();
    }
    sink_->write(event);
  }
  void beginPendingParagraph();
  void flush();
  void flushText();
  void flushMarkup(EventKind kind);
  void flushVisibleText();
  void appendCode(std::string_view code);
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
  void addToHeading(std::wstring_view text);
  void addMarkupToHeading();
  void endHeading(int level);
  Form beginLink(const MD_SPAN_A_DETAIL& link);
  void endShownLink();
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
  MarkupText headingMarkup_;  // follows the markup that an unsafe listener passes on
  AnchorNames anchorNames_;
  std::wstring text_;    // not yet passed on; in an unsafe listener text or markup is empty
  std::wstring markup_;  // follows the text
  std::wstring language_;
  std::wstring address_;  // of the image
  std::wstring title_;
  std::wstring linkAddress_;
  std::wstring linkText_;    // of a link whose address is shown
  std::vector<Span> spans_;  // the open spans
  MarkupText markupText_;
  std::optional<HiddenContentEnds>
      hiddenContentEnds_;  // computed when hidden content does not end in the piece it began in
  std::size_t texts_ = 0;  // texts received from the parser
  int imageDepth_ = 0;     // inside an image only text is kept
  int columns_ = 0;
  bool header_ = false;
  bool isInCell_ = false;
  bool isParagraphPending_ = false;  // begun, but not written before its first content
  bool hasLostMarkup_ = false;       // in the current paragraph or heading
  bool isLinkShown_ = false;
  bool isImageHidden_ = false;
};

}  // namespace scrivalen::command

#pragma once

#include "readers/document_sink.h"
#include "readers/markdown/heading_content.h"
#include "readers/markdown/hidden_content_ends.h"
#include "readers/markdown/markdown_parser.h"
#include "readers/markdown/markdown_reader.h"
#include "readers/markdown/markup_text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Passes what the Markdown parser finds to a document. A run of text, soft breaks and character references becomes one
/// text. A safe listener converts raw HTML to text and line breaks, and leaves out content hidden by a script, a style
/// sheet or a comment; an unsafe one passes both on as markup.
class MarkdownListener final : public MarkdownHandler {
 public:
  /// @param markdown  the whole text to be parsed; must outlive this object
  MarkdownListener(std::string_view markdown, Safety safety, DocumentSink& sink)
      : markdown_(markdown), safety_(safety), document_(sink), sink_(&sink) {}

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

  struct OpenSpan {
    MD_SPANTYPE type;
    Form form;
    bool isMarkup = false;  // a link of raw HTML
  };

  enum class Pending : std::uint8_t { None, Paragraph, Heading };

  // What is known of a paragraph that may be the first line of an alert.
  enum class Alert : std::uint8_t { None, Possible, Marked };

  /// The document, once the text so far is in it.
  DocumentSink& sink();
  void beginPending();
  void flush();
  void flushText();
  void flushMarkup();
  void separate();
  void appendCode(std::string_view code);
  void breakLine();
  void putLines(std::string_view text);
  void endMarkupBlock();
  enum class Markup : bool { Inline, Block };
  void putMarkup(std::string_view text, Markup markup);
  void putPart(const MarkupPart& part);
  void putSeparately(std::string_view text);
  void endMarkupLink();
  Form openLink();
  void putImage();
  void revealUnlessItEnds();
  void readHidden(MD_TEXTTYPE type, std::string_view text);
  bool isHidden() const { return markupText_.hidden() != HiddenContent::None; }
  bool isEmptied() const;
  void beginLater(Pending part, int level);
  void endPending();
  void endHeading();
  std::string takeId();
  void writeHeading(const std::string& id);
  bool readAlert(MD_TEXTTYPE type, std::string_view text);
  void writeAlert();
  void beginCode(const MD_BLOCK_CODE_DETAIL& code);
  Form beginLink(const MD_SPAN_A_DETAIL& link);
  void endShownLink();
  void endSpan();
  void endSpans();
  void beginImage(const MD_SPAN_IMG_DETAIL& image);
  void endImage();

  std::string_view markdown_;
  Safety safety_;
  DocumentSink& document_;
  DocumentSink* sink_;  // the document, or the content of a heading that waits for its id
  HeadingContent heading_;
  std::string text_;    // not yet passed on; in an unsafe listener text or markup is empty
  std::string markup_;  // follows the text
  std::string language_;
  std::string address_;  // of the image
  std::string title_;
  std::string nextAddress_;      // of a link that begins
  std::string linkAddress_;      // of the link that is open
  std::string linkText_;         // of a link whose address is shown
  std::vector<OpenSpan> spans_;  // the open spans
  MarkupText markupText_;
  std::optional<HiddenContentEnds>
      hiddenContentEnds_;      // computed when hidden content does not end in the piece it began in
  std::size_t texts_ = 0;      // texts received from the parser
  int imageDepth_ = 0;         // inside an image only text is kept
  int level_ = 0;              // of the current heading
  std::size_t lastPiece_ = 0;  // of the text, in bytes, if it is plain and the last that the parser passed
  bool isAfterQuote_ = false;  // a quote has begun, and nothing in it
  Alert alert_ = Alert::None;
  Pending pending_ = Pending::None;  // begun, but not passed on before its first content
  bool header_ = false;
  bool isInCell_ = false;
  bool hasLostMarkup_ = false;  // in the current paragraph or heading
  bool hasText_ = false;        // since the block began
  bool isApart_ = false;        // a blank is due before the next text
  bool isLinkShown_ = false;
  bool isImageHidden_ = false;
};

}  // namespace scrivalen::command

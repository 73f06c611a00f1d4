#pragma once

#include "anchor_names.h"
#include "document.h"
#include "event_log.h"

#include <md4c.h>

#include <string>
#include <string_view>

namespace scrivalen::command {

/// Makes events of what the Markdown parser tells. A run of text, soft breaks and character references is one event;
/// what is inside a heading is held back until its end, because its anchor name comes from its text.
class MarkdownListener {
 public:
  explicit MarkdownListener(EventSink& document) : document_(document), sink_(&document) {}

  void enterBlock(MD_BLOCKTYPE type, void* detail);
  void leaveBlock(MD_BLOCKTYPE type, void* detail);
  void enterSpan(MD_SPANTYPE type, void* detail);
  void leaveSpan(MD_SPANTYPE type);
  void text(MD_TEXTTYPE type, std::string_view text);

 private:
  void put(const Event& event);
  void flush();
  void flushText();
  void flushMarkup(EventKind kind);
  void beginCodeBlock(const MD_BLOCK_CODE_DETAIL& code);
  void beginHeading();
  void endHeading(int level);
  void beginLink(const MD_SPAN_A_DETAIL& link);
  void beginImage(const MD_SPAN_IMG_DETAIL& image);
  void endImage();

  EventSink& document_;
  EventSink* sink_;  // the document, or the log of the heading that is being read
  EventLog headingLog_;
  std::wstring headingText_;
  AnchorNames anchorNames_;
  std::wstring text_;  // not yet handed on; of text and markup one at least is empty
  std::wstring markup_;
  std::wstring language_;
  std::wstring address_;
  std::wstring title_;
  int imageDepth_ = 0;  // inside an image only its text counts
  int columns_ = 0;
  bool header_ = false;
};

}  // namespace scrivalen::command

#pragma once

#include "document/model/warnings.h"
#include "formats/markup/html/html_markup.h"
#include "formats/markup/html/html_page_set.h"

#include <string>
#include <vector>

namespace scrivalen::document {

/// Writes what is part of a line: text and its spans, links, anchors and pictures.
class HtmlSpans {
 public:
  /// @param markup, warnings  not owned; must outlive this object
  /// @param set               of the page; null: the page is the whole document. Not owned
  HtmlSpans(HtmlMarkup& markup, OutputWarnings& warnings, HtmlPageSet* set)
      : markup_(markup), warnings_(warnings), set_(set) {}

  /// @param event  of an inline kind other than Raw
  void write(const Event& event);

 private:
  void begin(Span span);
  void beginColored(const Event& colored);
  void beginSized(const Event& sized);
  void beginLink(const Event& link);
  void endLink();
  void beginLanguage(const Event& language);
  void endLanguage();
  void anchor(const Event& anchor);
  void image(const Event& image);
  std::string addressOf(std::string_view address) const;
  void putSource(const Picture& picture);

  HtmlMarkup& markup_;
  OutputWarnings& warnings_;
  HtmlPageSet* const set_;
  std::string tag_;          // kept for its memory
  bool isLinkOpen_ = false;  // written, rather than left out
  std::vector<bool> rightToLeft_;
};

}  // namespace scrivalen::document

#pragma once

#include "document/model/warnings.h"
#include "formats/markup/html/html_markup.h"

#include <string>
#include <vector>

namespace scrivalen::document {

/// Writes what is part of a line: text and its spans, links, anchors and pictures.
class HtmlSpans {
 public:
  /// @param markup, warnings  not owned; must outlive this object
  HtmlSpans(HtmlMarkup& markup, OutputWarnings& warnings) : markup_(markup), warnings_(warnings) {}

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

  HtmlMarkup& markup_;
  OutputWarnings& warnings_;
  std::string tag_;          // kept for its memory
  bool isLinkOpen_ = false;  // written, rather than left out
  std::vector<bool> rightToLeft_;
};

}  // namespace scrivalen::document

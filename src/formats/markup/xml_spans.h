#pragma once

#include "document/model/event.h"
#include "document/model/warnings.h"
#include "formats/markup/xml_markup.h"

namespace scrivalen::document {

/// Writes spans, links, anchors, pictures and markup.
class XmlSpans {
 public:
  /// @param markup, warnings  not owned; must outlive this object
  XmlSpans(XmlMarkup& markup, OutputWarnings& warnings) : markup_(markup), warnings_(warnings) {}

  /// @param event  of an inline kind other than Text
  void write(const Event& event);

 private:
  void beginColored(const Event& colored);
  void beginSized(const Event& sized);
  void beginLink(const Event& link);
  void beginLanguage(const Event& language);
  void putAnchor(const Event& anchor);
  void putImage(const Event& image);

  XmlMarkup& markup_;
  OutputWarnings& warnings_;
};

}  // namespace scrivalen::document

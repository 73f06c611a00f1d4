#pragma once

#include "document/model/event.h"
#include "document/model/values.h"
#include "output/markup_text.h"
#include "output/output_buffer.h"

#include <optional>
#include <string_view>

namespace scrivalen::document {

/// Writes the tags and texts of XML documents.
class XmlMarkup {
 public:
  /// A line break, outside code.
  static constexpr std::string_view kBreak = "<br/>";

  /// @param out  not owned; must outlive this object
  explicit XmlMarkup(OutputBuffer& out) : out_(out) {}

  void put(std::string_view markup) { out_.write(markup.data(), markup.size()); }
  void putText(std::string_view text, std::string_view lineBreak = kBreak) { escaper_.content(out_, text, lineBreak); }
  /// "<element", to be continued with attributes and ">" or "/>".
  void putStart(std::string_view element);
  void putEnd(std::string_view element);
  void putElement(std::string_view element) {
    putStart(element);
    put(">");
  }
  /// Writes nothing for an empty value.
  void putAttribute(std::string_view name, std::string_view value);
  void putAttribute(std::string_view name, double number);
  void putFlag(std::string_view name, bool isTrue) { putAttribute(name, isTrue ? "true" : ""); }
  void putAlign(Align align);
  void putColors(const std::optional<Rgb>& color, const std::optional<Rgb>& background);

  OutputBuffer& out() { return out_; }
  MarkupText& escaper() { return escaper_; }
  /// In the plain form, whatever the settings say.
  const Values& plainValues() const { return plainValues_; }

 private:
  OutputBuffer& out_;
  MarkupText escaper_;
  const Values plainValues_{NumberStyle(), DateStyle()};
};

}  // namespace scrivalen::document

#pragma once

#include "document/model/event.h"
#include "output/markup_text.h"
#include "output/output_buffer.h"

#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::document {

/// Writes tags, their attributes and escaped text: what all parts of a page consist of.
class HtmlMarkup {
 public:
  static constexpr std::string_view kLineBreak = "<br>\n";

  /// @param out            not owned; must outlive this object
  /// @param isRightToLeft  whether the page's language is written so
  HtmlMarkup(OutputBuffer& out, bool isRightToLeft) : out_(out), isRightToLeft_(isRightToLeft) {}

  /// Writes markup as it stands.
  void put(std::string_view markup) { out_.write(markup.data(), markup.size()); }
  void putText(std::string_view text) { escaper_.content(out_, text, isInCode_ ? "\n" : kLineBreak); }
  /// Writes bytes in Base64.
  void putData(std::string_view bytes);
  void putAttribute(std::string_view name, std::string_view value);
  /// Writes the attribute unless the id is empty.
  void putId(std::string_view id);
  void putStart(std::string_view element, std::string_view id, Align align);
  void putEnd(std::string_view element);

  /// The style attribute that aligns a block or cell, after a blank; empty where it is aligned so anyway.
  std::string_view alignment(Align align) const;
  bool isRightToLeft() const { return isRightToLeft_; }

  /// In code line breaks are line feeds.
  void setInCode(bool isInCode) { isInCode_ = isInCode; }

  // For texts that are written in place.
  OutputBuffer& out() { return out_; }
  MarkupText& escaper() { return escaper_; }

 private:
  OutputBuffer& out_;
  const bool isRightToLeft_;
  MarkupText escaper_;
  bool isInCode_ = false;
};

/// Appends a number with up to @p precision decimals, without zeros at its end.
void appendNumber(std::string& text, double number, int precision);
void appendNumber(std::string& text, int number);

/// Appends the declarations of the colors that are given to the value of a style attribute.
void appendColors(std::string& style, const std::optional<Rgb>& color, const std::optional<Rgb>& background);

/// Appends a style attribute to a start tag unless it is empty.
void appendStyle(std::string& tag, std::string_view style);

}  // namespace scrivalen::document

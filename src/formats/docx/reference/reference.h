#pragma once

#include "document/model/warnings.h"
#include "document/settings/settings.h"
#include "formats/docx/parts/styles.h"
#include "formats/docx/reference/style_list.h"
#include "formats/docx/tables/table_look.h"
#include "output/output_buffer.h"

#include <memory>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {

/// A Word document or template whose look another document takes over: its styles, and the theme and the list of fonts
/// that they refer to.
class Reference {
 public:
  static constexpr std::size_t kMostBytes = std::size_t{16} << 20;  ///< of the file

  /// Reads it. Raises OutputFailure, with the status of a template that is not found, when it cannot be used.
  /// @param setting  the path, or the name of a template that is installed with the library
  explicit Reference(std::string_view setting);

  TableLook tableLook() const;
  /// Their parts, with the XML declaration; empty without one.
  const std::string& theme() const { return theme_; }
  const std::string& fonts() const { return fonts_; }
  /// Writes the part of the styles of both.
  /// @param own       the styles that a document without a reference has
  /// @param language  the document's
  /// @param warnings  gets one for each style of the reference whose numbering the document's text misses
  void writeStyles(OutputBuffer& out, const StyleSheet& own, std::string_view language, OutputWarnings& warnings) const;

 private:
  struct Content;

  explicit Reference(Content content);

  double letterWidth() const;

  StyleList styles_;
  std::string theme_;
  std::string fonts_;
};

/// The reference of a document's settings; null without one.
std::unique_ptr<const Reference> referenceOf(const FormatSettings& settings);

}  // namespace scrivalen::document::docx

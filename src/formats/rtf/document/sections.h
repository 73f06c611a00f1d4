#pragma once

#include "document/model/writer.h"
#include "document/word/word_sections.h"
#include "formats/rtf/document/page_header.h"
#include "formats/rtf/document/prolog/style_sheet.h"

#include <optional>

namespace scrivalen::document::rtf {

/// Writes the sections of the file.
class Sections : public WordSections {
 public:
  /// @param context, styles  must outlive this object
  Sections(const WriterContext& context, const StyleSheet& styles);

  /// Writes a section that has no content; nothing comes after it.
  void finish() { openPending(); }
  void writeBreak() override;

 private:
  void writeBegin(Orientation orientation, std::optional<Orientation> before) override;

  OutputBuffer& out_;
  PageHeader header_;
};

}  // namespace scrivalen::document::rtf

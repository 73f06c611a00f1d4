#pragma once

#include "document/model/warnings.h"
#include "document/word/word_inlines.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/runs.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::rtf {

/// Writes what is inside a paragraph or cell: text, spans, links, places and pictures.
class InlineWriter : public WordInlines {
 public:
  /// @param out, colors, warnings  not owned; must outlive this object
  InlineWriter(OutputBuffer& out, const ColorTable& colors, OutputWarnings& warnings)
      : WordInlines(out), colors_(colors), warnings_(warnings) {}

  void write(const Event& event) override;
  void writeText(std::string_view text) override { writeRuns(out(), text, isRightToLeft_, styles_.back()); }
  void writePageLink(const Event& item) override;
  bool takesRaw() const override { return true; }

  /// Begins the text of a paragraph or cell.
  void beginText(const RunStyle& style, bool isRightToLeft);

 private:
  void writePlace(std::string_view id) override;
  void beginStyle(const Event& event);
  void endStyle();
  void beginSpan(Span span);
  void beginColored(const Event& event);
  void beginSized(double points);
  void beginLink(const Event& event);
  void beginLanguage(std::string_view tag);
  void image(const Event& event);

  const ColorTable& colors_;
  OutputWarnings& warnings_;
  bool isRightToLeft_ = false;
  std::vector<RunStyle> styles_{RunStyle{}};  // of the text, then of each part that is open in it
};

}  // namespace scrivalen::document::rtf

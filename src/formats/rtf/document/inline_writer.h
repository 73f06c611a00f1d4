#pragma once

#include "document/model/event.h"
#include "document/model/warnings.h"
#include "formats/rtf/document/picture.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/runs.h"
#include "output/output_buffer.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::rtf {

/// Writes what is inside a paragraph or cell: text, spans, links, places and pictures.
class InlineWriter : public EventSink {
 public:
  /// @param out, colors, warnings  not owned; must outlive this object
  InlineWriter(OutputBuffer& out, const ColorTable& colors, OutputWarnings& warnings)
      : out_(&out), colors_(colors), warnings_(warnings) {}

  void write(const Event& event) override;

  /// Begins the text of a paragraph or cell.
  void beginText(const RunStyle& style, bool isRightToLeft);
  void setOutput(OutputBuffer& out) { out_ = &out; }
  /// The size that pictures may have.
  void setRoom(Room room) { room_ = room; }
  Room room() const { return room_; }
  /// Whether places are written; those in a repeated part of a table are not.
  void setPlaces(bool on) { hasPlaces_ = on; }

  /// Keeps a place between blocks for the next line of text.
  void hold(std::string_view id);
  bool holdsPlaces() const { return !held_.empty(); }
  void writeHeld();

 private:
  void writeText(std::string_view text) { writeRuns(*out_, text, isRightToLeft_, styles_.back()); }
  void beginStyle(const Event& event);
  void endStyle();
  void beginSpan(Span span);
  void beginColored(const Event& event);
  void beginSized(double points);
  void beginLink(const Event& event);
  void beginLanguage(std::string_view tag);
  void anchor(std::string_view id);
  void image(const Event& event);

  OutputBuffer* out_;
  const ColorTable& colors_;
  OutputWarnings& warnings_;
  Room room_{};
  bool hasPlaces_ = true;
  bool isRightToLeft_ = false;
  std::vector<RunStyle> styles_{RunStyle{}};  // of the text, then of each part that is open in it
  std::vector<std::string> held_;
};

/// Writes the instructions of a link and the begin of its text, which three closing braces end.
void beginLinkField(OutputBuffer& out, std::string_view address, std::string_view title);

}  // namespace scrivalen::document::rtf

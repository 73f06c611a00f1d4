#pragma once

#include "document/model/event.h"
#include "document/model/warnings.h"
#include "document/pictures/waiting_pictures.h"
#include "formats/docx/text/drawing.h"
#include "formats/docx/text/run_writer.h"
#include "output/output_buffer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

/// Writes what is inside a paragraph or cell: text, spans, links, places and pictures.
class InlineWriter : public EventSink {
 public:
  /// @param out, pictures, warnings  not owned; must outlive this object
  InlineWriter(OutputBuffer& out, WaitingPictures& pictures, OutputWarnings& warnings)
      : out_(&out), pictures_(pictures), warnings_(warnings) {}

  void write(const Event& event) override;
  /// Writes text outside of spans and links.
  void writeText(std::string_view text) { runs_.write(*out_, text, isRightToLeft_); }

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
  enum class OpenLink { None, Address, Place };

  void beginStyle(const Event& event);
  void endStyle();
  void beginLink(const Event& event);
  void endLink();
  void anchor(std::string_view id);
  void image(const Event& event);

  OutputBuffer* out_;
  WaitingPictures& pictures_;
  OutputWarnings& warnings_;
  RunWriter runs_;
  Room room_{};
  OpenLink link_ = OpenLink::None;
  bool hasPlaces_ = true;
  bool isRightToLeft_ = false;
  std::int64_t places_ = 0;                   // that are written
  std::int64_t drawings_ = 0;                 // the same
  std::vector<RunStyle> styles_{RunStyle{}};  // of the text, then of each part that is open in it
  std::vector<std::string> held_;
};

}  // namespace scrivalen::document::docx

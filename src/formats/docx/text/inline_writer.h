#pragma once

#include "document/model/warnings.h"
#include "document/pictures/waiting_pictures.h"
#include "document/word/word_inlines.h"
#include "formats/docx/text/run_writer.h"
#include "output/output_buffer.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document::docx {

/// Writes what is inside a paragraph or cell: text, spans, links, places and pictures.
class InlineWriter : public WordInlines {
 public:
  /// @param out, pictures, warnings  not owned; must outlive this object
  InlineWriter(OutputBuffer& out, WaitingPictures& pictures, OutputWarnings& warnings)
      : WordInlines(out), pictures_(pictures), warnings_(warnings) {}

  void write(const Event& event) override;
  void writeText(std::string_view text) override { runs_.write(out(), text, isRightToLeft_); }
  void writePageLink(const Event& item) override;
  bool takesRaw() const override { return false; }

  /// Begins the text of a paragraph or cell.
  void beginText(const RunStyle& style, bool isRightToLeft);

  /// Gives the pictures in a copy of markup numbers of their own.
  void renumberPictures(std::string& markup);

 private:
  enum class OpenLink { None, Address, Place };

  void writePlace(std::string_view id) override;
  void beginStyle(const Event& event);
  void endStyle();
  void beginLink(const Event& event);
  void endLink();
  void image(const Event& event);

  WaitingPictures& pictures_;
  OutputWarnings& warnings_;
  RunWriter runs_;
  OpenLink link_ = OpenLink::None;
  bool isRightToLeft_ = false;
  std::int64_t places_ = 0;                   // that are written
  std::int64_t drawings_ = 0;                 // the same
  std::vector<RunStyle> styles_{RunStyle{}};  // of the text, then of each part that is open in it
};

}  // namespace scrivalen::document::docx

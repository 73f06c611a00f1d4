#include "formats/rtf/document/document_writer.h"

#include "document/language.h"
#include "document/word/document_font.h"
#include "document/word/word_blocks.h"
#include "formats/rtf/document/containers.h"
#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/inline_writer.h"
#include "formats/rtf/document/paragraphs.h"
#include "formats/rtf/document/prolog/color_table.h"
#include "formats/rtf/document/prolog/prolog.h"
#include "formats/rtf/document/sections.h"
#include "formats/rtf/document/tables/table_writer.h"

namespace scrivalen::document::rtf {
namespace {

class RtfDocumentWriter : public DocumentWriter {
 public:
  explicit RtfDocumentWriter(const WriterContext& context)
      : out_(context.out),
        settings_(context.settings),
        isRightToLeft_(isRightToLeft(settings_.text("language"))),
        font_(DocumentFont::of(settings_.text("font"), context.warnings)),
        styles_(colors_, fontNumber(font_)),
        sections_(context, styles_),
        inlines_(out_, colors_, context.warnings),
        tables_(out_, colors_, inlines_, fontNumber(font_), isRightToLeft_),
        containers_(out_, styles_, sections_.paper().textWidth()),
        paragraphs_({out_, colors_, styles_, sections_, containers_, inlines_}, isRightToLeft_),
        blocks_(settings_, {sections_, inlines_, tables_, containers_, paragraphs_}, isRightToLeft_) {}

  void begin() override { writeProlog(out_, settings_, font_, colors_, styles_, sections_.paper()); }
  void write(const Event& event) override { blocks_.add(event); }
  void beginTable(const Table& table) override { blocks_.beginTable(table); }
  void row(const Row& row) override { tables_.row(row); }
  void endTable() override { tables_.end(); }
  void finish() override;

 private:
  OutputBuffer& out_;
  const FormatSettings& settings_;
  const ColorTable colors_;
  const bool isRightToLeft_;
  const DocumentFont font_;
  const StyleSheet styles_;
  Sections sections_;
  InlineWriter inlines_;
  TableWriter tables_;
  Containers containers_;
  Paragraphs paragraphs_;
  WordBlocks blocks_;
};

void RtfDocumentWriter::finish() {
  blocks_.finish();
  sections_.finish();
  if (!sections_.hasContent() || inlines_.holdsPlaces()) {
    paragraphs_.write({}, {});
  }
  put(out_, "}\n");
}

std::unique_ptr<DocumentWriter> makeWriter(const WriterContext& context) {
  return std::make_unique<RtfDocumentWriter>(context);
}

}  // namespace
}  // namespace scrivalen::document::rtf

namespace scrivalen::document {

std::unique_ptr<DocumentWriter> createRtfDocumentWriter(const WriterContext& context) {
  return rtf::makeWriter(context);
}

}  // namespace scrivalen::document

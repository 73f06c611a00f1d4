#include "formats/docx/parts/page_header.h"

#include "document/settings/running_text.h"
#include "formats/docx/parts/relations.h"
#include "formats/docx/parts/styles.h"
#include "formats/docx/text/drawing.h"
#include "formats/docx/text/run_writer.h"
#include "formats/docx/xml.h"

#include <algorithm>
#include <utility>

namespace scrivalen::document::docx {
namespace {

// A part that the latest sections have is used again.
constexpr std::size_t kCompared = 4;

bool namesSection(std::string_view setting) {
  const RunningText parts = runningTextOf(setting);
  return std::any_of(parts.begin(), parts.end(), [](const auto& pieces) {
    return std::any_of(pieces.begin(), pieces.end(),
                       [](const RunningPiece& piece) { return piece.field == RunningField::Section; });
  });
}

void writeField(OutputBuffer& out, std::string_view instruction) {
  put(out, "<w:fldSimple w:instr=\"");
  put(out, instruction);
  put(out, "\"><w:r><w:t>1</w:t></w:r></w:fldSimple>");
}

void writePiece(OutputBuffer& out, const RunningPiece& piece, const FormatSettings& settings,
                std::string_view section) {
  const auto write = [&](std::string_view text) {
    if (!text.empty()) {
      RunWriter().write(out, text, false);
    }
  };
  switch (piece.field) {
    case RunningField::None: return write(piece.text);
    case RunningField::Page: return writeField(out, "PAGE");
    case RunningField::Pages: return writeField(out, "NUMPAGES");
    case RunningField::Title: return write(settings.text("title"));
    case RunningField::Date: return write(shownDate(settings));
    case RunningField::Section: return write(section);
  }
}

std::size_t numberOf(const HeaderImage& image, WaitingPictures& pictures) {
  return image.picture ? pictures.add(*image.picture) : 0;
}

}  // namespace

PageHeader::PageHeader(const FormatSettings& settings, const PageTwips& paper, WaitingPictures& pictures,
                       OutputWarnings& warnings)
    : settings_(settings),
      image_(headerImageOf(settings, warnings)),
      picture_(numberOf(image_, pictures)),
      paperTextWidth_(paper.textWidth()),
      imageHeight_(static_cast<int>(paper.top * kHeaderImageShare)),
      fromTop_(image_.picture ? (paper.top - imageHeight_) / 2 : paper.top / 2) {}

std::string PageHeader::references(std::string_view section, int textWidth) {
  const std::string_view header = settings_.text("header");
  const std::string_view footer = settings_.text("footer");
  std::string xml;
  if (image_.picture || !header.empty()) {
    xml += reference({false, textWidth, std::string(namesSection(header) ? section : std::string_view())});
  }
  if (!footer.empty()) {
    xml += reference({true, textWidth, std::string(namesSection(footer) ? section : std::string_view())});
  }
  return xml;
}

std::string PageHeader::reference(Part part) {
  const auto compared = static_cast<std::ptrdiff_t>(std::min(kCompared, parts_.size()));
  const auto known = std::find(parts_.end() - compared, parts_.end(), part);
  const std::string id = headerRelation(static_cast<std::size_t>(known - parts_.begin()));
  const std::string_view element = part.isFooter ? "<w:footerReference" : "<w:headerReference";
  if (known == parts_.end()) {
    parts_.push_back(std::move(part));
  }
  return joined({element, " w:type=\"default\" r:id=\"", id, "\"/>"});
}

void PageHeader::write(ZipWriter& archive) const {
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    archive.beginEntry(joined({"word/", headerPart(i)}));
    writePart(archive.content(), parts_[i]);
    archive.endEntry();
    if (image_.picture && !parts_[i].isFooter) {
      std::string relations(kXmlStart);
      relations.append(kRelationsStart)
          .append(relation(pictureRelation(picture_), "image", picturePart(picture_, image_.picture->format())))
          .append(kRelationsEnd);
      archive.addEntry(joined({"word/_rels/", headerPart(i), ".rels"}), relations);
    }
  }
}

void PageHeader::writePart(OutputBuffer& out, const Part& part) const {
  put(out, kXmlStart);
  put(out, part.isFooter ? "<w:ftr" : "<w:hdr");
  put(out, kNamespaces);
  put(out, "<w:p><w:pPr>");
  put(out, styleReference(part.isFooter ? Style::Footer : Style::Header));
  if (part.textWidth != paperTextWidth_) {
    put(out, "<w:tabs><w:tab w:val=\"clear\" w:pos=\"", paperTextWidth_ / 2, "\"/>");
    put(out, "<w:tab w:val=\"clear\" w:pos=\"", paperTextWidth_, "\"/>");
    put(out, "<w:tab w:val=\"center\" w:pos=\"", part.textWidth / 2, "\"/>");
    put(out, "<w:tab w:val=\"right\" w:pos=\"", part.textWidth, "\"/></w:tabs>");
  }
  put(out, "</w:pPr>");
  const std::string_view setting = settings_.text(part.isFooter ? "footer" : "header");
  if (image_.picture && !part.isFooter) {
    writeImage(out, part);
  }
  const RunningText pieces = runningTextOf(setting);
  for (std::size_t i = 0; i < pieces.size() && !setting.empty(); ++i) {
    put(out, i > 0 ? "<w:r><w:tab/></w:r>" : "");
    for (const RunningPiece& piece : pieces[i]) {
      writePiece(out, piece, settings_, part.section);
    }
  }
  put(out, part.isFooter ? "</w:p></w:ftr>\n" : "</w:p></w:hdr>\n");
}

void PageHeader::writeImage(OutputBuffer& out, const Part& part) const {
  const std::string id = pictureRelation(picture_);
  put(out, "<w:r>");
  writeDrawing(out, *image_.picture, {id, 1, {}, image_.widthPt}, {part.textWidth / 2, imageHeight_});
  put(out, settings_.text("header").empty() ? "</w:r>" : "<w:t xml:space=\"preserve\"> </w:t></w:r>");
}

}  // namespace scrivalen::document::docx

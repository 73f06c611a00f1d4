#include "formats/docx/parts/page_header.h"

#include "document/language.h"
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

void writePiece(OutputBuffer& out, const RunningPiece& piece, const FormatSettings& settings, std::string_view section,
                bool isRightToLeft) {
  const auto write = [&](std::string_view text) {
    if (!text.empty()) {
      RunWriter().write(out, text, isRightToLeft);
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
      isRightToLeft_(isRightToLeft(settings.text("language"))),
      image_(headerImageOf(settings, warnings)),
      picture_(numberOf(image_, pictures)),
      paperTextWidth_(paper.textWidth()),
      imageHeight_(static_cast<int>(paper.top * kHeaderImageShare)),
      fromTop_(image_.picture ? (paper.top - imageHeight_) / 2 : paper.top / 2),
      warnings_(warnings) {}

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
  if (!numbers_.contains(part) && !hasRoomFor(part)) {
    warnings_.add(WarningCode::SomethingLeftOut, "the name of a section in its header or footer, as too many differ");
    part.section.clear();
  }
  const auto [known, isNew] = numbers_.try_emplace(std::move(part), parts_.size());
  if (isNew) {
    parts_.push_back(&known->first);
    nameBytes_ += known->first.section.size();
  }
  const std::string id = headerRelation(known->second);
  const std::string_view element = known->first.isFooter ? "<w:footerReference" : "<w:headerReference";
  return joined({element, " w:type=\"default\" r:id=\"", id, "\"/>"});
}

// A part that names no section always has room: there are few of them.
bool PageHeader::hasRoomFor(const Part& part) const {
  return part.section.empty() || (parts_.size() < kMostParts && nameBytes_ + part.section.size() <= kMostNameBytes);
}

void PageHeader::write(ZipWriter& archive) const {
  for (std::size_t i = 0; i < parts_.size(); ++i) {
    archive.beginEntry(joined({"word/", headerPart(i)}));
    writePart(archive.content(), *parts_[i]);
    archive.endEntry();
    if (image_.picture && !parts_[i]->isFooter) {
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
  put(out, isRightToLeft_ ? "<w:bidi/></w:pPr>" : "</w:pPr>");
  writeLine(out, part, settings_.text(part.isFooter ? "footer" : "header"));
  put(out, part.isFooter ? "</w:p></w:ftr>\n" : "</w:p></w:hdr>\n");
}

// What is on the left comes last in a line from right to left. The picture is on the left of it.
void PageHeader::writeLine(OutputBuffer& out, const Part& part, std::string_view setting) const {
  const RunningText places = runningTextOf(setting);
  const std::size_t count = setting.empty() && !isRightToLeft_ ? 1 : places.size();
  const bool hasImage = image_.picture && !part.isFooter;
  for (std::size_t i = 0; i < count; ++i) {
    put(out, i > 0 ? "<w:r><w:tab/></w:r>" : "");
    const std::size_t place = isRightToLeft_ ? places.size() - 1 - i : i;
    if (hasImage && !isRightToLeft_ && place == 0) {
      writeImage(out, part);
    }
    for (const RunningPiece& piece : places[place]) {
      writePiece(out, piece, settings_, part.section, isRightToLeft_);
    }
    if (hasImage && isRightToLeft_ && place == 0) {
      writeImage(out, part);
    }
  }
}

void PageHeader::writeImage(OutputBuffer& out, const Part& part) const {
  const std::string id = pictureRelation(picture_);
  const std::string_view blank = settings_.text("header").empty() ? "" : "<w:t xml:space=\"preserve\"> </w:t>";
  put(out, "<w:r>");
  put(out, isRightToLeft_ ? blank : "");
  writeDrawing(out, *image_.picture, {id, 1, {}, image_.widthPt}, {part.textWidth / 2, imageHeight_});
  put(out, isRightToLeft_ ? "" : blank);
  put(out, "</w:r>");
}

}  // namespace scrivalen::document::docx

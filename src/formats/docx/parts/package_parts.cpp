#include "formats/docx/parts/package_parts.h"

#include "formats/docx/parts/relations.h"
#include "formats/docx/text/run_style.h"
#include "formats/docx/xml.h"
#include "text/calendar.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {
namespace {

std::string padded(std::int64_t number, std::size_t digits) {
  const std::string text = std::to_string(number);
  return std::string(digits - std::min(digits, text.size()), '0') + text;
}

// As XML Schema has it (W3CDTF).
std::string timeText(std::int64_t seconds) {
  const CalendarTime time = calendarTimeOf(seconds);
  return joined({padded(time.date.year, 4), "-", padded(time.date.month, 2), "-", padded(time.date.day, 2), "T",
                 padded(time.hour, 2), ":", padded(time.minute, 2), ":", padded(time.second, 2), "Z"});
}

void writeElement(OutputBuffer& out, std::string_view name, std::string_view text) {
  if (!text.empty()) {
    put(out, "<");
    put(out, name);
    put(out, ">");
    putContent(out, text);
    put(out, "</");
    put(out, name);
    put(out, ">");
  }
}

void writeTime(OutputBuffer& out, std::string_view name, std::string_view time) {
  put(out, "<");
  put(out, name);
  put(out, " xsi:type=\"dcterms:W3CDTF\">");
  put(out, time);
  put(out, "</");
  put(out, name);
  put(out, ">");
}

void writeCoreProperties(OutputBuffer& out, const FormatSettings& settings) {
  put(out, kXmlStart);
  put(out,
      "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\""
      " xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\""
      " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">");
  writeElement(out, "dc:title", settings.text("title"));
  writeElement(out, "dc:subject", settings.text("subject"));
  writeElement(out, "dc:creator", settings.text("author"));
  writeElement(out, "cp:keywords", settings.text("keywords"));
  writeElement(out, "cp:lastModifiedBy", settings.text("author"));
  const std::string time = timeText(settings.clock());
  writeTime(out, "dcterms:created", time);
  writeTime(out, "dcterms:modified", time);
  writeElement(out, "dc:language", settings.text("language"));
  put(out, "</cp:coreProperties>\n");
}

void writeCustomProperties(OutputBuffer& out, const FormatSettings& settings) {
  constexpr std::int64_t kFirst = 2;  // the numbers before it are reserved
  put(out, kXmlStart);
  put(out,
      "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/custom-properties\""
      " xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\">");
  std::int64_t number = kFirst;
  for (const auto& [name, value] : settings.properties()) {
    put(out, "<property fmtid=\"{D5CDD505-2E9C-101B-9397-08002B2CF9AE}\" pid=\"", number++, "\" name=\"");
    putValue(out, name);
    put(out, "\"><vt:lpwstr>");
    putContent(out, value);
    put(out, "</vt:lpwstr></property>");
  }
  put(out, "</Properties>\n");
}

std::string archiveRelations(bool hasCustomProperties) {
  std::string xml(kXmlStart);
  xml.append(kRelationsStart)
      .append(relation("rId1", "officeDocument", "word/document.xml"))
      .append(
          "<Relationship Id=\"rId2\" "
          "Type=\"http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties\" "
          "Target=\"docProps/core.xml\"/>");
  if (hasCustomProperties) {
    xml += relation("rId3", "custom-properties", "docProps/custom.xml");
  }
  return xml.append(kRelationsEnd);
}

void writePictures(ZipWriter& archive, WaitingPictures& pictures) {
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    archive.addStored(joined({"word/", picturePart(i, pictures.format(i))}), pictures.read(i));
  }
}

void writeRelations(OutputBuffer& out, const PageHeader& header, const WaitingPictures& pictures,
                    const LookPartNames& lookParts) {
  put(out, kXmlStart);
  put(out, kRelationsStart);
  put(out, relation("rId1", "styles", "styles.xml"));
  put(out, relation("rId2", "numbering", "numbering.xml"));
  put(out, relation("rId3", "settings", "settings.xml"));
  put(out, lookParts.theme ? relation("rId4", "theme", kThemePart) : std::string());
  put(out, lookParts.fonts ? relation("rId5", "fontTable", kFontsPart) : std::string());
  for (std::size_t i = 0; i < header.size(); ++i) {
    put(out, relation(headerRelation(i), header.isFooter(i) ? "footer" : "header", headerPart(i)));
  }
  for (std::size_t i = 0; i < pictures.size(); ++i) {
    put(out, relation(pictureRelation(i), "image", picturePart(i, pictures.format(i))));
  }
  put(out, kRelationsEnd);
}

// The colours of a theme that text, backgrounds and links have.
constexpr std::string_view kColorMapping =
    "<w:clrSchemeMapping w:bg1=\"light1\" w:t1=\"dark1\" w:bg2=\"light2\" w:t2=\"dark2\" w:accent1=\"accent1\""
    " w:accent2=\"accent2\" w:accent3=\"accent3\" w:accent4=\"accent4\" w:accent5=\"accent5\" w:accent6=\"accent6\""
    " w:hyperlink=\"hyperlink\" w:followedHyperlink=\"followedHyperlink\"/>";

void writeType(OutputBuffer& out, std::string_view part, std::string_view type) {
  put(out, "<Override PartName=\"/");
  put(out, part);
  put(out, "\" ContentType=\"application/vnd.openxmlformats-");
  put(out, type);
  put(out, "+xml\"/>");
}

void writeTypes(OutputBuffer& out, const PageHeader& header, bool hasCustomProperties, const LookPartNames& lookParts) {
  put(out, kXmlStart);
  put(out,
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Default Extension=\"png\" ContentType=\"image/png\"/><Default Extension=\"jpeg\" ContentType=\"image/jpeg\"/>");
  writeType(out, "docProps/core.xml", "package.core-properties");
  if (hasCustomProperties) {
    writeType(out, "docProps/custom.xml", "officedocument.custom-properties");
  }
  writeType(out, "word/document.xml", "officedocument.wordprocessingml.document.main");
  writeType(out, "word/styles.xml", "officedocument.wordprocessingml.styles");
  writeType(out, "word/numbering.xml", "officedocument.wordprocessingml.numbering");
  writeType(out, "word/settings.xml", "officedocument.wordprocessingml.settings");
  if (lookParts.theme) {
    writeType(out, joined({"word/", kThemePart}), "officedocument.theme");
  }
  if (lookParts.fonts) {
    writeType(out, joined({"word/", kFontsPart}), "officedocument.wordprocessingml.fontTable");
  }
  for (std::size_t i = 0; i < header.size(); ++i) {
    const std::string_view kind = header.isFooter(i) ? "footer" : "header";
    writeType(out, joined({"word/", headerPart(i)}), joined({"officedocument.wordprocessingml.", kind}));
  }
  put(out, "</Types>\n");
}

}  // namespace

void writeProperties(ZipWriter& archive, const FormatSettings& settings) {
  const bool hasCustomProperties = !settings.properties().empty();
  archive.addEntry("_rels/.rels", archiveRelations(hasCustomProperties));
  archive.beginEntry("docProps/core.xml");
  writeCoreProperties(archive.content(), settings);
  archive.endEntry();
  if (hasCustomProperties) {
    archive.beginEntry("docProps/custom.xml");
    writeCustomProperties(archive.content(), settings);
    archive.endEntry();
  }
}

// The mode of compatibility is that of Word 2013 and later; without it Word lays out as Word 2007 did.
void writeSettings(ZipWriter& archive, const FormatSettings& settings, const LookPartNames& lookParts) {
  archive.beginEntry("word/settings.xml");
  OutputBuffer& out = archive.content();
  put(out, kXmlStart);
  put(out, "<w:settings");
  put(out, kNamespaces);
  put(out,
      "<w:defaultTabStop w:val=\"720\"/><w:characterSpacingControl w:val=\"doNotCompress\"/><w:compat>"
      "<w:compatSetting w:name=\"compatibilityMode\" w:uri=\"http://schemas.microsoft.com/office/word\" w:val=\"15\"/>"
      "</w:compat>");
  if (const std::string_view language = languageValue(settings.text("language")); !language.empty()) {
    put(out, joined({"<w:themeFontLang w:val=\"", language, "\"/>"}));
  }
  put(out, lookParts.theme ? kColorMapping : "");
  put(out, "</w:settings>\n");
  archive.endEntry();
}

void writeLists(ZipWriter& archive, const FormatSettings& settings, const PageHeader& header, WaitingPictures& pictures,
                const LookPartNames& lookParts) {
  writePictures(archive, pictures);
  archive.beginEntry("word/_rels/document.xml.rels");
  writeRelations(archive.content(), header, pictures, lookParts);
  archive.endEntry();
  archive.beginEntry("[Content_Types].xml");
  writeTypes(archive.content(), header, !settings.properties().empty(), lookParts);
  archive.endEntry();
}

}  // namespace scrivalen::document::docx

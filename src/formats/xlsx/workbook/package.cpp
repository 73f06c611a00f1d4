#include "formats/xlsx/workbook/package.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "formats/xlsx/workbook/relations.h"
#include "text/calendar.h"

#include <cstdio>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {
namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr std::string_view kMain = "application/vnd.openxmlformats-officedocument.spreadsheetml.";

void appendOverride(std::string& out, const std::string& part, std::string_view type, std::string_view suffix) {
  out.append("<Override PartName=\"/").append(part).append("\" ContentType=\"").append(type).append(suffix);
  out.append("\"/>");
}

std::string contentTypes(const WorkbookContent& content, bool hasProperties) {
  std::string out(kDeclaration);
  out.append(
      "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
      "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
      "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
      "<Default Extension=\"png\" ContentType=\"image/png\"/>"
      "<Default Extension=\"jpeg\" ContentType=\"image/jpeg\"/>"
      "<Default Extension=\"vml\" ContentType=\"application/vnd.openxmlformats-officedocument.vmlDrawing\"/>");
  appendOverride(out, "xl/workbook.xml", kMain, "sheet.main+xml");
  for (std::size_t i = 1; i <= content.sheets.size(); ++i) {
    appendOverride(out, "xl/worksheets/sheet" + std::to_string(i) + ".xml", kMain, "worksheet+xml");
  }
  for (std::size_t i = 1; i <= content.drawings; ++i) {
    appendOverride(out, "xl/drawings/drawing" + std::to_string(i) + ".xml",
                   "application/vnd.openxmlformats-officedocument.drawing+xml", "");
  }
  appendOverride(out, "xl/styles.xml", kMain, "styles+xml");
  appendOverride(out, "docProps/core.xml", "application/vnd.openxmlformats-package.core-properties+xml", "");
  appendOverride(out, "docProps/app.xml", "application/vnd.openxmlformats-officedocument.extended-properties+xml", "");
  if (hasProperties) {
    appendOverride(out, "docProps/custom.xml", "application/vnd.openxmlformats-officedocument.custom-properties+xml",
                   "");
  }
  return out.append("</Types>");
}

void appendDefinedName(std::string& out, std::string_view name, std::size_t sheet, bool isHidden,
                       const std::string& range) {
  out.append("<definedName name=\"").append(name).append("\" localSheetId=\"").append(std::to_string(sheet));
  out.append(isHidden ? "\" hidden=\"1\">" : "\">");
  appendXml(out, range);
  out.append("</definedName>");
}

std::string definedNames(const WorkbookContent& content) {
  std::string out;
  for (std::size_t i = 0; i < content.sheets.size(); ++i) {
    const SheetFacts& sheet = content.sheets[i];
    if (sheet.filter) {
      appendDefinedName(out, "_xlnm._FilterDatabase", i, true,
                        quotedSheetName(sheet.name) + "!" + fixedRangeName(*sheet.filter));
    }
    if (sheet.titleRows) {
      appendDefinedName(out, "_xlnm.Print_Titles", i, false,
                        quotedSheetName(sheet.name) + "!$" + std::to_string(sheet.titleRows->firstRow + 1) + ":$" +
                            std::to_string(sheet.titleRows->lastRow + 1));
    }
  }
  out.append(content.places);
  return out.empty() ? out : "<definedNames>" + out + "</definedNames>";
}

std::string workbook(const WorkbookContent& content) {
  std::string out(kDeclaration);
  out.append(
      "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
      "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
      "<bookViews><workbookView xWindow=\"240\" yWindow=\"15\" windowWidth=\"16095\" windowHeight=\"9660\"/>"
      "</bookViews><sheets>");
  std::size_t number = 0;
  for (const SheetFacts& sheet : content.sheets) {
    const std::string digits = std::to_string(++number);
    out.append("<sheet name=\"");
    appendXml(out, sheet.name);
    out.append("\" sheetId=\"").append(digits).append("\" r:id=\"rId").append(digits).append("\"/>");
  }
  return out.append("</sheets>").append(definedNames(content)).append("</workbook>");
}

// W3CDTF has years of four digits.
std::string timeText(std::int64_t seconds) {
  constexpr std::int64_t kFirst = daysOf({1, 1, 1}) * kSecondsPerDay;
  constexpr std::int64_t kEnd = daysOf({10000, 1, 1}) * kSecondsPerDay;
  const CalendarTime time = calendarTimeOf(seconds >= kFirst && seconds < kEnd ? seconds : 0);
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02dZ", static_cast<int>(time.date.year), time.date.month,
                time.date.day, time.hour, time.minute, time.second);
  return text;
}

void appendProperty(std::string& out, std::string_view element, std::string_view text) {
  if (!text.empty()) {
    out.append("<").append(element).append(">");
    appendXml(out, text);
    out.append("</").append(element).append(">");
  }
}

std::string coreProperties(const WorkbookProperties& properties) {
  std::string out(kDeclaration);
  out.append(
      "<cp:coreProperties xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
      "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
      "xmlns:dcmitype=\"http://purl.org/dc/dcmitype/\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">");
  appendProperty(out, "dc:title", properties.title);
  appendProperty(out, "dc:subject", properties.subject);
  appendProperty(out, "dc:creator", properties.author);
  appendProperty(out, "cp:keywords", properties.keywords);
  const std::string time = timeText(properties.created);
  out.append("<dcterms:created xsi:type=\"dcterms:W3CDTF\">").append(time).append("</dcterms:created>");
  out.append("<dcterms:modified xsi:type=\"dcterms:W3CDTF\">").append(time).append("</dcterms:modified>");
  appendProperty(out, "dc:language", properties.language);
  return out.append("</cp:coreProperties>");
}

std::string customProperties(const WorkbookProperties& properties) {
  constexpr int kFirstId = 2;
  std::string out(kDeclaration);
  out.append(
      "<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/custom-properties\" "
      "xmlns:vt=\"http://schemas.openxmlformats.org/officeDocument/2006/docPropsVTypes\">");
  int id = kFirstId;
  for (const auto& [name, value] : properties.own) {
    out.append("<property fmtid=\"{D5CDD505-2E9C-101B-9397-08002B2CF9AE}\" pid=\"").append(std::to_string(id++));
    out.append("\" name=\"");
    appendXml(out, name);
    out.append("\"><vt:lpwstr>");
    appendXstring(out, value);
    out.append("</vt:lpwstr></property>");
  }
  return out.append("</Properties>");
}

}  // namespace

void writePackage(ZipWriter& zip, const WorkbookContent& content, const WorkbookProperties& properties) {
  const bool hasProperties = !properties.own.empty();
  zip.addEntry("xl/styles.xml", content.styles);
  zip.addEntry("xl/workbook.xml", workbook(content));
  std::vector<Relation> relations;
  for (std::size_t i = 1; i <= content.sheets.size(); ++i) {
    relations.push_back({"worksheet", "worksheets/sheet" + std::to_string(i) + ".xml"});
  }
  relations.push_back({"styles", "styles.xml"});
  zip.addEntry("xl/_rels/workbook.xml.rels", relationsXml(relations));
  zip.addEntry("docProps/core.xml", coreProperties(properties));
  zip.addEntry("docProps/app.xml",
               std::string(kDeclaration)
                   .append("<Properties xmlns=\"http://schemas.openxmlformats.org/officeDocument/2006/"
                           "extended-properties\"><Application>Scrivalen</Application></Properties>"));
  std::vector<Relation> package{{"officeDocument", "xl/workbook.xml"},
                                {"core-properties", "docProps/core.xml"},
                                {"extended-properties", "docProps/app.xml"}};
  if (hasProperties) {
    zip.addEntry("docProps/custom.xml", customProperties(properties));
    package.push_back({"custom-properties", "docProps/custom.xml"});
  }
  zip.addEntry("_rels/.rels", relationsXml(package));
  zip.addEntry("[Content_Types].xml", contentTypes(content, hasProperties));
}

}  // namespace scrivalen::xlsx

#include "formats/xlsx/document/looks.h"

#include "document/model/writer.h"
#include "formats/xlsx/excel_style.h"
#include "formats/xlsx/workbook/cell_text.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/utf.h"

#include <cmath>
#include <string>

namespace scrivalen::xlsx {
namespace {

constexpr std::uint32_t kHeaderFill = 0xF2F2F2;
constexpr double kWidestDigit = 1.3;  // of all common fonts, in digits of the usual one

// The style sheet, whose bytes are UTF-8. Its byte-order mark stays, because it is reported as no part of a style
// sheet.
std::wstring readStyleSheet(std::string_view setting) {
  const std::wstring path = widePath(setting);
  std::string bytes;
  const File file = openForReading(path);
  const bool isRead = file && readRest(file, [&bytes](std::string_view part) {
                        bytes.append(part);
                        return true;
                      });
  if (!isRead) {
    const std::string reason = toUtf8(systemErrorText(lastSystemError()));
    throw document::OutputFailure(document::Status::FileError,
                                  "cannot read the style sheet '" + toUtf8(path) + "': " + reason);
  }
  return toWide(bytes);
}

std::string familyOf(std::string_view name, document::OutputWarnings& warnings) {
  constexpr std::size_t kLongest = 31;  // UTF-16 code units
  std::string family = escapedText(name);
  const std::size_t kept = cutToUnits(family, kLongest).size();
  if (kept < family.size()) {
    warnings.add(document::WarningCode::TextCut, "the name of a font cut at 31 characters");
    family.resize(kept);
  }
  return family;
}

void apply(const CellStyle& style, CellFormat& format) {
  if (style.fontSize) {
    format.font.size = static_cast<std::uint16_t>(std::lround(*style.fontSize * 100));
  }
  format.font.color = style.color.value_or(format.font.color);
  format.fill = style.background.value_or(format.fill);
}

// A style sheet has no word for rows that it does not freeze, so it follows a rule that no other sets by chance.
constexpr std::uint32_t kNoRule = 999;
constexpr std::wstring_view kNoRuleText = L"sheet { freeze-rows: 999 }\n";

}  // namespace

Looks Looks::of(const document::FormatSettings& settings, document::OutputWarnings& warnings, CellFormats& formats) {
  Looks looks;
  looks.header.font.flags = Font::Bold;
  looks.header.font.family = Family::Header;
  looks.header.fill = kHeaderFill;
  looks.header.isRuled = true;
  if (const std::string_view font = settings.text("font"); !font.empty()) {
    const std::string family = familyOf(font, warnings);
    formats.setFamily(Family::Body, family);
    formats.setFamily(Family::Header, family);
    looks.digitWidth = kWidestDigit;
  }
  if (const std::string_view path = settings.text("styles"); !path.empty()) {
    const std::wstring text = readStyleSheet(path);
    const SheetStyle style = readStyle(std::wstring(kNoRuleText) + text, [&](const std::wstring& problem) {
      warnings.add(document::WarningCode::SomethingLeftOut, "the style sheet is not understood: " + toUtf8(problem));
    });
    apply(style.cell, looks.body);
    apply(style.bold, looks.header);
    looks.isHeadingSized = !style.bold.fontSize;
    if (style.cell.fontFamily) {
      formats.setFamily(Family::Body, familyOf(toUtf8(*style.cell.fontFamily), warnings));
      looks.digitWidth = kWidestDigit;
    }
    if (style.bold.fontFamily) {
      formats.setFamily(Family::Header, familyOf(toUtf8(*style.bold.fontFamily), warnings));
    }
    looks.columnWidth = style.columnWidth;
    looks.frozenRows = style.frozenRows == kNoRule ? std::nullopt : std::optional(style.frozenRows);
  }
  CellFormat usual;
  usual.font.size = looks.body.font.size;
  formats.setUsual(usual);
  return looks;
}

}  // namespace scrivalen::xlsx

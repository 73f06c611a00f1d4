#include "formats/xlsx/document/sheet/page_setup.h"

#include "document/settings/page.h"
#include "document/settings/running_text.h"
#include "formats/xlsx/workbook/cell_text.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

namespace scrivalen::xlsx {
namespace {

using document::RunningField;
using document::RunningPiece;

constexpr double kPointsPerInch = 72;
constexpr std::size_t kLongestRunningText = 255;  // UTF-16 code units

struct PaperCode {
  std::string_view name;
  int code;
};

constexpr PaperCode kPaperCodes[] = {{"Letter", 1}, {"Legal", 5}, {"A3", 8}, {"A4", 9}, {"A5", 11}};

std::string numberText(double value) {
  char text[32];
  const int hundredths = static_cast<int>(value * 10000 + 0.5);
  std::snprintf(text, sizeof text, "%d.%04d", hundredths / 10000, hundredths % 10000);
  std::string number(text);
  number.erase(number.find_last_not_of('0') + 1);
  return number.ends_with('.') ? number.substr(0, number.size() - 1) : number;
}

std::string marginsXml(const document::Page& page) {
  constexpr double kEdgeShare = 0.4;  // of a margin, from the paper's edge to the header or footer
  const std::pair<std::string_view, double> sides[] = {{"left", page.leftPt},
                                                       {"right", page.rightPt},
                                                       {"top", page.topPt},
                                                       {"bottom", page.bottomPt},
                                                       {"header", page.topPt * kEdgeShare},
                                                       {"footer", page.bottomPt * kEdgeShare}};
  std::string out("<pageMargins");
  for (const auto& [name, points] : sides) {
    out.append(" ").append(name).append("=\"").append(numberText(points / kPointsPerInch)).append("\"");
  }
  return out.append("/>");
}

std::string paperAttributes(const document::FormatSettings& settings) {
  const auto paper = document::paperOf(settings.text("paper"));
  if (!paper) {
    return {};
  }
  const auto* const known = std::find_if(std::begin(kPaperCodes), std::end(kPaperCodes),
                                         [&](const PaperCode& code) { return code.name == paper->name; });
  if (known != std::end(kPaperCodes)) {
    return std::string(" paperSize=\"").append(std::to_string(known->code)).append("\"");
  }
  return std::string(" paperHeight=\"")
      .append(numberText(paper->heightMm))
      .append("mm\" paperWidth=\"")
      .append(numberText(paper->widthMm))
      .append("mm\"");
}

std::string codeOf(const RunningPiece& piece, const document::FormatSettings& settings) {
  const auto quoted = [](std::string_view text) {
    std::string result;
    for (const char c : text) {
      result.append(c == '&' ? "&" : "").push_back(c);
    }
    return result;
  };
  switch (piece.field) {
    case RunningField::Page: return "&P";
    case RunningField::Pages: return "&N";
    case RunningField::Title: return quoted(settings.text("title"));
    case RunningField::Date: return quoted(document::shownDate(settings));
    case RunningField::Section: return "&A";
    case RunningField::None: break;
  }
  return quoted(piece.text);
}

// ECMA-376, 18.3.1.46.
std::string runningCodes(const document::FormatSettings& settings, std::string_view name, bool hasPicture,
                         document::OutputWarnings& warnings) {
  constexpr std::string_view kPlaces[] = {"&L", "&C", "&R"};
  const document::RunningText pieces = document::runningTextOf(settings.text(name));
  std::string codes;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const bool isAtPicture = hasPicture && i == 0;
    codes.append(pieces[i].empty() && !isAtPicture ? "" : kPlaces[i]).append(isAtPicture ? "&G" : "");
    codes.append(isAtPicture && !pieces[i].empty() ? " " : "");
    for (const RunningPiece& piece : pieces[i]) {
      codes.append(codeOf(piece, settings));
    }
  }
  const std::string_view kept = cutToUnits(codes, kLongestRunningText);
  if (kept.size() < codes.size()) {
    warnings.add(document::WarningCode::TextCut, std::string("a ").append(name).append(" cut at 255 characters"));
  }
  codes.resize(kept.size());
  return codes;
}

}  // namespace

PageSetup::PageSetup(const document::FormatSettings& settings, document::OutputWarnings& warnings)
    : picture_(settings, warnings),
      isLandscapeSet_(settings.isSet("landscape")),
      isLandscape_(settings.flag("landscape")) {
  const document::Page page = document::pageOf(settings);
  const double width = std::min(page.widthPt, page.heightPt);
  textWidthPt_ = width - page.leftPt - page.rightPt;
  margins_ = marginsXml(page);
  paper_ = paperAttributes(settings);
  const std::string header = runningCodes(settings, "header", picture_.exists(), warnings);
  const std::string footer = runningCodes(settings, "footer", false, warnings);
  const auto append = [this](std::string_view element, const std::string& codes) {
    if (!codes.empty()) {
      running_.append("<").append(element).append(">");
      appendXml(running_, codes);
      running_.append("</").append(element).append(">");
    }
  };
  append("oddHeader", header);
  append("oddFooter", footer);
}

bool PageSetup::isLandscape(double widthPt) const {
  constexpr double kLeastScale = 0.8;
  return isLandscapeSet_ ? isLandscape_ : isLandscape_ || widthPt * kLeastScale > textWidthPt_;
}

std::string PageSetup::xml(bool isLandscape) const {
  std::string out = margins_;
  out.append("<pageSetup").append(paper_).append(" fitToHeight=\"0\" orientation=\"");
  out.append(isLandscape ? "landscape" : "portrait").append("\"/>");
  if (!running_.empty()) {
    out.append("<headerFooter>").append(running_).append("</headerFooter>");
  }
  return out;
}

}  // namespace scrivalen::xlsx

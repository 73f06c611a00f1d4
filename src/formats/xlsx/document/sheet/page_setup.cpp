#include "formats/xlsx/document/sheet/page_setup.h"

#include "document/settings/page.h"
#include "document/settings/running_text.h"
#include "formats/xlsx/workbook/cell_text.h"
#include "formats/xlsx/workbook/decimal_text.h"
#include "text/utf.h"

#include <algorithm>
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

std::string numberText(double value) { return shortDecimalText(value, 4); }

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

// The codes of a header or footer, up to the longest. Each code and each character is there as a whole or not at all.
class RunningCodes {
 public:
  void addCode(std::string_view code) { add(code, code.size()); }
  /// A code that stands for a number, to which readers add what follows with a sign.
  void addNumber(std::string_view code);
  void addText(std::string_view text);

  const std::string& codes() const { return codes_; }
  bool isCut() const { return isCut_; }

 private:
  void add(std::string_view part, std::size_t units);

  std::string codes_;
  std::size_t units_ = 0;
  bool isCut_ = false;
  bool isAfterNumber_ = false;
};

void RunningCodes::addNumber(std::string_view code) {
  addCode(code);
  isAfterNumber_ = true;
}

void RunningCodes::addText(std::string_view text) {
  addCode(isAfterNumber_ && (text.starts_with('-') || text.starts_with('+')) ? " " : "");
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    const char* const begin = at;
    char32_t c = kReplacement;
    nextUtf8(at, end, c);
    if (c == U'&') {
      addCode("&&");
    } else {
      add({begin, static_cast<std::size_t>(at - begin)}, unitsOf(c));
    }
  }
}

void RunningCodes::add(std::string_view part, std::size_t units) {
  isAfterNumber_ = isAfterNumber_ && part.empty();
  isCut_ = isCut_ || units_ + units > kLongestRunningText;
  if (!isCut_) {
    codes_.append(part);
    units_ += units;
  }
}

void addPiece(RunningCodes& codes, const RunningPiece& piece, const document::FormatSettings& settings) {
  switch (piece.field) {
    case RunningField::Page: return codes.addNumber("&P");
    case RunningField::Pages: return codes.addNumber("&N");
    case RunningField::Title: return codes.addText(settings.text("title"));
    case RunningField::Date: return codes.addText(document::shownDate(settings));
    case RunningField::Section: return codes.addCode("&A");
    case RunningField::None: return codes.addText(piece.text);
  }
}

// ECMA-376, 18.3.1.46.
std::string runningCodes(const document::FormatSettings& settings, std::string_view name, bool hasPicture,
                         document::OutputWarnings& warnings) {
  constexpr std::string_view kPlaces[] = {"&L", "&C", "&R"};
  const document::RunningText pieces = document::runningTextOf(settings.text(name));
  RunningCodes codes;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    const bool isAtPicture = hasPicture && i == 0;
    codes.addCode(pieces[i].empty() && !isAtPicture ? "" : kPlaces[i]);
    codes.addCode(isAtPicture ? "&G" : "");
    codes.addCode(isAtPicture && !pieces[i].empty() ? " " : "");
    for (const RunningPiece& piece : pieces[i]) {
      addPiece(codes, piece, settings);
    }
  }
  if (codes.isCut()) {
    warnings.add(document::WarningCode::TextCut, std::string("a ").append(name).append(" cut at 255 characters"));
  }
  return codes.codes();
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
      appendXstring(running_, codes);
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

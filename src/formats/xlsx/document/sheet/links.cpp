#include "formats/xlsx/document/sheet/links.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "text/address.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>

namespace scrivalen::xlsx {
namespace {

constexpr std::size_t kLongestPlaceName = 200;  // below the 255 that spreadsheet programs accept
constexpr std::size_t kLongestTitle = 255;      // UTF-16 code units

}  // namespace

const std::string& NamedPlaces::nameOf(std::string_view id) {
  const auto known = names_.find(id);
  return known != names_.end() ? known->second : names_.emplace(std::string(id), newName(id)).first->second;
}

// It begins with an underscore, so that it is not the name of a cell.
std::string NamedPlaces::newName(std::string_view id) {
  std::string base("_");
  for (const char c : id.substr(0, kLongestPlaceName)) {
    base.push_back(isAsciiLetter(c) || isAsciiDigit(c) ? c : '_');
  }
  std::string name = base;
  for (std::size_t number = 2; !usedNames_.insert(asciiLowered(std::string_view(name))).second; ++number) {
    name = std::string(base).append("_").append(std::to_string(number));
  }
  return name;
}

void NamedPlaces::add(std::string_view id, std::string cell) {
  if (!id.empty() && !cells_.contains(id)) {
    cells_.emplace(std::string(id), std::move(cell));
  }
}

std::string NamedPlaces::xml() const {
  std::string out;
  for (const auto& [id, name] : names_) {
    const auto cell = cells_.find(id);
    if (cell != cells_.end()) {
      out.append("<definedName name=\"").append(name).append("\">");
      appendXml(out, cell->second);
      out.append("</definedName>");
    }
  }
  return out;
}

// What follows a number sign in an address of elsewhere is an attribute of its own.
void SheetLinks::add(const std::string& cell, std::string_view address, std::string_view title) {
  ++count_;
  links_.append("<hyperlink ref=\"").append(cell).append("\"");
  if (address.starts_with('#')) {
    links_.append(" location=\"").append(places_.nameOf(address.substr(1)));
  } else {
    const std::size_t sign = std::min(address.find('#'), address.size());
    relations_.push_back({"hyperlink", asciiAddress(toWide(address.substr(0, sign))), true});
    links_.append(" r:id=\"rId").append(std::to_string(relations_.size()));
    if (sign + 1 < address.size()) {
      links_.append("\" location=\"");
      appendXml(links_, address.substr(sign + 1));
    }
  }
  if (!title.empty()) {
    links_.append("\" tooltip=\"");
    appendXml(links_, cutToUnits(title, kLongestTitle));
  }
  links_.append("\"/>");
}

std::string SheetLinks::xml() const {
  return links_.empty() ? std::string() : std::string("<hyperlinks>").append(links_).append("</hyperlinks>");
}

}  // namespace scrivalen::xlsx

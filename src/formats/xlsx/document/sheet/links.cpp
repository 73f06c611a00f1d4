#include "formats/xlsx/document/sheet/links.h"

#include "formats/xlsx/workbook/cell_text.h"
#include "text/address.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <utility>

namespace scrivalen::xlsx {
namespace {

constexpr std::size_t kLongestPlaceName = 200;  // below the 255 that spreadsheet programs accept

struct SplitAddress {
  std::string target;      // as a URL has it
  std::string_view place;  // after a number sign
};

constexpr std::string_view kFileScheme = "file:///";

bool isWindowsPath(std::string_view address) {
  return address.starts_with("\\\\") || (address.size() > 2 && isAsciiLetter(address[0]) &&
                                         (address.substr(1, 2) == ":\\" || address.substr(1, 2) == ":/"));
}

// Spreadsheet programs write the path of a file in Windows with its backslashes, and follow no escaped ones.
std::string targetOf(std::string_view address) {
  if (!isWindowsPath(address)) {
    return asciiAddress(toWide(address));
  }
  std::string target(kFileScheme);
  for (std::size_t end = address.find('\\'); end != address.npos; end = address.find('\\')) {
    target.append(asciiAddress(toWide(address.substr(0, end)))).push_back('\\');
    address.remove_prefix(end + 1);
  }
  return target.append(asciiAddress(toWide(address)));
}

SplitAddress split(std::string_view address) {
  const std::size_t sign = std::min(address.find('#'), address.size());
  return {targetOf(address.substr(0, sign)), address.substr(std::min(sign + 1, address.size()))};
}

}  // namespace

const std::string& NamedPlaces::nameOf(std::string_view id) {
  const auto known = names_.find(id);
  return known != names_.end() ? known->second : names_.emplace(std::string(id), newName(id)).first->second;
}

// It begins with an underscore, so that it is not the name of a cell, and readers take no part of it for an escaped
// character.
std::string NamedPlaces::newName(std::string_view id) {
  std::string base("_");
  for (const char c : id.substr(0, kLongestPlaceName)) {
    base.push_back(isAsciiLetter(c) || isAsciiDigit(c) ? c : '_');
  }
  for (std::size_t at = 0; at < base.size(); ++at) {
    if (beginsWithEscape(std::string_view(base).substr(at))) {
      base[at + 1] = 'X';
    }
  }
  const std::string lowered = asciiLowered(std::string_view(base));
  if (usedNames_.insert(lowered).second) {
    return base;
  }
  for (std::size_t& number = numbers_.try_emplace(lowered, 1).first->second;;) {
    const std::string suffix = std::string("_").append(std::to_string(++number));
    if (usedNames_.insert(lowered + suffix).second) {
      return base + suffix;
    }
  }
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

bool SheetLinks::takes(std::string_view address) const {
  constexpr std::size_t kLongestEscape = 3;  // of a byte, as in "%C3"
  if (count_ >= kMost || address.size() > kLongestAddress) {
    return false;
  }
  if (address.starts_with('#') || address.size() * kLongestEscape + kFileScheme.size() <= kLongestAddress) {
    return true;
  }
  const SplitAddress parts = split(address);
  return parts.target.size() + parts.place.size() < kLongestAddress;
}

// What follows a number sign in an address of elsewhere is an attribute of its own.
void SheetLinks::add(const std::string& cell, std::string_view address, std::string_view title) {
  ++count_;
  links_.append("<hyperlink ref=\"").append(cell).append("\"");
  if (address.starts_with('#')) {
    links_.append(" location=\"").append(places_.nameOf(address.substr(1)));
  } else {
    SplitAddress parts = split(address);
    relations_.push_back({"hyperlink", std::move(parts.target), true});
    links_.append(" r:id=\"rId").append(std::to_string(relations_.size()));
    if (!parts.place.empty()) {
      links_.append("\" location=\"");
      appendXstring(links_, parts.place);
    }
  }
  if (!title.empty()) {
    links_.append("\" tooltip=\"");
    appendXstring(links_, title);
  }
  links_.append("\"/>");
}

std::string SheetLinks::xml() const {
  return links_.empty() ? std::string() : std::string("<hyperlinks>").append(links_).append("</hyperlinks>");
}

}  // namespace scrivalen::xlsx

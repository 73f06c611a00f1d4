#include "formats/xlsx/workbook_check.h"

#include "formats/xlsx/archive.h"
#include "text/fmt.h"
#include "text/utf.h"

#include <algorithm>
#include <string_view>

namespace scrivalen {
namespace {

constexpr std::string_view kSheets = "xl/worksheets/";

std::string nameOfSheet(std::size_t number) { return std::string(kSheets) + "sheet" + std::to_string(number) + ".xml"; }

// Whether the last tag closes the root element.
bool isWholeXml(std::string_view text) {
  text = text.substr(0, text.find_last_not_of("\r\n") + 1);
  const std::size_t root = text.find("?>");
  const std::size_t begin = root == std::string_view::npos ? root : text.find('<', root);
  if (!text.starts_with("<?xml ") || begin == std::string_view::npos) {
    return false;
  }
  const std::string_view element = text.substr(begin + 1);
  const std::string_view name = element.substr(0, element.find_first_of(" />"));
  return text.ends_with("</" + std::string(name) + ">") ||
         (element.find('>') == element.size() - 1 && text.ends_with("/>"));
}

std::wstring defectOf(NativeFile file, const std::vector<std::uint64_t>& sheetSizes) {
  const auto members = membersOf(file);
  if (!members) {
    return L"Its directory is missing.";
  }
  for (std::size_t i = 0; i < sheetSizes.size(); ++i) {
    const std::string name = nameOfSheet(i + 1);
    const auto sheet =
        std::find_if(members->begin(), members->end(), [&](const auto& member) { return member.name == name; });
    if (sheet == members->end() || sheet->size != sheetSizes[i]) {
      return FMT::Format(L"Sheet %d has %d of %d bytes.", i + 1, sheet == members->end() ? 0 : sheet->size,
                         sheetSizes[i]);
    }
  }
  for (const ArchiveMember& member : *members) {
    if (!std::string_view(member.name).starts_with(kSheets) && !isWholeXml(unpacked(file, member).value_or(""))) {
      return FMT::Format(L"Its part '%s' is cut.", toWide(member.name));
    }
  }
  return {};
}

}  // namespace

std::wstring workbookDefect(const std::wstring& path, const std::vector<std::uint64_t>& sheetSizes) {
  const File file = openForReading(path);
  return file ? defectOf(file, sheetSizes) : L"It cannot be read again.";
}

}  // namespace scrivalen

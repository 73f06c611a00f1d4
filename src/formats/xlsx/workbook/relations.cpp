#include "formats/xlsx/workbook/relations.h"

#include "formats/xlsx/workbook/cell_text.h"

#include <cstddef>

namespace scrivalen::xlsx {

std::string relationsXml(const std::vector<Relation>& relations) {
  std::string out(
      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
      "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">");
  std::size_t id = 0;
  for (const Relation& relation : relations) {
    out.append("<Relationship Id=\"rId").append(std::to_string(++id)).append("\" Type=\"http://schemas.");
    const bool isCore = relation.type == "core-properties";
    out.append(isCore ? "openxmlformats.org/package/2006/relationships/metadata/"
                      : "openxmlformats.org/officeDocument/2006/relationships/");
    out.append(relation.type).append("\" Target=\"");
    appendXml(out, relation.target);
    out.append(relation.isExternal ? "\" TargetMode=\"External\"/>" : "\"/>");
  }
  return out.append("</Relationships>");
}

}  // namespace scrivalen::xlsx

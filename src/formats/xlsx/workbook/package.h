#pragma once

#include "formats/xlsx/workbook/cell_name.h"
#include "output/archive/zip_writer.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::xlsx {

/// What the workbook says about a sheet that is written.
struct SheetFacts {
  std::string name;
  std::optional<CellRange> filter = {};
  std::optional<CellRange> titleRows = {};
};

/// What the parts after the sheets say about them.
struct WorkbookContent {
  const std::vector<SheetFacts>& sheets;  ///< not owned
  std::size_t drawings = 0;
  std::string styles;  ///< the part with the formats
  std::string places;  ///< elements: the defined names
};

/// What the workbook says about itself. The texts are not owned, and an empty one is left out.
struct WorkbookProperties {
  std::int64_t created = 0;  ///< in seconds since 1970-01-01 UTC; a year without four digits becomes 1970
  std::string_view title = {};
  std::string_view subject = {};
  std::string_view author = {};
  std::string_view keywords = {};
  std::string_view language = {};
  std::vector<std::pair<std::string_view, std::string_view>> own = {};  ///< names and values
};

/// Writes the parts of a workbook that come after its sheets.
void writePackage(ZipWriter& zip, const WorkbookContent& content, const WorkbookProperties& properties);

}  // namespace scrivalen::xlsx

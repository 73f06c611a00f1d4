#pragma once

#include "document/document.h"
#include "formats/attribute_text.h"

#include <cstddef>
#include <string>
#include <vector>

namespace scrivalen {

/// Describes the columns of a document's table, which a host of the classic interface names and measures in its cells.
class ReportColumns {
 public:
  /// @param document  not owned; must outlive this object
  explicit ReportColumns(document::Document& document) : document_(document) {}

  void beginTable();
  void beginRow() { column_ = 0; }
  /// Takes what the next cell says about its column. The first name of a column counts; type and width are those of the
  /// first row.
  /// @param name  may be empty
  void note(const Attributes& attributes, const std::string& name);
  /// Goes past a cell.
  void pass(int span) { column_ += static_cast<std::size_t>(span); }
  void endRow();

 private:
  void describeWidths();

  document::Document& document_;
  bool isFirstRow_ = false;
  std::size_t column_ = 0;  // the next cell's
  std::vector<ColumnWidth> widths_;
  std::vector<bool> isNamed_;
};

}  // namespace scrivalen

#pragma once

#include "formats/pdf/typeset/structure/text_tags.h"
#include "formats/pdf/typeset/tables/table_row.h"

#include <cstddef>
#include <optional>

namespace scrivalen::typeset {

/// The tags of a table. Its rows are in groups, so that readers find those of a page soon and none of them is kept.
class TableTags {
 public:
  /// @param tagger  not owned; must outlive this object. Null: the document has no tags
  explicit TableTags(Tagger* tagger) : tagger_(tagger) {}

  bool areOn() const { return tagger_ != nullptr; }
  void beginTable();
  void endTable();
  /// Around the header rows of a page. Those after the first page are artifacts.
  void beginHeaders();
  void endHeaders();
  void beginRow();
  void endRow();
  /// The tags of the next cell of a row; none for an artifact.
  std::optional<TextTags> cell(const SetRow& row, const SetCell& cell, const TablePart& part);

 private:
  static constexpr std::size_t kMostRows = 64;  // of a group

  Tagger* tagger_;
  bool hasHeaders_ = false;  // the header rows have been on a page
  bool isHeader_ = false;
  bool isArtifact_ = false;
  bool hasGroup_ = false;
  std::size_t rows_ = 0;  // of the group
};

}  // namespace scrivalen::typeset

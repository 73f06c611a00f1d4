#include "formats/pdf/typeset/tables/table_tags.h"

#include "formats/pdf/typeset/file/syntax.h"

#include <string_view>

namespace scrivalen::typeset {
namespace {

std::string_view scopeOf(const SetRow& row, const SetCell& cell) {
  if (row.isHeader) {
    return "/Scope/Column";
  }
  return cell.isHeaderCell ? "/Scope/Row" : "";
}

}  // namespace

void TableTags::beginTable() {
  if (areOn()) {
    tagger_->tree().begin("Table");
    hasHeaders_ = false;
    rows_ = 0;
  }
}

void TableTags::endTable() {
  if (areOn()) {
    if (hasGroup_) {
      tagger_->tree().end();
      hasGroup_ = false;
    }
    tagger_->tree().end();
  }
}

void TableTags::beginHeaders() {
  if (!areOn()) {
    return;
  }
  isArtifact_ = hasHeaders_;
  isHeader_ = !hasHeaders_;
  hasHeaders_ = true;
  if (isArtifact_) {
    tagger_->showArtifact();
  } else {
    tagger_->tree().begin("THead");
  }
}

void TableTags::endHeaders() {
  if (isHeader_) {
    tagger_->tree().end();
  }
  isArtifact_ = isHeader_ = false;
}

void TableTags::beginRow() {
  if (!areOn() || isArtifact_) {
    return;
  }
  if (!isHeader_) {
    if (hasGroup_ && rows_ == kMostRows) {
      tagger_->tree().end();
      hasGroup_ = false;
    }
    if (!hasGroup_) {
      tagger_->tree().begin("TBody");
      hasGroup_ = true;
      rows_ = 0;
    }
    ++rows_;
  }
  tagger_->tree().begin("TR");
}

void TableTags::endRow() {
  if (areOn() && !isArtifact_) {
    tagger_->tree().end();
  }
}

std::optional<TextTags> TableTags::cell(const SetRow& row, const SetCell& cell, const TablePart& part) {
  if (!areOn() || isArtifact_) {
    return std::nullopt;
  }
  const std::string_view scope = scopeOf(row, cell);
  Element element = tagger_->tree().add(scope.empty() ? "TD" : "TH");
  const std::size_t span = part.columnsOf(cell.column, cell.endColumn);
  if (span > 1 || !scope.empty()) {
    element.texts.append("/A<</O/Table").append(scope);
    if (span > 1) {
      element.texts += "/ColSpan ";
      appendInteger(element.texts, static_cast<std::int64_t>(span));
    }
    element.texts += ">>";
  }
  return std::optional<TextTags>(std::in_place, *tagger_, std::move(element));
}

}  // namespace scrivalen::typeset

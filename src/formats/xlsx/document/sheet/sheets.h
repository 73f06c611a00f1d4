#pragma once

#include "formats/xlsx/document/sheet/sheet_names.h"
#include "formats/xlsx/document/sheet/sheet_writer.h"
#include "formats/xlsx/workbook/package.h"

#include <memory>
#include <string_view>
#include <vector>

namespace scrivalen::xlsx {

/// The sheets of a workbook, one after another.
class Sheets {
 public:
  /// @param zip, formats, page  not owned; must outlive this object
  Sheets(ZipWriter& zip, CellFormats& formats, const PageSetup& page, const SheetLimits& limits)
      : zip_(zip), formats_(formats), page_(page), limits_(limits) {}

  /// Begins a sheet; the one before ends.
  /// @param wish  its name, if it is a legal one and no other sheet's; empty: any
  SheetWriter& begin(std::string_view wish, const SheetLayout& layout);
  bool isOpen() const { return current_ != nullptr; }
  SheetWriter& current() { return *current_; }
  void end();

  const std::vector<SheetFacts>& written() const { return written_; }
  NamedPlaces& places() { return places_; }
  CellLosses& losses() { return losses_; }
  std::size_t drawings() const { return parts_.drawings; }

 private:
  ZipWriter& zip_;
  CellFormats& formats_;
  const PageSetup& page_;
  SheetLimits limits_;
  SheetNames names_;
  NamedPlaces places_;
  CellLosses losses_;
  std::unique_ptr<SheetWriter> current_;
  std::vector<SheetFacts> written_;
  PartCounts parts_;
};

}  // namespace scrivalen::xlsx

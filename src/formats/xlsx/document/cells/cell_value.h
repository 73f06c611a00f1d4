#pragma once

#include "document/model/table.h"
#include "document/model/values.h"
#include "document/settings/settings.h"
#include "formats/xlsx/workbook/cell_formats.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace scrivalen::xlsx {

/// What a cell holds.
struct CellValue {
  enum class Kind : std::uint8_t { Text, Number, Boolean };

  Kind kind = Kind::Text;
  NumberFormat format = kGeneral;
  std::string_view digits = {};  ///< of a number, or a boolean's 1 or 0, as the file has it
};

/// The number formats that the settings ask for.
class NumberFormats {
 public:
  /// @param formats  not owned; must outlive this object
  NumberFormats(const document::FormatSettings& settings, CellFormats& formats);

  bool isGrouped() const { return isGrouped_; }
  /// Writes the shortest digits that are read back as the same number. @return the end
  char* putPlain(char* out, double value) const { return plain_.number(out, value, plainFormat_); }
  /// A number with just so many decimals, 0 to 15.
  NumberFormat decimals(int count, bool isGrouped);
  NumberFormat isoDate() const { return isoDate_; }
  NumberFormat date() const { return date_; }
  NumberFormat time() const { return time_; }
  NumberFormat boolean();
  /// The one that shows all digits of a number as they are, if there is one; else the general one.
  NumberFormat allOf(std::string_view digits);
  /// That of a column; of a date or a time, if its pattern is one. Nothing if it is one too many for the workbook.
  std::optional<NumberFormat> pattern(std::string_view pattern);
  /// How many columns have not got theirs.
  std::uint64_t refused() const { return refused_; }

 private:
  static constexpr int kMostDecimals = 15;

  NumberFormat own(std::string_view code);

  CellFormats& formats_;
  document::Values plain_{{}, {}};
  document::ValueFormat plainFormat_;
  bool isGrouped_;
  NumberFormat decimals_[2][kMostDecimals + 1] = {};  // 0: not asked for yet
  NumberFormat isoDate_;
  NumberFormat date_;
  NumberFormat time_;
  std::uint64_t refused_ = 0;
  NumberFormat boolean_ = kGeneral;  // not asked for yet
};

/// Makes the values of a column. A text becomes one only if the sheet, in an English locale, shows exactly the text;
/// and a value that a sheet cannot hold becomes a text: integers of 16 digits, and dates before 1900-03-01, where
/// spreadsheets count other days.
class ColumnValues {
 public:
  static constexpr std::size_t kLongest = document::Values::kLongest;  ///< digits

  /// @param formats  not owned; must outlive this object
  ColumnValues(const document::Column& column, NumberFormats& formats);

  /// @param buffer  of kLongest bytes, where the digits may be
  CellValue of(const document::Cell& cell, char* buffer);
  /// That of a text which its column's type may make a value.
  CellValue ofText(std::string_view text, char* buffer);

 private:
  CellValue ofNumber(const document::Cell& cell, char* buffer);
  NumberFormat formatOf(std::string_view digits);
  CellValue ofInteger(std::int64_t value, char* buffer);
  CellValue ofDate(std::int64_t days, NumberFormat format, char* buffer) const;
  CellValue ofTime(std::int64_t seconds, NumberFormat format, char* buffer) const;

  NumberFormats& formats_;
  document::ValueType type_;
  bool hasNumberPattern_ = false;
  bool hasDatePattern_ = false;
  bool isGrouped_;
  int decimals_;
  NumberFormat pattern_ = kGeneral;
};

}  // namespace scrivalen::xlsx

#pragma once

#include "api/arrow_type.h"
#include "document/tables/table_builder.h"

#include <string>
#include <vector>

namespace scrivalen::api {

/// What the cells of an Arrow stream could not show.
struct ArrowLosses {
  std::uint64_t fractions = 0;  ///< of seconds
  std::uint64_t dates = 0;      ///< out of range
};

/// A column of a record batch, as rows that a document takes. The array stays the host's.
class ArrowColumn {
 public:
  /// How many rows are converted at once.
  static constexpr std::size_t kPiece = 1024;

  /// @param field, array, batch, losses  not owned; must outlive this object
  /// @param batch                        the struct array that the column belongs to
  ArrowColumn(const ArrowField& field, const ArrowArray& array, const ArrowArray& batch, ArrowLosses& losses)
      : field_(field), array_(array), batch_(batch), losses_(losses) {}

  /// Whether the array has what its type requires. Reads nothing that a well-formed array of its lengths does not have.
  bool isWellFormed() const;
  /// Up to kPiece rows, valid until the next call.
  document::ColumnData piece(std::size_t first, std::size_t rows);

 private:
  /// A value's place in the array that holds it, the dictionary's if there is one.
  struct Place {
    bool isNull;
    std::size_t at;
  };

  const ArrowArray& values() const { return field_.index ? *array_.dictionary : array_; }
  std::size_t position(std::size_t row) const;
  bool isNull(std::size_t row) const;
  Place placeOf(std::size_t row) const;
  bool areValuesWellFormed() const;
  bool areIndicesWellFormed() const;
  const void* inPlace(std::size_t first) const;
  document::ColumnData converted(std::size_t first, std::size_t rows);
  bool hasHuge(std::size_t first, std::size_t rows) const;
  void addText(std::string_view text);
  void addDecimal(std::size_t at);
  std::int64_t secondsAt(std::size_t at);
  bool dateAt(std::size_t at, std::int32_t& day);
  template <typename Convert>
  void convertEach(std::size_t first, std::size_t rows, Convert convert);
  document::ColumnData made(document::ValueType type, const void* values) const;

  const ArrowField& field_;
  const ArrowArray& array_;
  const ArrowArray& batch_;
  ArrowLosses& losses_;

  std::vector<std::uint8_t> validity_;
  std::vector<std::uint8_t> bits_;
  std::vector<std::int32_t> days_;
  std::vector<std::int64_t> integers_;
  std::vector<double> numbers_;
  std::string text_;
  std::vector<std::int64_t> offsets_;
};

}  // namespace scrivalen::api

#pragma once

#include "api/arrow_abi.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace scrivalen::api {

/// The type of an Arrow array, as far as a cell can have it.
struct ArrowType {
  enum class Kind : std::uint8_t {
    Null,
    Boolean,
    Signed,
    Unsigned,
    Float,
    Text,  ///< offsets of `width` bytes
    TextViews,
    Date,       ///< days, or milliseconds if `width` is 8
    Timestamp,  ///< `unitsPerSecond`
    Decimal     ///< 128 bits, with `scale` digits after the point
  };

  Kind kind = Kind::Null;
  std::size_t width = 0;  ///< of a value in bytes
  std::int64_t unitsPerSecond = 1;
  int scale = 0;

  bool isInteger() const { return kind == Kind::Signed || kind == Kind::Unsigned; }
  /// How many buffers an array has at least.
  std::int64_t leastBuffers() const;

  /// @param format  as the schema has it; may be null
  static std::optional<ArrowType> of(const char* format);
};

/// The type of a column. A dictionary's column has the type of its indices, too.
struct ArrowField {
  ArrowType type;
  std::optional<ArrowType> index;

  /// Nothing for a type that no cell can have.
  static std::optional<ArrowField> of(const ArrowSchema& schema);
};

}  // namespace scrivalen::api

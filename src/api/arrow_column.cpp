#include "api/arrow_column.h"

#include "api/decimal_text.h"

#include <charconv>
#include <cstring>
#include <limits>

namespace scrivalen::api {
namespace {

using document::ColumnData;
using document::ValueType;
using Kind = ArrowType::Kind;

constexpr std::size_t kViewBytes = 16;
constexpr std::int32_t kLongestInlineView = 12;
constexpr std::int64_t kMillisecondsPerDay = 86400000;

bool isSet(const void* bits, std::size_t index) {
  return (static_cast<const std::uint8_t*>(bits)[index / 8] >> (index % 8) & 1) != 0;
}

// Buffers may have any alignment.
template <typename Value>
Value valueAt(const void* values, std::size_t at) {
  Value value;
  std::memcpy(&value, static_cast<const char*>(values) + at * sizeof value, sizeof value);
  return value;
}

const void* bufferOf(const ArrowArray& array, std::int64_t index) { return array.buffers[index]; }

const void* validityOf(const ArrowArray& array) {
  return array.null_count != 0 && array.n_buffers > 0 ? bufferOf(array, 0) : nullptr;
}

std::int64_t signedAt(const void* values, std::size_t width, std::size_t at) {
  switch (width) {
    case 1: return valueAt<std::int8_t>(values, at);
    case 2: return valueAt<std::int16_t>(values, at);
    case 4: return valueAt<std::int32_t>(values, at);
    default: return valueAt<std::int64_t>(values, at);
  }
}

std::uint64_t unsignedAt(const void* values, std::size_t width, std::size_t at) {
  switch (width) {
    case 1: return valueAt<std::uint8_t>(values, at);
    case 2: return valueAt<std::uint16_t>(values, at);
    case 4: return valueAt<std::uint32_t>(values, at);
    default: return valueAt<std::uint64_t>(values, at);
  }
}

// The quotient, rounded down.
std::int64_t floorOf(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// The double that has the same shortest decimal form.
double numberOf(float value) {
  char text[32];
  const auto end = std::to_chars(text, text + sizeof text, value).ptr;
  double result = value;
  std::from_chars(text, end, result);
  return result;
}

// Offsets of a text array; none of them is read if there are no rows.
bool areOffsetsWellFormed(const ArrowArray& array, std::size_t width, std::size_t first, std::size_t rows) {
  const void* const offsets = bufferOf(array, 1);
  if (!offsets) {
    return false;
  }
  std::int64_t last = signedAt(offsets, width, first);
  bool ascends = last >= 0;
  for (std::size_t row = first + 1; row <= first + rows; ++row) {
    const std::int64_t next = signedAt(offsets, width, row);
    ascends = ascends && last <= next;
    last = next;
  }
  return ascends && (bufferOf(array, 2) || last == 0);
}

struct View {
  std::int32_t size;
  std::int32_t buffer;
  std::int32_t offset;
  const char* text;  // if it is short
};

View viewAt(const ArrowArray& array, std::size_t at) {
  const char* const view = static_cast<const char*>(bufferOf(array, 1)) + at * kViewBytes;
  return {valueAt<std::int32_t>(view, 0), valueAt<std::int32_t>(view, 2), valueAt<std::int32_t>(view, 3), view + 4};
}

// The buffers of longer texts come after those of all types, and their sizes come last.
std::string_view textOf(const ArrowArray& array, const View& view) {
  const auto size = static_cast<std::size_t>(view.size);
  if (view.size <= kLongestInlineView) {
    return {view.text, size};
  }
  return {static_cast<const char*>(bufferOf(array, 2 + view.buffer)) + view.offset, size};
}

bool isViewWellFormed(const ArrowArray& array, const View& view) {
  if (view.size <= kLongestInlineView) {
    return view.size >= 0;
  }
  const std::int64_t buffers = array.n_buffers - 3;
  const void* const sizes = bufferOf(array, array.n_buffers - 1);
  if (view.buffer < 0 || view.buffer >= buffers || view.offset < 0 || !sizes || !bufferOf(array, 2 + view.buffer)) {
    return false;
  }
  return std::int64_t{view.offset} + view.size <= valueAt<std::int64_t>(sizes, static_cast<std::size_t>(view.buffer));
}

// An array's first and last rows are within what its values' addresses can count.
bool isRangeWellFormed(const ArrowArray& array, std::int64_t before, std::int64_t rows) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max() / 64;
  return array.length >= 0 && array.length < kMost && array.offset >= 0 && array.offset < kMost && before >= 0 &&
         before < kMost && rows >= 0 && rows <= array.length - before;
}

bool hasBuffers(const ArrowArray& array, const ArrowType& type) {
  return array.n_buffers >= type.leastBuffers() && (array.n_buffers == 0 || array.buffers);
}

}  // namespace

std::size_t ArrowColumn::position(std::size_t row) const {
  return static_cast<std::size_t>(array_.offset) + static_cast<std::size_t>(batch_.offset) + row;
}

bool ArrowColumn::isNull(std::size_t row) const {
  const void* const batchValidity = validityOf(batch_);
  if (batchValidity && !isSet(batchValidity, static_cast<std::size_t>(batch_.offset) + row)) {
    return true;
  }
  const ArrowType& own = field_.index ? *field_.index : field_.type;
  if (own.kind == Kind::Null) {
    return true;
  }
  const void* const validity = validityOf(array_);
  return validity && !isSet(validity, position(row));
}

ArrowColumn::Place ArrowColumn::placeOf(std::size_t row) const {
  const std::size_t own = position(row);
  if (isNull(row)) {
    return {true, 0};
  }
  if (!field_.index) {
    return {false, own};
  }
  const ArrowArray& dictionary = *array_.dictionary;
  const auto index = static_cast<std::size_t>(unsignedAt(bufferOf(array_, 1), field_.index->width, own));
  const std::size_t at = static_cast<std::size_t>(dictionary.offset) + index;
  const void* const validity = validityOf(dictionary);
  return {field_.type.kind == Kind::Null || (validity && !isSet(validity, at)), at};
}

bool ArrowColumn::isWellFormed() const {
  const ArrowType& own = field_.index ? *field_.index : field_.type;
  if (!isRangeWellFormed(array_, batch_.offset, batch_.length)) {
    return false;
  }
  if (batch_.length == 0) {
    return true;
  }
  if (!hasBuffers(array_, own) || (array_.dictionary != nullptr) != field_.index.has_value()) {
    return false;
  }
  if (!field_.index) {
    return areValuesWellFormed();
  }
  const ArrowArray& dictionary = *array_.dictionary;
  return isRangeWellFormed(dictionary, 0, 0) && hasBuffers(dictionary, field_.type) && areIndicesWellFormed() &&
         areValuesWellFormed();
}

bool ArrowColumn::areIndicesWellFormed() const {
  const void* const indices = bufferOf(array_, 1);
  if (!indices) {
    return false;
  }
  // A negative index is a large one without a sign, for its width.
  const std::uint64_t size = static_cast<std::uint64_t>(array_.dictionary->length);
  const bool isSigned = field_.index->kind == Kind::Signed;
  for (std::size_t row = 0; row < static_cast<std::size_t>(batch_.length); ++row) {
    if (isNull(row)) {
      continue;
    }
    const std::size_t at = position(row);
    const bool isNegative = isSigned && signedAt(indices, field_.index->width, at) < 0;
    if (isNegative || unsignedAt(indices, field_.index->width, at) >= size) {
      return false;
    }
  }
  return true;
}

bool ArrowColumn::areValuesWellFormed() const {
  const ArrowArray& array = values();
  const std::size_t first = field_.index ? static_cast<std::size_t>(array.offset) : position(0);
  const auto rows = static_cast<std::size_t>(field_.index ? array.length : batch_.length);
  if (field_.type.kind == Kind::Null || rows == 0) {
    return true;
  }
  if (field_.type.kind == Kind::Text) {
    return areOffsetsWellFormed(array, field_.type.width, first, rows);
  }
  if (!bufferOf(array, 1)) {
    return false;
  }
  for (std::size_t row = 0; field_.type.kind == Kind::TextViews && row < static_cast<std::size_t>(batch_.length);
       ++row) {
    const Place place = placeOf(row);
    if (!place.isNull && !isViewWellFormed(array, viewAt(array, place.at))) {
      return false;
    }
  }
  return true;
}

ColumnData ArrowColumn::piece(std::size_t first, std::size_t rows) {
  const void* const data = inPlace(first);
  if (!data) {
    return converted(first, rows);
  }
  ColumnData column;
  column.values = data;
  column.validity = static_cast<const std::uint8_t*>(validityOf(array_));
  column.offset = position(first);
  switch (field_.type.kind) {
    case Kind::Boolean: column.type = ValueType::Boolean; break;
    case Kind::Signed: column.type = ValueType::Integer; break;
    case Kind::Float: column.type = ValueType::Number; break;
    case Kind::Date: column.type = ValueType::Date; break;
    default: column.type = ValueType::Time; break;
  }
  return column;
}

// The values themselves where a document takes them as they are; else null.
const void* ArrowColumn::inPlace(std::size_t first) const {
  const ArrowType& type = field_.type;
  const bool isAsTaken = type.kind == Kind::Boolean || (type.kind == Kind::Signed && type.width == 8) ||
                         (type.kind == Kind::Float && type.width == 8) ||
                         (type.kind == Kind::Date && type.width == 4) ||
                         (type.kind == Kind::Timestamp && type.unitsPerSecond == 1);
  if (!isAsTaken || field_.index || validityOf(batch_) || batch_.length <= static_cast<std::int64_t>(first)) {
    return nullptr;
  }
  const void* const data = bufferOf(array_, 1);
  const bool isAligned = type.width == 0 || reinterpret_cast<std::uintptr_t>(data) % type.width == 0;
  return isAligned ? data : nullptr;
}

template <typename Convert>
void ArrowColumn::convertEach(std::size_t first, std::size_t rows, Convert convert) {
  validity_.assign((rows + 7) / 8, 0);
  for (std::size_t row = 0; row < rows; ++row) {
    const Place place = placeOf(first + row);
    if (!place.isNull && convert(row, place.at)) {
      validity_[row / 8] = static_cast<std::uint8_t>(validity_[row / 8] | 1u << (row % 8));
    }
    if (!offsets_.empty()) {
      offsets_.push_back(static_cast<std::int64_t>(text_.size()));
    }
  }
}

ColumnData ArrowColumn::made(ValueType type, const void* values) const {
  return {type, values, offsets_.data(), validity_.data(), 0};
}

// Whether a number without a sign is larger than any with one.
bool ArrowColumn::hasHuge(std::size_t first, std::size_t rows) const {
  for (std::size_t row = first; field_.type.width == 8 && row < first + rows; ++row) {
    const Place place = placeOf(row);
    if (!place.isNull && valueAt<std::int64_t>(bufferOf(values(), 1), place.at) < 0) {
      return true;
    }
  }
  return false;
}

ColumnData ArrowColumn::converted(std::size_t first, std::size_t rows) {
  const ArrowType& type = field_.type;
  const void* const data = type.kind == Kind::Null || rows == 0 ? nullptr : bufferOf(values(), 1);
  const bool isHuge = type.kind == Kind::Unsigned && hasHuge(first, rows);
  offsets_.clear();
  text_.clear();
  numbers_.resize(rows);
  integers_.resize(rows);
  days_.resize(rows);
  bits_.assign((rows + 7) / 8, 0);
  if (isHuge || type.kind == Kind::Null || type.kind == Kind::Text || type.kind == Kind::TextViews ||
      type.kind == Kind::Decimal) {
    offsets_.push_back(0);
  }
  convertEach(first, rows, [&](std::size_t row, std::size_t at) {
    switch (type.kind) {
      case Kind::Null: break;
      case Kind::Boolean: bits_[row / 8] |= static_cast<std::uint8_t>((isSet(data, at) ? 1u : 0u) << (row % 8)); break;
      case Kind::Signed: integers_[row] = signedAt(data, type.width, at); break;
      case Kind::Unsigned:
        if (isHuge) {
          addText(std::to_string(unsignedAt(data, type.width, at)));
        } else {
          integers_[row] = static_cast<std::int64_t>(unsignedAt(data, type.width, at));
        }
        break;
      case Kind::Float:
        numbers_[row] = type.width == 4 ? numberOf(valueAt<float>(data, at)) : valueAt<double>(data, at);
        break;
      case Kind::Text: {
        const std::int64_t begin = signedAt(data, type.width, at);
        const auto size = static_cast<std::size_t>(signedAt(data, type.width, at + 1) - begin);
        addText({static_cast<const char*>(bufferOf(values(), 2)) + begin, size});
        break;
      }
      case Kind::TextViews: addText(textOf(values(), viewAt(values(), at))); break;
      case Kind::Date: return dateAt(at, days_[row]);
      case Kind::Timestamp: integers_[row] = secondsAt(at); break;
      case Kind::Decimal: addDecimal(at); break;
    }
    return true;
  });
  if (!offsets_.empty()) {
    return made(ValueType::Text, text_.data());
  }
  switch (type.kind) {
    case Kind::Boolean: return made(ValueType::Boolean, bits_.data());
    case Kind::Float: return made(ValueType::Number, numbers_.data());
    case Kind::Date: return made(ValueType::Date, days_.data());
    case Kind::Timestamp: return made(ValueType::Time, integers_.data());
    default: return made(ValueType::Integer, integers_.data());
  }
}

void ArrowColumn::addText(std::string_view text) {
  if (!text.empty()) {
    text_.append(text);
  }
}

void ArrowColumn::addDecimal(std::size_t at) {
  const void* const data = bufferOf(values(), 1);
  text_ +=
      decimalText(valueAt<std::uint64_t>(data, 2 * at + 1), valueAt<std::uint64_t>(data, 2 * at), field_.type.scale);
}

std::int64_t ArrowColumn::secondsAt(std::size_t at) {
  const auto units = valueAt<std::int64_t>(bufferOf(values(), 1), at);
  losses_.fractions += units % field_.type.unitsPerSecond != 0 ? 1 : 0;
  return floorOf(units, field_.type.unitsPerSecond);
}

bool ArrowColumn::dateAt(std::size_t at, std::int32_t& day) {
  const std::int64_t value = signedAt(bufferOf(values(), 1), field_.type.width, at);
  const std::int64_t days = field_.type.width == 8 ? floorOf(value, kMillisecondsPerDay) : value;
  day = static_cast<std::int32_t>(days);
  losses_.dates += day != days ? 1 : 0;
  return day == days;
}

}  // namespace scrivalen::api

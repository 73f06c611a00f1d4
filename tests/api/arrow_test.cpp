#include "api/api_support.h"
#include "api/arrow_abi.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <deque>
#include <limits>
#include <vector>

using namespace scrivalen::test;

namespace {

int released = 0;

/// A record batch, one column after the other. Releasing it counts, and keeps the memory.
struct Batch {
  struct Column {
    ArrowSchema schema{};
    ArrowArray array{};
    std::vector<const void*> buffers;
  };

  Batch() {
    schema.format = "+s";
    schema.release = [](ArrowSchema* self) { self->release = nullptr; };
    array.release = [](ArrowArray* self) {
      ++released;
      self->release = nullptr;
    };
  }

  Column& add(const char* format, std::int64_t length, std::vector<const void*> buffers) {
    Column& column = columns.emplace_back();
    column.schema.format = format;
    column.schema.name = "price";
    column.array.length = length;
    column.array.null_count = buffers.empty() || !buffers[0] ? 0 : -1;
    column.buffers = std::move(buffers);
    column.array.n_buffers = static_cast<std::int64_t>(column.buffers.size());
    column.array.buffers = column.buffers.data();
    array.length = length;
    return column;
  }

  void complete() {
    for (Column& column : columns) {
      schemas.push_back(&column.schema);
      arrays.push_back(&column.array);
    }
    schema.n_children = array.n_children = static_cast<std::int64_t>(columns.size());
    schema.children = schemas.data();
    array.children = arrays.data();
  }

  scrivalen_status write(scrivalen_document* document) {
    complete();
    return scrivalen_rows_arrow(document, &schema, &array);
  }

  ArrowSchema schema{};
  ArrowArray array{};
  std::deque<Column> columns;
  std::vector<ArrowSchema*> schemas;
  std::vector<ArrowArray*> arrays;
};

struct Table : Written {
  Table() { scrivalen_begin_table(*this, nullptr, 0, nullptr); }
};

// The rows of one column.
std::string rowsOf(const char* format, std::int64_t length, std::vector<const void*> buffers) {
  Table document;
  Batch batch;
  batch.add(format, length, std::move(buffers));
  EXPECT_EQ(batch.write(document), SCRIVALEN_OK) << document.error();
  return document.closed();
}

template <typename Value>
std::string valuesOf(const char* format, std::vector<Value> values) {
  return rowsOf(format, static_cast<std::int64_t>(values.size()), {nullptr, values.data()});
}

std::string refused(Batch& batch) {
  Table document;
  released = 0;
  EXPECT_EQ(batch.write(document), SCRIVALEN_MISUSE);
  EXPECT_EQ(released, 1);
  const std::string error(document.error());
  EXPECT_EQ(document.closed(), "");
  return error;
}

std::string refused(const char* format, std::int64_t length, std::vector<const void*> buffers) {
  Batch batch;
  batch.add(format, length, std::move(buffers));
  return refused(batch);
}

constexpr const char* kMalformed = "an Arrow array does not match its schema";

}  // namespace

TEST(ArrowRows, HoldIntegersOfEachWidth) {
  EXPECT_EQ(valuesOf<std::int8_t>("c", {-1, 127}), " -1\n127\n");
  EXPECT_EQ(valuesOf<std::uint8_t>("C", {0, 255}), "  0\n255\n");
  EXPECT_EQ(valuesOf<std::int16_t>("s", {-32768}), "-32768\n");
  EXPECT_EQ(valuesOf<std::uint16_t>("S", {65535}), "65535\n");
  EXPECT_EQ(valuesOf<std::int32_t>("i", {-5}), "-5\n");
  EXPECT_EQ(valuesOf<std::uint32_t>("I", {4294967295}), "4294967295\n");
  EXPECT_EQ(valuesOf<std::int64_t>("l", {std::numeric_limits<std::int64_t>::min()}), "-9223372036854775808\n");
  EXPECT_EQ(valuesOf<std::uint64_t>("L", {7}), "7\n");
  EXPECT_EQ(valuesOf<std::uint64_t>("L", {std::numeric_limits<std::uint64_t>::max()}), "18446744073709551615\n");
}

TEST(ArrowRows, HoldNumbersInTheirShortestForm) {
  EXPECT_EQ(valuesOf<float>("f", {0.1f}), "0.1\n");
  EXPECT_EQ(valuesOf<double>("g", {0.1}), "0.1\n");
}

TEST(ArrowRows, HoldTexts) {
  const std::int32_t shortOffsets[] = {1, 3, 3, 6};
  const std::int64_t longOffsets[] = {1, 3, 3, 6};
  EXPECT_EQ(rowsOf("u", 3, {nullptr, shortOffsets, "-abcde"}), "ab\n\ncde\n");
  EXPECT_EQ(rowsOf("U", 3, {nullptr, longOffsets, "-abcde"}), "ab\n\ncde\n");
}

TEST(ArrowRows, HoldEmptyTextsWithoutABuffer) {
  const std::int32_t shortOffsets[] = {0, 0, 0};
  const std::int64_t longOffsets[] = {0, 0, 0};
  EXPECT_EQ(rowsOf("u", 2, {nullptr, shortOffsets, nullptr}), "\n\n");
  EXPECT_EQ(rowsOf("U", 2, {nullptr, longOffsets, nullptr}), "\n\n");
  const std::int32_t beyond[] = {1, 1, 1};
  EXPECT_EQ(refused("u", 2, {nullptr, beyond, nullptr}), kMalformed);
}

TEST(ArrowRows, HoldViewsOfTexts) {
  const char longText[] = "-a text of more than twelve";
  const std::int64_t sizes[] = {sizeof longText - 1};
  char views[32] = {2, 0, 0, 0, 'a', 'b'};
  const std::int32_t longView[] = {26, 0, 0, 1};
  std::memcpy(views + 16, longView, sizeof longView);
  EXPECT_EQ(rowsOf("vu", 2, {nullptr, views, longText, sizes}), "ab\na text of more than twelve\n");
  const std::int64_t shortSizes[] = {26};
  EXPECT_EQ(refused("vu", 2, {nullptr, views, longText, shortSizes}), kMalformed);
}

TEST(ArrowRows, HoldDatesAndTimes) {
  EXPECT_EQ(valuesOf<std::int32_t>("tdD", {-1}), "1969-12-31\n");
  EXPECT_EQ(valuesOf<std::int64_t>("tdm", {-86400000, 86400000}), "1969-12-31\n1970-01-02\n");
  EXPECT_EQ(valuesOf<std::int64_t>("tss:", {1}), "1970-01-01 00:00:01\n");
  EXPECT_EQ(valuesOf<std::int64_t>("tsu:Europe/Berlin", {2000000}), "1970-01-01 00:00:02\n");
}

TEST(ArrowRows, WarnOfFractionsAndDatesThatAreCut) {
  Table document;
  const std::int64_t times[] = {-1, 1500, 2000};
  const std::int64_t dates[] = {std::numeric_limits<std::int64_t>::max(), 0, 0};
  Batch batch;
  batch.add("tsm:", 3, {nullptr, times});
  batch.add("tdm", 3, {nullptr, dates});
  EXPECT_EQ(batch.write(document), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(),
            "1969-12-31 23:59:59\n1970-01-01 00:00:01  1970-01-01\n1970-01-01 00:00:02  1970-01-01\n");
  EXPECT_EQ(warningsOf(document),
            "input 5 2 times whose fractions of a second were cut\n"
            "input 5 1 dates that are out of range, written as empty cells\n");
}

TEST(ArrowRows, HoldDecimalsExactly) {
  const std::uint64_t values[] = {1250, 0, ~std::uint64_t{4}, ~std::uint64_t{0}, 0, std::uint64_t{1} << 63};
  EXPECT_EQ(rowsOf("d:38,2", 3, {nullptr, values}),
            "                                    12.50\n"
            "                                    -0.05\n"
            "-1701411834604692317316873037158841057.28\n");
  EXPECT_EQ(rowsOf("d:4,-2,128", 1, {nullptr, values}), "125000\n");
  EXPECT_EQ(rowsOf("d:4,0", 1, {nullptr, values}), "1250\n");
}

TEST(ArrowRows, HoldBitsNullsAndNothing) {
  const std::uint8_t bits = 0b0101;
  const std::uint8_t validity = 0b0011;
  EXPECT_EQ(rowsOf("b", 3, {&validity, &bits}), "true\nfalse\n\n");
  const std::int32_t integers[] = {1, 2, 3};
  EXPECT_EQ(rowsOf("i", 3, {&validity, integers}), "1\n2\n\n");
  EXPECT_EQ(rowsOf("n", 2, {}), "\n\n");
}

TEST(ArrowRows, FollowADictionary) {
  const std::int32_t offsets[] = {0, 3, 7};
  const std::int8_t indices[] = {1, 0, 1};
  Batch words;
  auto& dictionary = words.add("u", 2, {nullptr, offsets, "oneplum"});
  Table document;
  Batch batch;
  auto& column = batch.add("c", 3, {nullptr, indices});
  column.schema.dictionary = &dictionary.schema;
  column.array.dictionary = &dictionary.array;
  EXPECT_EQ(batch.write(document), SCRIVALEN_OK) << document.error();
  EXPECT_EQ(document.closed(), "plum\none\nplum\n");

  const std::int8_t wrong[] = {0, 2, -1};
  for (std::int64_t first : {1, 2}) {
    Batch other;
    auto& indexed = other.add("c", 1, {nullptr, wrong});
    indexed.array.offset = first;
    indexed.schema.dictionary = &dictionary.schema;
    indexed.array.dictionary = &dictionary.array;
    EXPECT_EQ(refused(other), kMalformed);
  }
}

TEST(ArrowRows, AddTheOffsetsOfBatchAndColumn) {
  const std::int64_t integers[] = {1, 2, 3, 4};
  const std::int16_t shorts[] = {1, 2, 3, 4};
  Table document;
  Batch batch;
  batch.add("l", 3, {nullptr, integers}).array.offset = 1;
  batch.add("s", 3, {nullptr, shorts});
  const std::uint8_t validity = 0b101;
  const void* own[] = {&validity};
  batch.array.offset = 1;
  batch.array.length = 2;
  EXPECT_EQ(batch.write(document), SCRIVALEN_OK) << document.error();
  EXPECT_EQ(document.closed(), "3  2\n4  3\n");

  Table withNulls;
  Batch other;
  other.add("l", 3, {nullptr, integers});
  other.array.buffers = own;
  other.array.n_buffers = 1;
  other.array.null_count = 1;
  EXPECT_EQ(other.write(withNulls), SCRIVALEN_OK);
  EXPECT_EQ(withNulls.closed(), "1\n\n3\n");
}

TEST(ArrowRows, AreWrittenInPiecesOfAnyNumber) {
  std::vector<std::int32_t> values(3000);
  std::string expected;
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] = static_cast<std::int32_t>(1000 + i);
    expected += std::to_string(values[i]) + "\n";
  }
  Written document;
  const scrivalen_column column{sizeof column, nullptr, SCRIVALEN_AUTO, SCRIVALEN_LEFT, 0, 0, nullptr};
  scrivalen_begin_table(document, &column, 1, nullptr);
  Batch batch;
  batch.add("i", static_cast<std::int64_t>(values.size()), {nullptr, values.data()});
  EXPECT_EQ(batch.write(document), SCRIVALEN_OK);
  EXPECT_TRUE(document.closed() == expected);
}

TEST(ArrowRows, NameTheColumnAndTypeThatNoCellHas) {
  for (const char* format : {"e", "z", "+l", "tts", "tDs", "d:10,2,256", "d:10", "d:10,77", "", "tss"}) {
    EXPECT_EQ(refused(format, 0, {nullptr, nullptr}),
              "column 0, 'price', has the Arrow type '" + std::string(format) + "', which is not supported");
  }
  Batch notRows;
  notRows.schema.format = "i";
  EXPECT_EQ(refused(notRows), "rows have an Arrow struct of columns, not the type 'i'");
}

TEST(ArrowRows, NameWhatIsNotSupportedOfADictionary) {
  const auto refusedDictionary = [](const char* index, const char* values, bool isNested) {
    Batch inner;
    auto& innermost = inner.add("u", 0, {nullptr, nullptr, nullptr});
    auto& dictionary = inner.add(values, 0, {nullptr, nullptr, nullptr});
    Batch batch;
    auto& column = batch.add(index, 0, {nullptr, nullptr});
    column.schema.dictionary = &dictionary.schema;
    dictionary.schema.dictionary = isNested ? &innermost.schema : nullptr;
    return refused(batch);
  };
  EXPECT_EQ(refusedDictionary("f", "u", false),
            "column 0, 'price', has a dictionary with the Arrow index type 'f', which is not supported");
  EXPECT_EQ(refusedDictionary("z", "z", false),
            "column 0, 'price', has a dictionary with the Arrow index type 'z', which is not supported");
  EXPECT_EQ(refusedDictionary("c", "z", false), "column 0, 'price', has the Arrow type 'z', which is not supported");
  EXPECT_EQ(refusedDictionary("c", "i", true),
            "column 0, 'price', has a dictionary of dictionaries, which is not supported");
}

TEST(ArrowRows, RefuseAnArrayThatDoesNotMatchItsSchema) {
  const std::int32_t offsets[] = {0, 2, 1};
  EXPECT_EQ(refused("u", 2, {nullptr, offsets, "ab"}), kMalformed);
  EXPECT_EQ(refused("u", 2, {nullptr, nullptr, "ab"}), kMalformed);
  EXPECT_EQ(refused("u", 1, {nullptr, offsets, nullptr}), kMalformed);
  EXPECT_EQ(refused("i", 2, {nullptr, nullptr}), kMalformed);
  EXPECT_EQ(refused("i", 2, {nullptr}), kMalformed);
  Batch tooShort;
  tooShort.add("i", 2, {nullptr, offsets});
  tooShort.array.length = 3;
  EXPECT_EQ(refused(tooShort), kMalformed);
  Batch negative;
  negative.add("i", 2, {nullptr, offsets}).array.offset = -1;
  EXPECT_EQ(refused(negative), kMalformed);
}

TEST(ArrowRows, AreReleasedWhateverTheCallReturns) {
  Batch batch;
  released = 0;
  EXPECT_EQ(scrivalen_rows_arrow(nullptr, &batch.schema, &batch.array), SCRIVALEN_MISUSE);
  EXPECT_EQ(released, 1);
  EXPECT_EQ(batch.array.release, nullptr);
  Table document;
  EXPECT_EQ(scrivalen_rows_arrow(document, &batch.schema, &batch.array), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the Arrow schema or array is null, or was released");
  EXPECT_EQ(scrivalen_rows_arrow(document, nullptr, nullptr), SCRIVALEN_MISUSE);
  Batch other;
  EXPECT_EQ(scrivalen_rows_arrow(document, nullptr, &other.array), SCRIVALEN_MISUSE);
  EXPECT_EQ(released, 2);
  EXPECT_NE(other.schema.release, nullptr);
}

namespace {

/// A stream of batches of one integer, which fails after some of them.
struct Stream {
  explicit Stream(int batches, int error = 0) : toGo(batches), error_(error) {
    stream.get_schema = [](ArrowArrayStream* self, ArrowSchema* out) { return of(self).schema(out); };
    stream.get_next = [](ArrowArrayStream* self, ArrowArray* out) { return of(self).next(out); };
    stream.get_last_error = [](ArrowArrayStream*) { return "out of order"; };
    stream.release = [](ArrowArrayStream* self) {
      ++of(self).releases;
      self->release = nullptr;
    };
    stream.private_data = this;
    batch.add("i", 1, {nullptr, &value});
    batch.complete();
  }

  static Stream& of(ArrowArrayStream* self) { return *static_cast<Stream*>(self->private_data); }

  int schema(ArrowSchema* out) {
    calledBack = scrivalen_end(document);
    *out = batch.schema;
    return toGo < 0 ? error_ : 0;
  }
  int next(ArrowArray* out) {
    if (toGo-- == 0) {
      return error_;
    }
    *out = batch.array;
    return 0;
  }

  ArrowArrayStream stream{};
  Batch batch;
  std::int32_t value = 5;
  int toGo;
  int error_;
  int releases = 0;
  scrivalen_document* document = nullptr;
  scrivalen_status calledBack = SCRIVALEN_OK;
};

}  // namespace

TEST(ArrowStream, WritesEveryBatch) {
  Table document;
  Stream stream(3);
  stream.document = document;
  released = 0;
  EXPECT_EQ(scrivalen_rows_arrow_stream(document, &stream.stream), SCRIVALEN_OK) << document.error();
  EXPECT_EQ(stream.calledBack, SCRIVALEN_MISUSE);
  EXPECT_EQ(stream.releases, 1);
  EXPECT_EQ(released, 3);
  EXPECT_EQ(document.closed(), "5\n5\n5\n");
}

TEST(ArrowStream, KeepsTheRowsBeforeAFailure) {
  Table document;
  Stream stream(2, 5);
  EXPECT_EQ(scrivalen_rows_arrow_stream(document, &stream.stream), SCRIVALEN_INPUT_ERROR);
  EXPECT_EQ(document.error(), "the Arrow stream failed: 'out of order' from get_next");
  EXPECT_EQ(stream.releases, 1);
  EXPECT_EQ(document.closed(), "5\n5\n");
  EXPECT_EQ(document.result, SCRIVALEN_OK);

  Table empty;
  Stream noSchema(-1, 5);
  EXPECT_EQ(scrivalen_rows_arrow_stream(empty, &noSchema.stream), SCRIVALEN_INPUT_ERROR);
  EXPECT_EQ(empty.error(), "the Arrow stream failed: 'out of order' from get_schema");
}

TEST(ArrowStream, IsReleasedWhateverTheCallReturns) {
  Stream unused(1);
  EXPECT_EQ(scrivalen_rows_arrow_stream(nullptr, &unused.stream), SCRIVALEN_MISUSE);
  EXPECT_EQ(unused.releases, 1);
  Table document;
  EXPECT_EQ(scrivalen_rows_arrow_stream(document, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_rows_arrow_stream(document, &unused.stream), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the Arrow stream is null, or was released");
  Stream unknown(1);
  unknown.batch.columns[0].schema.format = "e";
  EXPECT_EQ(scrivalen_rows_arrow_stream(document, &unknown.stream), SCRIVALEN_MISUSE);
  EXPECT_EQ(unknown.releases, 1);
}

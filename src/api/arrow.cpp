// Rows from Arrow's C data and stream interfaces.

#include "api/arrow_column.h"
#include "api/call.h"

#include <algorithm>
#include <deque>
#include <vector>

namespace {

using namespace scrivalen::api;
using scrivalen::document::ColumnData;
using scrivalen::document::WarningCode;

/// Runs a function of the host, which may not call the document.
template <typename Function>
auto asCallback(scrivalen_document* handle, Function function) {
  if (!handle) {
    return function();
  }
  const auto callback = handle->document.callback();
  return function();
}

/// Releases what the host handed over.
template <typename Struct>
class Taken {
 public:
  Taken(scrivalen_document* handle, Struct* taken) : handle_(handle), taken_(taken) {}
  Taken(const Taken&) = delete;
  Taken& operator=(const Taken&) = delete;
  ~Taken() {
    if (isThere()) {
      try {
        asCallback(handle_, [&] { taken_->release(taken_); });
      } catch (...) {
        taken_->release = nullptr;
      }
    }
  }

  bool isThere() const { return taken_ && taken_->release; }
  Struct* get() const { return taken_; }

 private:
  scrivalen_document* handle_;
  Struct* taken_;
};

/// The columns of a record batch's schema.
class Fields {
 public:
  /// What is wrong with the schema; empty if nothing is.
  std::string read(const ArrowSchema& schema);
  const std::vector<ArrowField>& all() const { return fields_; }

 private:
  std::vector<ArrowField> fields_;
};

// Which of a column's types is not supported.
std::string unsupportedTypeOf(const ArrowSchema* column) {
  const auto named = [](const ArrowSchema* type) { return quoted(textOf(type ? type->format : nullptr)); };
  if (!column || !column->dictionary) {
    return "the Arrow type " + named(column);
  }
  const auto index = ArrowType::of(column->format);
  if (!index || !index->isInteger()) {
    return "a dictionary with the Arrow index type " + named(column);
  }
  return column->dictionary->dictionary ? "a dictionary of dictionaries"
                                        : "the Arrow type " + named(column->dictionary);
}

std::string Fields::read(const ArrowSchema& schema) {
  if (textOf(schema.format) != "+s") {
    return "rows have an Arrow struct of columns, not the type " + quoted(textOf(schema.format));
  }
  if (schema.n_children < 1 || static_cast<std::uint64_t>(schema.n_children) > Document::kMostColumns ||
      !schema.children) {
    return "an Arrow schema of rows has 1 to 1,000,000 columns";
  }
  for (std::int64_t i = 0; i < schema.n_children; ++i) {
    const ArrowSchema* const column = schema.children[i];
    const auto field = column ? ArrowField::of(*column) : std::nullopt;
    if (!field) {
      return "column " + std::to_string(i) + ", " + quoted(textOf(column ? column->name : nullptr)) + ", has " +
             unsupportedTypeOf(column) + ", which is not supported";
    }
    fields_.push_back(*field);
  }
  return {};
}

/// Writes the rows of record batches.
class Batches {
 public:
  /// @param document, fields  not owned; must outlive this object
  Batches(Document& document, const std::vector<ArrowField>& fields) : document_(document), fields_(fields) {}

  /// Whether an array matches the fields.
  bool isWellFormed(const ArrowArray& batch);
  /// Writes its rows. @return whether the document takes more
  bool write(const ArrowArray& batch);
  Status result() const { return result_; }
  /// Warns of what the cells could not show.
  void finish();

 private:
  std::deque<ArrowColumn> columnsOf(const ArrowArray& batch);

  Document& document_;
  const std::vector<ArrowField>& fields_;
  ArrowLosses losses_;
  Status result_ = Status::Ok;
};

std::deque<ArrowColumn> Batches::columnsOf(const ArrowArray& batch) {
  std::deque<ArrowColumn> columns;
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    columns.emplace_back(fields_[i], *batch.children[i], batch, losses_);
  }
  return columns;
}

bool Batches::isWellFormed(const ArrowArray& batch) {
  if (batch.n_children != static_cast<std::int64_t>(fields_.size()) || !batch.children || batch.length < 0 ||
      batch.offset < 0 || (batch.n_buffers > 0 && !batch.buffers) ||
      std::any_of(batch.children, batch.children + batch.n_children, [](const ArrowArray* child) { return !child; })) {
    return false;
  }
  const std::deque<ArrowColumn> columns = columnsOf(batch);
  return std::all_of(columns.begin(), columns.end(), [](const ArrowColumn& column) { return column.isWellFormed(); });
}

bool Batches::write(const ArrowArray& batch) {
  std::deque<ArrowColumn> columns = columnsOf(batch);
  std::vector<ColumnData> pieces(columns.size());
  const auto rows = static_cast<std::size_t>(batch.length);
  std::size_t first = 0;
  do {
    const std::size_t size = std::min(rows - first, ArrowColumn::kPiece);
    std::transform(columns.begin(), columns.end(), pieces.begin(),
                   [&](ArrowColumn& column) { return column.piece(first, size); });
    const Status status = document_.rows(pieces.data(), pieces.size(), size);
    result_ = result_ == Status::Ok ? status : result_;
    first += size;
  } while (first < rows && document_.readyForRows() == Status::Ok);
  return document_.readyForRows() == Status::Ok;
}

void Batches::finish() {
  if (losses_.fractions > 0) {
    document_.warn(WarningCode::InputMended, "times whose fractions of a second were cut", losses_.fractions);
  }
  if (losses_.dates > 0) {
    document_.warn(WarningCode::InputMended, "dates that are out of range, written as empty cells", losses_.dates);
  }
}

constexpr std::string_view kNotAsItsSchema = "an Arrow array does not match its schema";

Status writeArray(Document& document, const ArrowSchema* schema, const Taken<ArrowArray>& array) {
  if (const Status status = document.readyForRows(); status != Status::Ok) {
    return status;
  }
  if (!schema || !schema->release || !array.isThere()) {
    return document.misuse("the Arrow schema or array is null, or was released");
  }
  Fields fields;
  if (const std::string wrong = fields.read(*schema); !wrong.empty()) {
    return document.misuse(wrong);
  }
  Batches batches(document, fields.all());
  if (!batches.isWellFormed(*array.get())) {
    return document.misuse(kNotAsItsSchema);
  }
  batches.write(*array.get());
  batches.finish();
  return batches.result();
}

/// A stream of record batches that the host handed over.
class Stream {
 public:
  Stream(scrivalen_document* handle, ArrowArrayStream* stream) : handle_(handle), stream_(stream) {}

  Status write();

 private:
  Status writeBatches(Batches& batches);
  Status failed(const char* step, int error);
  Status inputError(std::string_view reason) {
    return handle_->document.refuse(Status::InputError, "the Arrow stream failed: " + std::string(reason));
  }

  scrivalen_document* handle_;
  ArrowArrayStream* stream_;
};

Status Stream::failed(const char* step, int error) {
  const char* const text =
      asCallback(handle_, [&] { return stream_->get_last_error ? stream_->get_last_error(stream_) : nullptr; });
  const std::string reason = text ? quoted(text) : "error " + std::to_string(error);
  return inputError(reason + " from " + step);
}

Status Stream::write() {
  Document& document = handle_->document;
  ArrowSchema schema{};
  const int error = asCallback(handle_, [&] { return stream_->get_schema(stream_, &schema); });
  const Taken<ArrowSchema> taken(handle_, error == 0 ? &schema : nullptr);
  if (error != 0) {
    return failed("get_schema", error);
  }
  if (!taken.isThere()) {
    return inputError("it has no schema");
  }
  Fields fields;
  if (const std::string wrong = fields.read(schema); !wrong.empty()) {
    return document.misuse(wrong);
  }
  Batches batches(document, fields.all());
  const Status status = writeBatches(batches);
  batches.finish();
  return status;
}

Status Stream::writeBatches(Batches& batches) {
  for (;;) {
    ArrowArray array{};
    const int error = asCallback(handle_, [&] { return stream_->get_next(stream_, &array); });
    const Taken<ArrowArray> taken(handle_, error == 0 ? &array : nullptr);
    if (error != 0) {
      return failed("get_next", error);
    }
    if (!taken.isThere()) {
      return batches.result();
    }
    if (!batches.isWellFormed(array)) {
      return inputError(kNotAsItsSchema);
    }
    if (!batches.write(array)) {
      return handle_->document.result();
    }
  }
}

Status writeStream(scrivalen_document* handle, const Taken<ArrowArrayStream>& stream) {
  Document& document = handle->document;
  if (const Status status = document.readyForRows(); status != Status::Ok) {
    return status;
  }
  if (!stream.isThere() || !stream.get()->get_schema || !stream.get()->get_next) {
    return document.misuse("the Arrow stream is null, or was released");
  }
  return Stream(handle, stream.get()).write();
}

}  // namespace

scrivalen_status scrivalen_rows_arrow(scrivalen_document* document, const struct ArrowSchema* schema,
                                      struct ArrowArray* array) {
  const Taken<ArrowArray> taken(document, array);
  return call(document, [&](Document& to) { return writeArray(to, schema, taken); });
}

scrivalen_status scrivalen_rows_arrow_stream(scrivalen_document* document, struct ArrowArrayStream* stream) {
  const Taken<ArrowArrayStream> taken(document, stream);
  return call(document, [&](Document&) { return writeStream(document, taken); });
}

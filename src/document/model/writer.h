#pragma once

#include "document/model/event.h"
#include "document/model/status.h"
#include "document/model/table.h"
#include "document/model/warnings.h"
#include "document/settings/settings.h"
#include "output/output_buffer.h"

#include <memory>
#include <stdexcept>
#include <string>

namespace scrivalen::document {

class Run;

/// What a writer works with. Each object outlives the writer.
struct WriterContext {
  OutputBuffer& out;  ///< takes every byte of the output; loses them in silence after a failure
  const FormatSettings& settings;
  OutputWarnings& warnings;
  Run* run = nullptr;  ///< to report long work that writes no bytes; null: nobody wants to know
};

/// Writes a document in one format. The document calls it in order and well nested. A table comes row by row once its
/// columns are known. A writer need not check whether the output has failed: it is not called after that. An exception
/// that it raises makes its output fail.
class DocumentWriter : public EventSink {
 public:
  /// Writes what comes before the content. Raises OutputFailure when something else that the output needs is missing.
  virtual void begin() = 0;
  /// Blocks and their text; never a table.
  void write(const Event& event) override = 0;
  virtual void beginTable(const Table& table) = 0;
  virtual void row(const Row& row) = 0;
  virtual void endTable() = 0;
  /// Writes what comes after the content.
  virtual void finish() = 0;
};

/// Why an output cannot be written. The text is UTF-8 and names what is missing.
class OutputFailure : public std::runtime_error {
 public:
  OutputFailure(Status status, const std::string& text) : std::runtime_error(text), status_(status) {}
  Status status() const { return status_; }

 private:
  Status status_;
};

using CreateWriter = std::unique_ptr<DocumentWriter> (*)(const WriterContext& context);

}  // namespace scrivalen::document

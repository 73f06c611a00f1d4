// Documents, their outputs and settings, and their results.

#include "api/call.h"
#include "formats/document_formats.h"
#include "scrivalen/version.h"

#include <memory>
#include <new>

namespace {

using namespace scrivalen::api;
using scrivalen::documentFormatNames;
using scrivalen::document::Format;
using scrivalen::document::Warning;

Status unknownFormat(Document& document, const std::string& what) {
  return document.refuse(Status::UnknownFormat, what + "; the formats are " + documentFormatNames());
}

Status addFile(Document& document, std::string_view path, std::string_view name) {
  if (const Status status = document.readyForOutput(); status != Status::Ok) {
    return status;
  }
  if (path.empty()) {
    return document.misuse("the path of an output is empty");
  }
  const Format* const format = name.empty() ? scrivalen::documentFormatOfPath(path) : scrivalen::documentFormatOf(name);
  if (!format) {
    return unknownFormat(document, name.empty() ? "the extension of " + quoted(path) + " is not that of a format"
                                                : "the format " + quoted(name) + " is unknown");
  }
  return document.addFile(*format, std::string(path));
}

Status addStream(Document& document, std::string_view name, scrivalen_write write, void* user) {
  if (const Status status = document.readyForOutput(); status != Status::Ok) {
    return status;
  }
  if (!write) {
    return document.misuse("the function of a stream is null");
  }
  const Format* const format = scrivalen::documentFormatOf(name);
  if (!format) {
    return unknownFormat(document, "the format " + quoted(name) + " is unknown");
  }
  return document.addStream(*format, write, user);
}

// Nothing is taken from the list unless the caller can have it.
bool nextWarning(Document& document, scrivalen_warning& result) {
  if (result.size < sizeof result) {
    document.misuse(kWrongSize);
    return false;
  }
  const Warning* const warning = document.nextWarning();
  if (!warning) {
    return false;
  }
  result.output = warning->output;
  result.code = static_cast<int>(warning->code);
  result.count = warning->count;
  result.message = warning->message.c_str();
  return true;
}

}  // namespace

const char* scrivalen_version(void) { return SCRIVALEN_VERSION; }

const char* scrivalen_format(size_t index) { return scrivalen::documentFormatName(index); }

scrivalen_document* scrivalen_new(void) {
  try {
    return std::make_unique<scrivalen_document>().release();
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void scrivalen_free(scrivalen_document* document) {
  if (document && !document->document.isInCallback()) {
    delete document;
  }
}

scrivalen_status scrivalen_add_file(scrivalen_document* document, const char* path, const char* format) {
  return call(document, [&](Document& to) { return addFile(to, textOf(path), textOf(format)); });
}

scrivalen_status scrivalen_add_stream(scrivalen_document* document, const char* format, scrivalen_write write,
                                      void* user) {
  return call(document, [&](Document& to) { return addStream(to, textOf(format), write, user); });
}

scrivalen_status scrivalen_set(scrivalen_document* document, const char* name, const char* value) {
  return call(document, [&](Document& to) { return to.set(textOf(name), textOf(value)); });
}

scrivalen_status scrivalen_set_progress(scrivalen_document* document, scrivalen_progress progress, void* user) {
  return call(document, [&](Document& to) { return to.setProgress(progress, user); });
}

scrivalen_status scrivalen_open(scrivalen_document* document) {
  return call(document, [](Document& opening) { return opening.open(); });
}

scrivalen_status scrivalen_close(scrivalen_document* document) {
  return call(document, [](Document& closing) { return closing.close(); });
}

scrivalen_status scrivalen_result(const scrivalen_document* document) {
  return document ? static_cast<scrivalen_status>(document->document.result()) : SCRIVALEN_MISUSE;
}

const char* scrivalen_error(const scrivalen_document* document) { return document ? document->document.error() : ""; }

size_t scrivalen_output_count(const scrivalen_document* document) {
  return document ? document->document.outputCount() : 0;
}

scrivalen_status scrivalen_output_result(const scrivalen_document* document, size_t output) {
  const auto* const found = document ? document->document.output(output) : nullptr;
  return found ? static_cast<scrivalen_status>(found->result()) : SCRIVALEN_MISUSE;
}

const char* scrivalen_output_error(const scrivalen_document* document, size_t output) {
  const auto* const found = document ? document->document.output(output) : nullptr;
  return found ? found->error() : "";
}

int scrivalen_next_warning(scrivalen_document* document, scrivalen_warning* warning) {
  bool isThere = false;
  if (warning) {
    call(document, [&](Document& closed) {
      isThere = nextWarning(closed, *warning);
      return Status::Ok;
    });
  }
  return isThere ? 1 : 0;
}

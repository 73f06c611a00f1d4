#pragma once

#include "scrivalen/document.h"

#include <cerrno>
#include <cstddef>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

inline constexpr std::size_t kNul = static_cast<std::size_t>(-1);

struct Free {
  void operator()(scrivalen_document* document) const { scrivalen_free(document); }
};
using Handle = std::unique_ptr<scrivalen_document, Free>;

/// A stream in memory, which fails when it would get more bytes than it has room for.
struct MemoryStream {
  static int write(void* user, const void* data, std::size_t size) {
    MemoryStream& self = *static_cast<MemoryStream*>(user);
    ++self.calls;
    if (size > self.room - self.bytes.size()) {
      self.bytes.append(static_cast<const char*>(data), self.room - self.bytes.size());
      return ENOSPC;
    }
    self.bytes.append(static_cast<const char*>(data), size);
    return 0;
  }

  std::string bytes;
  std::size_t room = static_cast<std::size_t>(-1) / 2;
  int calls = 0;
};

/// A document with one output, in memory.
struct Written {
  explicit Written(const char* format = "text") {
    scrivalen_add_stream(get(), format, MemoryStream::write, &stream);
    scrivalen_set(get(), "clock", "2026-01-31 23:59:59");
  }

  scrivalen_document* get() const { return document.get(); }
  operator scrivalen_document*() const { return get(); }
  std::string_view error() const { return scrivalen_error(get()); }
  /// Closes the document and returns its bytes.
  const std::string& closed() {
    result = scrivalen_close(get());
    return stream.bytes;
  }

  // Each of these expects that all its calls succeed.
  void setting(const char* name, const char* value) const;
  void end(int count = 1) const;
  void text(const char* text) const;
  void paragraph(const char* text) const;
  void heading(int level, const char* text) const;
  void span(int kind, const char* content) const;
  void link(const char* address, const char* content, const char* title = nullptr) const;
  void item(const char* content, int task = 0) const;
  void row(std::initializer_list<const char*> cells, int header = 0) const;

  MemoryStream stream;
  Handle document{scrivalen_new()};
  scrivalen_status result = SCRIVALEN_OK;
};

/// The warnings of a closed document, one a line: output, code, count, message.
inline std::string warningsOf(scrivalen_document* document) {
  std::string lines;
  scrivalen_warning warning{};
  warning.size = sizeof warning;
  while (scrivalen_next_warning(document, &warning) != 0) {
    lines += warning.output == kNul ? std::string("input") : std::to_string(warning.output);
    lines += " " + std::to_string(warning.code) + " " + std::to_string(warning.count) + " " + warning.message + "\n";
  }
  return lines;
}

/// A call of the interface.
struct Step {
  const char* name;
  std::function<scrivalen_status(scrivalen_document*)> call;
};

/// The content of a document with every kind of block, span, cell and table: each function of the interface that
/// writes, in an order in which each succeeds.
const std::vector<Step>& contentSteps();

/// Writes all of it and returns the first result that is not SCRIVALEN_OK.
scrivalen_status writeContent(scrivalen_document* document);

/// The formats that the library writes alone: all but compiled help.
std::vector<std::string> formats();

}  // namespace scrivalen::test

// Turns bytes into calls of the document interface, in any order and with any argument. After them every output must be
// well-formed, and all must hold the same letters.

#include "document_check.h"
#include "markup_check.h"

#include <scrivalen/document.h>
#include <scrivalen/host.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <iterator>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

// Cyrillic letters are the words that are compared; everything that is not text is ASCII.
constexpr const char* kPieces[] = {"\xD0\xB0",
                                   "\xD0\xB1\xD0\xB2",
                                   "\xD0\xB3 \xD0\xB4",
                                   "<",
                                   ">",
                                   "&amp;",
                                   "\"",
                                   "'",
                                   "\n",
                                   "\r\n",
                                   "\r",
                                   "\t",
                                   " ",
                                   "\\",
                                   "{",
                                   "|",
                                   "*",
                                   "1.5",
                                   "2024-02-29",
                                   "=1+1",
                                   "\xFF",
                                   "\xE4\xB8",
                                   "\xF0\x9F\x98\x80",
                                   "\xEF\xBF\xBE",
                                   "\x01",
                                   "\x7F",
                                   "%BODY%",
                                   "]]>",
                                   "-->",
                                   "\xD7\x90",
                                   "\xCC\x81",
                                   "```"};

class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

  bool empty() const { return at_ == end_; }
  int byte() { return empty() ? 0 : *at_++; }

  // A number, likely a small or an extreme one.
  std::int64_t number() {
    switch (const int kind = byte(); kind) {
      case 255: return std::numeric_limits<std::int64_t>::min();
      case 254: return std::numeric_limits<std::int64_t>::max();
      case 253: return std::numeric_limits<std::int32_t>::max();
      case 252: return -1;
      default: return kind < 200 ? kind % 9 : kind * 1000003;
    }
  }
  int integer() { return static_cast<int>(number()); }

  double real() {
    constexpr double kReals[] = {0.5,
                                 -1.25,
                                 1e300,
                                 5e-324,
                                 std::numeric_limits<double>::infinity(),
                                 std::numeric_limits<double>::quiet_NaN(),
                                 123456789.125,
                                 -0.0};
    return kReals[static_cast<std::size_t>(byte()) % std::size(kReals)];
  }

  // What readers see. Valid as long as the input.
  const char* text(std::size_t* size) {
    std::string& text = texts_.emplace_back();
    const int pieces = byte() % 16;
    for (int i = 0; i < pieces; ++i) {
      text += kPieces[static_cast<std::size_t>(byte()) % std::size(kPieces)];
    }
    const int kind = byte();
    if (kind == 1) {
      *size = 0;
      return nullptr;
    }
    *size = kind % 2 == 0 ? text.size() : SCRIVALEN_NUL;
    return text.c_str();
  }

  // Names, ids, addresses.
  const char* name() {
    constexpr const char* kNames[] = {
        nullptr, "",        "a",    "b c",  "#a", "#x", "javascript:1", "https://e.org/<\">",
        "red",   "#00ff00", "html", "text", "en", "1",  "0.0%",         "yyyy-mm"};
    return kNames[static_cast<std::size_t>(byte()) % std::size(kNames)];
  }

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
  std::deque<std::string> texts_;
};

struct Sink {
  std::string format;
  std::string bytes;
  std::size_t limit;
  scrivalen_document* document;
};

int append(void* user, const void* data, std::size_t size) {
  auto& sink = *static_cast<Sink*>(user);
  // A call from a callback does nothing.
  if (scrivalen_paragraph(sink.document, "no", SCRIVALEN_NUL) != SCRIVALEN_MISUSE) {
    std::abort();
  }
  scrivalen_free(sink.document);
  if (sink.bytes.size() + size > sink.limit) {
    return ENOSPC;
  }
  sink.bytes.append(static_cast<const char*>(data), size);
  return 0;
}

void beginTable(scrivalen_document* document, Input& input) {
  scrivalen_column columns[3] = {};
  for (scrivalen_column& column : columns) {
    column.size = input.byte() == 7 ? static_cast<std::size_t>(input.byte()) : sizeof column;
    column.type = input.byte() % 8;
    column.align = input.byte() % 6;
    column.width = input.byte() % 4 == 0 ? input.real() : 0;
    column.decimals = input.byte() % 4 == 0 ? input.integer() : 0;
    column.name = input.name();
    column.format = input.byte() % 4 == 0 ? input.name() : nullptr;
  }
  const bool hasColumns = input.byte() % 2 == 0;
  scrivalen_begin_table(document, hasColumns ? columns : nullptr, static_cast<std::size_t>(input.byte() % 4),
                        input.name());
  if (!hasColumns) {
    scrivalen_describe_column(document, static_cast<std::size_t>(columns[0].type), columns);
  }
}

void beginCell(scrivalen_document* document, Input& input) {
  scrivalen_cell_style style = {};
  style.size = input.byte() == 7 ? 1 : sizeof style;
  style.header = input.byte() % 2;
  style.align = input.byte() % 6;
  style.span = input.byte() % 4 == 0 ? input.integer() : 0;
  style.color = input.byte() % 4 == 0 ? input.name() : nullptr;
  style.background = input.byte() % 4 == 0 ? input.name() : nullptr;
  scrivalen_begin_cell(document, input.byte() % 2 == 0 ? &style : nullptr);
}

void addRows(scrivalen_document* document, Input& input) {
  constexpr std::size_t kRows = 4;
  const double reals[kRows] = {input.real(), input.real(), input.real(), input.real()};
  const std::int64_t integers[kRows] = {input.number(), input.number(), input.number(), input.number()};
  const std::int32_t days[kRows] = {input.integer(), input.integer(), 0, 1};
  const std::uint8_t bits[] = {static_cast<std::uint8_t>(input.byte())};
  std::size_t size = 0;
  const char* text = input.text(&size);
  const std::string texts = text ? text : "";
  std::int64_t offsets[kRows + 1] = {0, 0, 0, 0, static_cast<std::int64_t>(texts.size())};
  if (input.byte() == 7) {
    offsets[1] = input.byte() % 2 == 0 ? -1 : 1000000;
  }
  const void* const values[] = {nullptr, texts.data(), reals, integers, days, integers, bits};
  scrivalen_column_data columns[3] = {};
  for (scrivalen_column_data& column : columns) {
    column.size = sizeof column;
    column.type = input.byte() % 7;
    column.values = input.byte() == 7 ? nullptr : values[column.type];
    column.offsets = column.type == SCRIVALEN_TEXT ? offsets : nullptr;
    column.validity = input.byte() % 2 == 0 ? bits : nullptr;
    column.offset = static_cast<std::size_t>(input.byte() % 2);
  }
  scrivalen_rows(document, columns, static_cast<std::size_t>(input.byte() % 4),
                 static_cast<std::size_t>(input.byte()) % kRows);
}

void call(scrivalen_document* document, Input& input) {
  std::size_t size = 0;
  switch (input.byte() % 40) {
    case 0: scrivalen_begin_section(document, input.name(), input.name()); break;
    case 1: scrivalen_begin_heading(document, input.integer(), input.name(), nullptr); break;
    case 2: {
      const scrivalen_paragraph_style style = {input.byte() == 7 ? 1 : sizeof style, input.byte() % 6};
      scrivalen_begin_paragraph(document, input.byte() % 2 == 0 ? &style : nullptr);
      break;
    }
    case 3: scrivalen_begin_quote(document); break;
    case 4: scrivalen_begin_list(document, input.byte() % 2, input.integer(), input.byte() % 2); break;
    case 5: scrivalen_begin_item(document, input.byte() % 4); break;
    case 6: scrivalen_begin_code(document, input.name()); break;
    case 7: beginTable(document, input); break;
    case 8:
    case 9: scrivalen_begin_row(document, input.byte() % 2); break;
    case 10: beginCell(document, input); break;
    case 11: scrivalen_begin_span(document, input.byte() % 9); break;
    case 12: scrivalen_begin_colored(document, input.name(), input.name()); break;
    case 13: scrivalen_begin_sized(document, input.real()); break;
    case 14: scrivalen_begin_link(document, input.name(), input.name()); break;
    case 15: scrivalen_begin_language(document, input.name()); break;
    case 16:
    case 17:
    case 18:
    case 19: scrivalen_end(document); break;
    case 20:
    case 21:
    case 22: {
      const char* text = input.text(&size);
      scrivalen_text(document, text, size);
      break;
    }
    case 23: scrivalen_line_break(document); break;
    case 24: scrivalen_page_break(document); break;
    case 25: scrivalen_rule(document); break;
    case 26: scrivalen_anchor(document, input.name()); break;
    case 27: scrivalen_begin_contents(document); break;
    case 28: {
      const char* text = input.text(&size);
      scrivalen_contents_item(document, input.integer(), input.name(), text, size);
      break;
    }
    case 29: {
      const char* text = input.text(&size);
      scrivalen_image(document, text, text ? size % 100 : 0, input.name(), input.real());
      break;
    }
    case 30: scrivalen_raw(document, input.name(), nullptr, 0); break;
    case 31: {
      const char* text = input.text(&size);
      scrivalen_heading(document, input.integer(), text, size);
      break;
    }
    case 32: {
      const char* text = input.text(&size);
      scrivalen_paragraph(document, text, size);
      break;
    }
    case 33: {
      const char* text = input.text(&size);
      scrivalen_cell(document, text, size);
      break;
    }
    case 34: scrivalen_cell_number(document, input.real()); break;
    case 35: {
      const std::int64_t number = input.number();
      number % 2 == 0 ? scrivalen_cell_integer(document, number)
                      : scrivalen_cell_decimal(document, number, static_cast<int>(number % 17));
      break;
    }
    case 36: scrivalen_cell_date(document, input.integer()); break;
    case 37: scrivalen_cell_time(document, input.number()); break;
    case 38: scrivalen_cell_boolean(document, input.byte()); break;
    default: addRows(document, input); break;
  }
}

void require(const std::string& problem, const Sink& sink) {
  if (!problem.empty()) {
    std::fprintf(stderr, "%s: %s\n%s\n", sink.format.c_str(), problem.c_str(), sink.bytes.c_str());
    std::abort();
  }
}

std::map<char32_t, std::size_t> lettersIn(const Sink& sink) {
  if (sink.format == "text") {
    return scrivalen::fuzz::lettersOf(sink.bytes);
  }
  if (sink.format == "markdown") {
    return scrivalen::fuzz::lettersOfMarkdown(sink.bytes);
  }
  return sink.format == "rtf" ? scrivalen::fuzz::lettersOfRtf(sink.bytes)
                              : scrivalen::fuzz::lettersOfTagged(sink.bytes);
}

std::string problemOf(const Sink& sink) {
  if (sink.format == "text" || sink.format == "markdown") {
    return {};
  }
  if (sink.format != "rtf") {
    return scrivalen::fuzz::problemOfTags(sink.bytes);
  }
  const std::string_view bytes = sink.bytes;  // a line feed comes after the outermost group
  return scrivalen::fuzz::problemOfRtf(bytes.substr(0, bytes.size() - 1));
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  scrivalen::SetClockHandler([] { return std::int64_t{1700000000}; });
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  scrivalen_document* const document = scrivalen_new();
  const std::size_t limit = input.byte() % 8 == 0 ? static_cast<std::size_t>(input.byte()) * 16 : 1 << 30;
  std::vector<std::unique_ptr<Sink>> sinks;
  for (const char* format : {"text", "html", "xml", "rtf", "markdown", "docx"}) {
    sinks.push_back(std::make_unique<Sink>(Sink{format, {}, limit, document}));
    scrivalen_add_stream(document, format, &append, sinks.back().get());
  }
  while (!input.empty()) {
    call(document, input);
  }
  const bool isWhole = scrivalen_close(document) == SCRIVALEN_OK;
  scrivalen_warning warning = {};
  warning.size = sizeof warning;
  while (scrivalen_next_warning(document, &warning) != 0) {
    if (!warning.message || warning.count == 0) {
      std::abort();
    }
  }
  for (const auto& sink : sinks) {
    // Word documents are compressed; the test of hostile texts reads them.
    if (!isWhole || sink->format == "docx") {
      continue;
    }
    require(problemOf(*sink), *sink);
    const bool isSame = lettersIn(*sinks[0]) == lettersIn(*sink);
    require(isSame ? "" : "other letters than in text:\n" + sinks[0]->bytes, *sink);
  }
  scrivalen_free(document);
  return 0;
}

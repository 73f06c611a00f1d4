// Writes the ledger once as a document and prints the cost of the whole process so far: cpu seconds and peak memory in
// KiB.
#include "document_ledger.h"
#include "process_usage.h"
#include "writers.h"

#include <scrivalen/document.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

using namespace scrivalen::bench;

namespace {

constexpr const char* kUsage =
    "usage: scrivalen_document_ledger FORMAT WRITER ROWS FILE\n"
    "  FORMAT  a format of documents; or several, with commas between them, into FILE.FORMAT each\n"
    "  WRITER  cells: a call for each cell\n"
    "          latin: as cells, with margins of 10 mm\n"
    "          letters: as latin, with the names, remarks and statuses in Cyrillic and Greek letters\n"
    "          tagged: as cells, with the structure that a PDF has for screen readers\n"
    "          rows: scrivalen_rows, a thousand rows at a time\n"
    "          typed: as cells, with numbers and dates as such\n"
    "          typedrows: as rows, with numbers and dates as such\n"
    "          handwritten (html, xml, rtf, text): buffered stdio\n"
    "          report (xlsx): a report of the classic interface\n"
    "          empty: ROWS documents without content, into memory; prints the microseconds of one instead\n"
    "          letter: as empty, with a letter of one page\n"
    "          page: as empty, with a page of prose of 500 words\n";

constexpr std::size_t kRowsAtOnce = 1000;
constexpr std::size_t kSampleRows = 500;  // from which the library takes the widths of columns
constexpr std::string_view kTitle = "Ledger";

struct Document {
  Document() = default;
  Document(const Document&) = delete;
  Document& operator=(const Document&) = delete;
  ~Document() { scrivalen_free(handle); }

  scrivalen_document* const handle = scrivalen_new();
};

void beginTable(scrivalen_document* document) {
  scrivalen_column columns[kDocumentColumns] = {};
  constexpr int kTypes[] = {SCRIVALEN_INTEGER, SCRIVALEN_TEXT, SCRIVALEN_TEXT,
                            SCRIVALEN_NUMBER,  SCRIVALEN_DATE, SCRIVALEN_TEXT};
  for (std::size_t i = 0; i < kDocumentColumns; ++i) {
    columns[i].size = sizeof columns[i];
    columns[i].type = kTypes[i];
  }
  columns[0].decimals = 0;
  columns[3].format = "#,##0.00";
  scrivalen_heading(document, 1, kTitle.data(), kTitle.size());
  scrivalen_begin_table(document, columns, kDocumentColumns, "ledger");
}

void writeCells(scrivalen_document* document, long rows, const BookingWords& words) {
  Bookings bookings(words);
  BookingTexts texts;
  for (long row = 0; row < rows; ++row) {
    scrivalen_begin_row(document, 0);
    for (const std::string_view text : texts.of(bookings.next())) {
      scrivalen_cell(document, text.data(), text.size());
    }
    scrivalen_end(document);
  }
}

void writeCells(scrivalen_document* document, long rows) { writeCells(document, rows, kLatinWords); }

void writeLatin(scrivalen_document* document, long rows) { writeCells(document, rows, kLatinWords); }

void writeTagged(scrivalen_document* document, long rows) { writeCells(document, rows, kLatinWords); }

void writeLetters(scrivalen_document* document, long rows) { writeCells(document, rows, OtherLetters().words()); }

void writeTyped(scrivalen_document* document, long rows) {
  Bookings bookings;
  for (long row = 0; row < rows; ++row) {
    const Booking booking = bookings.next();
    scrivalen_begin_row(document, 0);
    scrivalen_cell_integer(document, booking.number);
    scrivalen_cell(document, booking.name.data(), booking.name.size());
    scrivalen_cell(document, booking.remark.data(), booking.remark.size());
    scrivalen_cell_number(document, static_cast<double>(booking.cents) / 100);
    scrivalen_cell_date(document, booking.day);
    scrivalen_cell(document, booking.status.data(), booking.status.size());
    scrivalen_end(document);
  }
}

struct TextColumn {
  std::string texts;
  std::vector<std::int64_t> offsets{0};

  void add(std::string_view text) {
    texts += text;
    offsets.push_back(static_cast<std::int64_t>(texts.size()));
  }
  void clear() {
    texts.clear();
    offsets.resize(1);
  }
  scrivalen_column_data data() const {
    return {sizeof(scrivalen_column_data), SCRIVALEN_TEXT, texts.data(), offsets.data(), nullptr, 0};
  }
};

void writeRows(scrivalen_document* document, long rows) {
  Bookings bookings;
  BookingTexts texts;
  TextColumn columns[kDocumentColumns];
  for (long row = 0; row < rows;) {
    std::size_t count = 0;
    for (TextColumn& column : columns) {
      column.clear();
    }
    for (; count < kRowsAtOnce && row < rows; ++count, ++row) {
      const BookingTexts::Texts& cells = texts.of(bookings.next());
      for (std::size_t i = 0; i < kDocumentColumns; ++i) {
        columns[i].add(cells[i]);
      }
    }
    scrivalen_column_data data[kDocumentColumns];
    std::transform(std::begin(columns), std::end(columns), data,
                   [](const TextColumn& column) { return column.data(); });
    scrivalen_rows(document, data, kDocumentColumns, count);
  }
}

void writeTypedRows(scrivalen_document* document, long rows) {
  constexpr std::size_t kTexts = 3;
  Bookings bookings;
  TextColumn texts[kTexts];
  std::vector<std::int64_t> numbers;
  std::vector<double> amounts;
  std::vector<std::int32_t> days;
  for (long row = 0; row < rows;) {
    for (TextColumn& column : texts) {
      column.clear();
    }
    numbers.clear();
    amounts.clear();
    days.clear();
    for (; numbers.size() < kRowsAtOnce && row < rows; ++row) {
      const Booking booking = bookings.next();
      numbers.push_back(booking.number);
      texts[0].add(booking.name);
      texts[1].add(booking.remark);
      amounts.push_back(static_cast<double>(booking.cents) / 100);
      days.push_back(booking.day);
      texts[2].add(booking.status);
    }
    constexpr std::size_t kSize = sizeof(scrivalen_column_data);
    const scrivalen_column_data data[] = {{kSize, SCRIVALEN_INTEGER, numbers.data(), nullptr, nullptr, 0},
                                          texts[0].data(),
                                          texts[1].data(),
                                          {kSize, SCRIVALEN_NUMBER, amounts.data(), nullptr, nullptr, 0},
                                          {kSize, SCRIVALEN_DATE, days.data(), nullptr, nullptr, 0},
                                          texts[2].data()};
    scrivalen_rows(document, data, kDocumentColumns, numbers.size());
  }
}

using WriteContent = void (*)(scrivalen_document*, long rows);

std::string failureOf(const Document& document) { return scrivalen_error(document.handle); }

std::string writeDocument(WriteContent write, const std::vector<std::string>& formats, long rows,
                          const std::string& file) {
  const Document document;
  for (const std::string& format : formats) {
    const std::string path = formats.size() == 1 ? file : file + "." + format;
    if (scrivalen_add_file(document.handle, path.c_str(), format.c_str()) != SCRIVALEN_OK) {
      return failureOf(document);
    }
  }
  scrivalen_set(document.handle, "text.width", "120");
  scrivalen_set(document.handle, "clock", "1700000000");
  if (write == writeLatin || write == writeLetters) {
    scrivalen_set(document.handle, "margins", "10mm");  // so that no text of the wider letters is wrapped
  }
  if (write == writeTagged) {
    scrivalen_set(document.handle, "pdf.tagged", "yes");
  }
  beginTable(document.handle);
  write(document.handle, rows);
  return scrivalen_close(document.handle) == SCRIVALEN_OK ? "" : failureOf(document);
}

int append(void* user, const void* data, std::size_t size) {
  static_cast<std::string*>(user)->append(static_cast<const char*>(data), size);
  return 0;
}

// What the library writes around the rows, so that the writer by hand makes the same document.
std::string documentOf(const char* format, long rows) {
  std::string bytes;
  const Document document;
  scrivalen_add_stream(document.handle, format, &append, &bytes);
  scrivalen_set(document.handle, "text.width", "120");
  scrivalen_set(document.handle, "clock", "1700000000");
  beginTable(document.handle);
  writeCells(document.handle, rows);
  scrivalen_close(document.handle);
  return bytes;
}

constexpr std::size_t kBufferSize = 65536;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

// Writes the text through @p escape, which returns what replaces a character; empty for one that stays.
template <typename Escape>
void putEscaped(std::string_view text, std::FILE* out, Escape escape) {
  constexpr std::size_t kLongest = 8;
  char bytes[4096];
  char* at = bytes;
  for (const char c : text) {
    if (at > bytes + sizeof bytes - kLongest) {
      std::fwrite(bytes, 1, static_cast<std::size_t>(at - bytes), out);
      at = bytes;
    }
    const std::string_view replacement = escape(c);
    if (replacement.empty()) {
      *at++ = c;
    } else {
      at = std::copy(replacement.begin(), replacement.end(), at);
    }
  }
  std::fwrite(bytes, 1, static_cast<std::size_t>(at - bytes), out);
}

void putMarkup(std::string_view text, std::FILE* out) {
  putEscaped(text, out, [](char c) -> std::string_view {
    return c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : "";
  });
}

void writeHtml(long rows, std::FILE* out) {
  constexpr std::string_view kBody = "<tbody>\n";
  const std::string page = documentOf("html", 1);
  const std::size_t begin = page.find(kBody) + kBody.size();
  const std::size_t end = page.find("</tbody>");
  std::fwrite(page.data(), 1, begin, out);
  Bookings bookings;
  BookingTexts texts;
  for (long row = 0; row < rows; ++row) {
    std::fputs("<tr>", out);
    std::size_t column = 0;
    for (const std::string_view text : texts.of(bookings.next())) {
      const bool isNumber = column == 0 || column == 3;
      std::fputs(isNumber ? "<td style=\"text-align:right\">" : column == 4 ? "<td class=\"date\">" : "<td>", out);
      putMarkup(text, out);
      std::fputs("</td>", out);
      ++column;
    }
    std::fputs("</tr>\n", out);
  }
  std::fwrite(page.data() + end, 1, page.size() - end, out);
}

void writeXml(long rows, std::FILE* out) {
  const std::string document = documentOf("xml", 1);
  const std::size_t begin = document.find("<row>");
  const std::size_t end = document.find("</table>");
  std::fwrite(document.data(), 1, begin, out);
  Bookings bookings;
  BookingTexts texts;
  for (long row = 0; row < rows; ++row) {
    std::fputs("<row>", out);
    for (const std::string_view text : texts.of(bookings.next())) {
      std::fputs("<cell>", out);
      putMarkup(text, out);
      std::fputs("</cell>", out);
    }
    std::fputs("</row>\n", out);
  }
  std::fwrite(document.data() + end, 1, document.size() - end, out);
}

// The ledger has one letter outside ASCII.
void putRtf(std::string_view text, std::FILE* out) {
  putEscaped(text, out, [](char c) -> std::string_view {
    switch (c) {
      case '\\': return "\\\\";
      case '{': return "\\{";
      case '}': return "\\}";
      case '\xC3': return "\\'";
      case '\xA9': return "E9";
      default: return "";
    }
  });
}

void writeRtf(long rows, std::FILE* out) {
  constexpr std::string_view kFirstCell = "\\qr 1\\cell";
  constexpr const char* kAlignments[] = {"\\qr ", "\\ql ", "", "\\qr ", "\\ql ", ""};
  const std::string document = documentOf("rtf", std::min<long>(rows, kSampleRows));
  const std::size_t begin = document.find("\\trowd");
  const std::size_t cell = document.find(kFirstCell);
  const std::size_t end = document.rfind("\\row\n") + 5;
  const std::string definition = document.substr(begin, cell - begin);
  std::fwrite(document.data(), 1, begin, out);
  Bookings bookings;
  BookingTexts texts;
  for (long row = 0; row < rows; ++row) {
    std::fputs(definition.c_str(), out);
    std::size_t column = 0;
    for (const std::string_view text : texts.of(bookings.next())) {
      std::fputs(kAlignments[column], out);
      putRtf(text, out);
      std::fputs("\\cell\n", out);
      ++column;
    }
    std::fputs("\\row\n", out);
  }
  std::fwrite(document.data() + end, 1, document.size() - end, out);
}

std::size_t charactersOf(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

void putBlanks(std::size_t count, std::FILE* out) { std::fprintf(out, "%*s", static_cast<int>(count), ""); }

void writeText(long rows, std::FILE* out) {
  constexpr std::size_t kDigitsToCome = 4;
  std::size_t widths[kDocumentColumns] = {};
  {
    Bookings bookings;
    BookingTexts texts;
    for (long row = 0; row < std::min<long>(rows, kSampleRows); ++row) {
      const BookingTexts::Texts& cells = texts.of(bookings.next());
      for (std::size_t i = 0; i < kDocumentColumns; ++i) {
        widths[i] = std::max(widths[i], charactersOf(cells[i]));
      }
    }
  }
  if (rows >= static_cast<long>(kSampleRows)) {
    widths[0] += kDigitsToCome;
    widths[3] += kDigitsToCome;
  }
  const std::string begin = documentOf("text", 0) + (rows > 0 ? "\n" : "");
  std::fwrite(begin.data(), 1, begin.size(), out);
  Bookings bookings;
  BookingTexts texts;
  for (long row = 0; row < rows; ++row) {
    const BookingTexts::Texts& cells = texts.of(bookings.next());
    for (std::size_t i = 0; i < kDocumentColumns; ++i) {
      // Blanks at the end of a cell's text do not count.
      const std::string_view text = cells[i].substr(0, cells[i].find_last_not_of(' ') + 1);
      const std::size_t blanks = widths[i] - std::min(widths[i], charactersOf(text));
      if (i == 0 || i == 3) {
        putBlanks(blanks, out);
      }
      std::fwrite(text.data(), 1, text.size(), out);
      if (i + 1 < kDocumentColumns) {
        putBlanks((i == 0 || i == 3 ? 0 : blanks) + 2, out);
      }
    }
    std::fputc('\n', out);
  }
}

std::string writeByHand(const std::string& format, long rows, const std::string& file) {
  const std::unique_ptr<std::FILE, FileCloser> out(std::fopen(file.c_str(), "wb"));
  if (!out) {
    return "cannot open " + file;
  }
  std::setvbuf(out.get(), nullptr, _IOFBF, kBufferSize);
  if (format == "html") {
    writeHtml(rows, out.get());
  } else if (format == "xml") {
    writeXml(rows, out.get());
  } else if (format == "rtf") {
    writeRtf(rows, out.get());
  } else {
    writeText(rows, out.get());
  }
  return std::ferror(out.get()) == 0 ? "" : "cannot write " + file;
}

void writeLetter(scrivalen_document* document) {
  constexpr std::string_view kHeading = "Order 2024-17";
  constexpr std::string_view kParagraph =
      "Thank you for your offer of 14 March. We would like to order the items below, to be delivered to our branch in "
      "the north by the end of the month; please write to us if you need more than two weeks for that.";
  constexpr std::string_view kStrong = "It is urgent.";
  scrivalen_heading(document, 1, kHeading.data(), kHeading.size());
  for (int i = 0; i < 6; ++i) {
    scrivalen_paragraph(document, kParagraph.data(), kParagraph.size());
  }
  scrivalen_begin_paragraph(document, nullptr);
  scrivalen_begin_span(document, SCRIVALEN_STRONG);
  scrivalen_text(document, kStrong.data(), kStrong.size());
  scrivalen_end(document);
  scrivalen_end(document);
}

void writePage(scrivalen_document* document) {
  constexpr std::string_view kHeading = "The warehouse in the north";
  constexpr std::string_view kBegin =
      "In the second quarter the branch took in more than it sent out, so that by the end of June every shelf of the "
      "upper floor was full. ";
  constexpr std::string_view kStress = "No order was late. ";
  constexpr std::string_view kEnd =
      "We propose to rent the hall beside the yard until the spring, and to move the paper there first.";
  scrivalen_heading(document, 1, kHeading.data(), kHeading.size());
  for (int i = 0; i < 10; ++i) {
    scrivalen_begin_paragraph(document, nullptr);
    scrivalen_text(document, kBegin.data(), kBegin.size());
    scrivalen_begin_span(document, SCRIVALEN_EMPHASIS);
    scrivalen_text(document, kStress.data(), kStress.size());
    scrivalen_end(document);
    scrivalen_text(document, kEnd.data(), kEnd.size());
    scrivalen_end(document);
  }
}

int measureDocuments(const std::string& format, long documents, void (*write)(scrivalen_document*)) {
  std::string bytes;
  const auto begin = std::chrono::steady_clock::now();
  for (long i = 0; i < documents; ++i) {
    bytes.clear();
    const Document document;
    scrivalen_add_stream(document.handle, format.c_str(), &append, &bytes);
    write(document.handle);
    scrivalen_close(document.handle);
  }
  const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - begin;
  std::printf("%.3f %ld\n", time.count() / static_cast<double>(documents), processUsage().peakMemoryKiB);
  return 0;
}

WriteContent writerOf(std::string_view name) {
  if (name == "cells") return static_cast<WriteContent>(&writeCells);
  if (name == "latin") return writeLatin;
  if (name == "letters") return writeLetters;
  if (name == "tagged") return writeTagged;
  if (name == "rows") return writeRows;
  if (name == "typed") return writeTyped;
  if (name == "typedrows") return writeTypedRows;
  return nullptr;
}

std::vector<std::string> split(std::string_view list) {
  std::vector<std::string> parts;
  while (!list.empty()) {
    const std::size_t end = std::min(list.find(','), list.size());
    parts.emplace_back(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return parts;
}

int wrongUsage() {
  std::fputs(kUsage, stderr);
  return 2;
}

int report(const std::string& failure) {
  if (!failure.empty()) {
    std::fprintf(stderr, "scrivalen_document_ledger: %s\n", failure.c_str());
    return 1;
  }
  const ProcessUsage usage = processUsage();
  std::printf("%.6f %ld\n", usage.cpuSeconds, usage.peakMemoryKiB);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  long rows = 0;
  if (argc != 5 || std::from_chars(argv[3], argv[3] + std::strlen(argv[3]), rows).ec != std::errc() || rows < 0) {
    return wrongUsage();
  }
  const std::vector<std::string> formats = split(argv[1]);
  const std::string_view writer = argv[2];
  if (writer == "empty") {
    return measureDocuments(formats.front(), rows, [](scrivalen_document*) {});
  }
  if (writer == "letter") {
    return measureDocuments(formats.front(), rows, &writeLetter);
  }
  if (writer == "page") {
    return measureDocuments(formats.front(), rows, &writePage);
  }
  if (writer == "handwritten") {
    return report(writeByHand(formats.front(), rows, argv[4]));
  }
  if (writer == "report") {
    return report(writeWithLibrary(Format::Xlsx, rows, argv[4]));
  }
  if (const WriteContent write = writerOf(writer)) {
    return report(writeDocument(write, formats, rows, argv[4]));
  }
  return wrongUsage();
}

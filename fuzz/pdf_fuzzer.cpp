#include "formats/pdf/layout/pdf_report.h"
#include "input.h"
#include "report_calls.h"
#include "scrivalen/host.h"
#include "scrivalen/pdf_doc.h"
#include "support/documents/pdf_structure.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

using scrivalen::fuzz::Input;

namespace {

// A file in memory with a path by which a report can open it.
class MemoryFile {
 public:
  MemoryFile() : descriptor_(memfd_create("fuzz", 0)) {}
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  ~MemoryFile() { close(descriptor_); }

  void* handle() const { return reinterpret_cast<void*>(static_cast<std::intptr_t>(descriptor_)); }
  std::wstring path() const { return L"/proc/self/fd/" + std::to_wstring(descriptor_); }

  std::string bytes() const {
    std::string result(static_cast<std::size_t>(lseek(descriptor_, 0, SEEK_END)), '\0');
    if (pread(descriptor_, result.data(), result.size(), 0) != static_cast<ssize_t>(result.size())) {
      std::abort();
    }
    return result;
  }

 private:
  int descriptor_;
};

// Limits the number of columns, lines or levels, so that a run ends soon.
int few(int number) { return number % 300; }

_RGB_COLOR color(Input& input) {
  const auto part = [&] { return input.number() / 64.0; };
  const double red = part();
  const double green = part();
  return {red, green, part()};
}

void callDocument(CPDFdoc& doc, Input& input) {
  const wchar_t* const text = input.text();
  switch (input.byte() % 24) {
    case 0: return doc.AddFont(input.number(), static_cast<PDF_STANDARD_FONT_FACE>(input.byte() % 24));
    case 1: return doc.FontNo(input.number());
    case 2: return doc.FontSize(input.number());
    case 3: return doc.BoldOn();
    case 4: return doc.BoldOff();
    case 5: return doc.ItalicOn();
    case 6: return doc.ItalicOff();
    case 7: return doc.ColorOn(color(input));
    case 8: return doc.ColorOff();
    case 9: return doc.Paragraf(input.number());
    case 10:
    case 11: return doc.write(text);
    case 12: return doc.LineBreak();
    case 13: return doc.BeginTable();
    case 14: return doc.EndTable();
    case 15: return doc.BeginRow(few(input.number()));
    case 16: return doc.EndRow();
    case 17: return doc.BeginCell(color(input));
    case 18: return doc.EndCell();
    case 19: return doc.BookMark(text);
    case 20: return doc.HyperLink(text, input.text());
    case 21: return doc.AddOutlineItem(text, input.text(), few(input.number()));
    case 22: return doc.PageBreak();
    default: doc.GetFontIdx(input.number(), true, false); break;
  }
}

void runDocument(Input& input, const MemoryFile& file, bool conforming) {
  CPDFdoc doc;
  doc.SetConforming(conforming ? 1 : 0);
  doc.BegDoc(file.handle(), input.byte() & 1);
  while (!input.empty()) {
    callDocument(doc, input);
  }
  if (doc.EndDoc(input.text()) != 0) {
    std::abort();
  }
}

void runReport(Input& input, const MemoryFile& file, bool conforming) {
  PDFReport report;
  report.SetReportOption(OPTION_CONFORMING, conforming ? 1 : 0);
  report.Open(file.path().c_str());
  while (!input.empty()) {
    scrivalen::fuzz::callReport(report, input);
  }
  if (report.Close() != REPORT_OK) {
    std::abort();
  }
}

// Texts of the classic form are not escaped, so only a conforming file can be parsed whatever its content.
void checkStructure(const std::string& bytes) {
  const scrivalen::test::PdfStructure structure(bytes, true);
  for (const std::string& problem : structure.problems()) {
    std::fprintf(stderr, "%s\n", problem.c_str());
  }
  if (!structure.problems().empty()) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  scrivalen::SetLogHandler([](const wchar_t*) {});
  Input input(data, size);
  const MemoryFile file;
  const bool conforming = (input.byte() & 1) != 0;
  if (input.byte() & 1) {
    runReport(input, file, conforming);
  } else {
    runDocument(input, file, conforming);
  }
  if (conforming) {
    checkStructure(file.bytes());
  }
  return 0;
}

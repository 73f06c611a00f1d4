// Writes the ledger once and prints the cost of the whole process so far: cpu seconds and peak memory in KiB.
#include "process_usage.h"
#include "writers.h"

#include "scrivalen/host.h"

#include <charconv>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

using namespace scrivalen::bench;

namespace {

constexpr const char* kUsage =
    "usage: scrivalen_ledger FORMAT WRITER ROWS FILE\n"
    "  FORMAT  text, html, xml, rtf, pdf, xlsx\n"
    "          prose (writers library and haru): sections of prose as pdf, of which ROWS is the number\n"
    "          all (writer common only): text, html and xml at once, into FILE.txt, FILE.html and FILE.xml\n"
    "  WRITER  library: the library, with the calls that suit the format\n"
    "          common: the library, with the calls that serve every format\n"
    "          document (rtf only): the class RTFdoc, without a report\n"
    "          handwritten (not pdf, xlsx): buffered stdio\n"
    "          haru (pdf only): libharu\n"
    "          xlsxwriter (xlsx only): libxlsxwriter\n"
    "Prints the cpu seconds and the peak memory in KiB of the whole process.\n";

std::optional<Format> formatOf(std::string_view name) {
  for (const NamedFormat& candidate : kFormats) {
    if (name == candidate.name) {
      return candidate.format;
    }
  }
  return std::nullopt;
}

std::optional<long> rowsOf(std::string_view text) {
  long rows = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), rows);
  if (error != std::errc() || end != text.data() + text.size() || rows < 0) {
    return std::nullopt;
  }
  return rows;
}

int wrongUsage() {
  std::fputs(kUsage, stderr);
  return 2;
}

using Write = std::string (*)(Format format, long rows, const std::string& file);

Write writerOf(std::string_view name) {
  if (name == "library") return writeWithLibrary;
  if (name == "common") return writeWithCommonCalls;
  if (name == "document") return writeWithDocument;
  if (name == "handwritten") return writeByHand;
  if (name == "haru") return writeWithHaru;
  if (name == "xlsxwriter") return writeWithXlsxwriter;
  return nullptr;
}

int report(const std::string& failure) {
  if (!failure.empty()) {
    std::fprintf(stderr, "scrivalen_ledger: %s\n", failure.c_str());
    return 1;
  }
  const ProcessUsage usage = processUsage();
  std::printf("%.6f %ld\n", usage.cpuSeconds, usage.peakMemoryKiB);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  scrivalen::SetLogHandler([](const wchar_t*) {});  // a classic PDF of several pages is logged
  if (argc != 5) {
    return wrongUsage();
  }
  const std::string_view formatName = argv[1];
  const std::string_view writerName = argv[2];
  const auto format = formatOf(formatName);
  const Write write = writerOf(writerName);
  const auto rows = rowsOf(argv[3]);
  if (rows && formatName == "all" && writerName == "common") {
    return report(writeAllWithCommonCalls(*rows, argv[4]));
  }
  if (rows && formatName == "prose" && writerName == "library") {
    return report(writeProseWithLibrary(*rows, argv[4]));
  }
  if (rows && formatName == "prose" && writerName == "haru") {
    return report(writeProseWithHaru(*rows, argv[4]));
  }
  return rows && format && write ? report(write(*format, *rows, argv[4])) : wrongUsage();
}

// Writes a PDF once and prints the cost of the whole process so far: cpu seconds and peak memory in KiB.
#include "process_usage.h"
#include "shaped_prose.h"
#include "table_canvas.h"

#include <charconv>
#include <cstdio>
#include <cstring>
#include <string_view>

using namespace scrivalen::bench;

namespace {

constexpr const char* kUsage =
    "usage: scrivalen_pdf_peers WHAT WRITER COUNT FILE\n"
    "  WHAT    ledger: COUNT rows of the ledger (writers haru, cairo)\n"
    "          prose: COUNT paragraphs in Arabic and Devanagari (writers library, pango)\n";

using Write = std::string (*)(long count, const std::string& file);

Write writerOf(std::string_view what, std::string_view writer) {
  if (what == "ledger" && writer == "haru") return writeLedgerWithHaru;
  if (what == "ledger" && writer == "cairo") return writeLedgerWithCairo;
  if (what == "prose" && writer == "library") return writeProseWithLibrary;
  if (what == "prose" && writer == "pango") return writeProseWithPango;
  return nullptr;
}

}  // namespace

int main(int argc, char** argv) {
  long count = 0;
  const Write write = argc == 5 ? writerOf(argv[1], argv[2]) : nullptr;
  if (!write || std::from_chars(argv[3], argv[3] + std::strlen(argv[3]), count).ec != std::errc() || count < 0) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  if (const std::string failure = write(count, argv[4]); !failure.empty()) {
    std::fprintf(stderr, "scrivalen_pdf_peers: %s\n", failure.c_str());
    return 1;
  }
  const ProcessUsage usage = processUsage();
  std::printf("%.6f %ld\n", usage.cpuSeconds, usage.peakMemoryKiB);
  return 0;
}

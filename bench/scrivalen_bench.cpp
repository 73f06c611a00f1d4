// Measures the ledger through the library in turn with its alternative: a handwritten writer of the same bytes or, for
// several formats at once, one pass for each.
#include "process_usage.h"
#include "same_bytes.h"
#include "writers.h"

#include "scrivalen/host.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

using namespace scrivalen::bench;

namespace {

using Writer = std::string (*)(Format format, long rows, const std::string& file);

struct Comparison {
  std::string name;
  Format format;
  Writer write;
  Writer peer;
  long mostRows;
};

// Larger files, such as a million rows in several formats, would measure the system's disk cache.
constexpr long kMostRowsOfLargeFiles = 100000;
constexpr long kMostRows = 1000000;

Writer peerOf(Format format) {
  switch (format) {
    case Format::Pdf: return writeWithHaru;
    case Format::Xlsx: return writeWithXlsxwriter;
    default: return writeByHand;
  }
}

std::vector<Comparison> comparisons() {
  std::vector<Comparison> all;
  for (const NamedFormat& format : kFormats) {
    const bool isLarge = format.format == Format::Rtf || format.format == Format::Pdf || format.format == Format::Xlsx;
    const Writer peer = peerOf(format.format);
    all.push_back({format.name, format.format, writeWithLibrary, peer, isLarge ? kMostRowsOfLargeFiles : kMostRows});
  }
  all.push_back({"rtf_document", Format::Rtf, writeWithDocument, writeByHand, kMostRowsOfLargeFiles});
  return all;
}

/// A folder for the files of one run, removed with them.
class WorkFolder {
 public:
  WorkFolder() : path_((std::filesystem::temp_directory_path() / "scrivalen_bench.XXXXXX").string()) {
    if (!mkdtemp(path_.data())) {
      throw std::runtime_error("cannot make the folder " + path_);
    }
  }
  WorkFolder(const WorkFolder&) = delete;
  WorkFolder& operator=(const WorkFolder&) = delete;
  ~WorkFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  std::string file(const char* name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

/// The cpu seconds of a call. Throws the text that the call returns when it fails.
template <typename Write>
double cpuSecondsOf(Write write) {
  const double start = processUsage().cpuSeconds;
  const std::string failure = write();
  const double seconds = processUsage().cpuSeconds - start;
  if (!failure.empty()) {
    throw std::runtime_error(failure);
  }
  return seconds;
}

double median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// Times a call and, in turn with it but outside the benchmark's time, its alternative.
template <typename Write, typename Other>
void compare(benchmark::State& state, const char* counter, Write write, Other other) {
  std::vector<double> ratios;
  for (auto _ : state) {
    const double seconds = cpuSecondsOf(write);
    state.PauseTiming();
    ratios.push_back(seconds / cpuSecondsOf(other));
    state.ResumeTiming();
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.counters[counter] = median(ratios);
}

void compareWithPeer(benchmark::State& state, const Comparison& comparison, const WorkFolder& folder) {
  const long rows = static_cast<long>(state.range(0));
  const std::string file = folder.file("library");
  const std::string other = folder.file("peer");
  compare(
      state, "ratio_to_peer", [&] { return comparison.write(comparison.format, rows, file); },
      [&] { return comparison.peer(comparison.format, rows, other); });
}

std::string writeOneByOne(long rows, const std::string& file) {
  std::string failure;
  for (const NamedFormat& format : std::span(kFormats).first(kFormatsAtOnce)) {
    failure += writeWithCommonCalls(format.format, rows, file + "." + format.name);
  }
  return failure;
}

void compareWithThreePasses(benchmark::State& state, const WorkFolder& folder) {
  const long rows = static_cast<long>(state.range(0));
  const std::string file = folder.file("all");
  const std::string other = folder.file("one");
  compare(
      state, "ratio_to_three_passes", [&] { return writeAllWithCommonCalls(rows, file); },
      [&] { return writeOneByOne(rows, other); });
}

/// A comparison with a handwritten writer is only valid if both write the same bytes.
void requireSameBytes(const WorkFolder& folder) {
  constexpr long kRows = 1000;
  for (const Comparison& comparison : comparisons()) {
    if (comparison.peer != writeByHand) {
      continue;
    }
    const std::string file = folder.file("library");
    const std::string other = folder.file("handwritten");
    cpuSecondsOf([&] { return comparison.write(comparison.format, kRows, file); });
    cpuSecondsOf([&] { return writeByHand(comparison.format, kRows, other); });
    const std::string found = difference(file, other);
    if (!found.empty()) {
      throw std::runtime_error(comparison.name + ": " + found);
    }
  }
}

void registerBenchmarks(const WorkFolder& folder) {
  for (const Comparison& comparison : comparisons()) {
    benchmark::RegisterBenchmark(
        ("ledger/" + comparison.name).c_str(),
        [&folder, comparison](benchmark::State& state) { compareWithPeer(state, comparison, folder); })
        ->RangeMultiplier(10)
        ->Range(1000, comparison.mostRows)
        ->Unit(benchmark::kMillisecond)
        ->MeasureProcessCPUTime();
  }
  benchmark::RegisterBenchmark("ledger/all",
                               [&folder](benchmark::State& state) { compareWithThreePasses(state, folder); })
      ->RangeMultiplier(10)
      ->Range(1000, kMostRowsOfLargeFiles)
      ->Unit(benchmark::kMillisecond)
      ->MeasureProcessCPUTime();
}

}  // namespace

int main(int argc, char** argv) {
  scrivalen::SetLogHandler([](const wchar_t*) {});  // a classic PDF of several pages is logged
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
    return 2;
  }
  try {
    const WorkFolder folder;
    requireSameBytes(folder);
    registerBenchmarks(folder);
    benchmark::RunSpecifiedBenchmarks();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "scrivalen_bench: %s\n", failure.what());
    return 1;
  }
  benchmark::Shutdown();
  return 0;
}

#include "readers/csv/csv_delimiter.h"

#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace scrivalen::command {
namespace {

constexpr std::string_view kCandidates = ",;\t|";
constexpr std::size_t kMostRows = 50;

// How often each candidate stands in a row, outside quoted cells.
struct Counts {
  std::array<std::size_t, kCandidates.size()> all{};
  std::size_t betweenDigits = 0;  // commas, as in 1.234,56

  bool isEmpty() const {
    return std::all_of(all.begin(), all.end(), [](std::size_t count) { return count == 0; });
  }
};

bool isDigitAt(std::string_view text, std::size_t at) { return at < text.size() && scrivalen::isAsciiDigit(text[at]); }

void count(Counts& counts, std::string_view text, std::size_t at) {
  const std::size_t candidate = kCandidates.find(text[at]);
  if (candidate == kCandidates.npos) {
    return;
  }
  ++counts.all[candidate];
  if (text[at] == ',' && at > 0 && isDigitAt(text, at - 1) && isDigitAt(text, at + 1)) {
    ++counts.betweenDigits;
  }
}

std::vector<Counts> countsOf(std::string_view text) {
  std::vector<Counts> rows(1);
  bool isQuoted = false;
  for (std::size_t at = 0; at < text.size() && rows.size() <= kMostRows; ++at) {
    if (text[at] == '"') {
      isQuoted = !isQuoted;
    } else if (!isQuoted && (text[at] == '\n' || text[at] == '\r')) {
      rows.emplace_back();
    } else if (!isQuoted) {
      count(rows.back(), text, at);
    }
  }
  std::erase_if(rows, [](const Counts& row) { return row.isEmpty(); });
  return rows;
}

// How many rows have as many of a candidate as the first one; 0 if the first has none.
std::size_t agreement(const std::vector<Counts>& rows, std::size_t candidate) {
  const std::size_t expected = rows.front().all[candidate];
  if (expected == 0) {
    return 0;
  }
  return static_cast<std::size_t>(
      std::count_if(rows.begin(), rows.end(), [&](const Counts& row) { return row.all[candidate] == expected; }));
}

}  // namespace

char csvDelimiterOf(std::string_view start) {
  const std::vector<Counts> rows = countsOf(start);
  if (rows.empty()) {
    return kCandidates.front();
  }
  std::size_t best = 0;
  std::size_t most = rows.front().all[0] > rows.front().betweenDigits ? agreement(rows, 0) : 0;
  for (std::size_t candidate = 1; candidate < kCandidates.size(); ++candidate) {
    if (const std::size_t rowsOfIt = agreement(rows, candidate); rowsOfIt > most) {
      best = candidate;
      most = rowsOfIt;
    }
  }
  return kCandidates[best];
}

}  // namespace scrivalen::command

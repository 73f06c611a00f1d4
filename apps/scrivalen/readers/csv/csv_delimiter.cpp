#include "readers/csv/csv_delimiter.h"

#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <vector>

namespace scrivalen::command {
namespace {

constexpr std::string_view kCandidates = ",;\t|";
constexpr std::size_t kComma = 0;
constexpr std::size_t kMostRows = 50;
constexpr std::size_t kMostBytes = 65536;

using Counts = std::array<std::size_t, kCandidates.size()>;

// How often each candidate stands in a row, outside quoted cells.
struct Row {
  Counts counts{};
  std::size_t betweenDigits = 0;  // commas, as in 1.234,56

  bool isEmpty() const { return counts == Counts{}; }
};

/// The candidates in the first rows. They are the same however the text is divided into pieces.
class FirstRows {
 public:
  /// Reads on until there are enough rows or bytes.
  void add(std::string_view text);
  bool isFull() const { return ended_ == kMostRows || bytes_ == kMostBytes; }
  char delimiter() const;

 private:
  void add(char c);
  void addQuote();
  void addOutsideQuotes(char c);
  void endRow(char c);
  std::size_t agreement(std::size_t candidate, bool isWithoutNumbers = false) const;

  std::vector<Row> rows_ = std::vector<Row>(1);
  std::array<bool, kCandidates.size()> isBeforeBlank_{};
  std::size_t ended_ = 0;
  std::size_t bytes_ = 0;
  bool isQuoted_ = false;
  bool mayBeDoubled_ = false;  // the quote that ended a cell
  bool isCellBegin_ = true;
  char previous_ = '\0';
  char beforePrevious_ = '\0';
};

void FirstRows::add(std::string_view text) {
  for (std::size_t at = 0; at < text.size() && !isFull(); ++at) {
    add(text[at]);
    beforePrevious_ = previous_;
    previous_ = text[at];
    ++bytes_;
  }
}

void FirstRows::add(char c) {
  if (c == '"') {
    addQuote();
    return;
  }
  mayBeDoubled_ = false;
  if (!isQuoted_) {
    addOutsideQuotes(c);
  }
}

// Inside a cell without quotes, a quote is an ordinary character, such as that of inches.
void FirstRows::addQuote() {
  const bool wasQuoted = isQuoted_;
  isQuoted_ = !wasQuoted && (isCellBegin_ || mayBeDoubled_);
  mayBeDoubled_ = wasQuoted;
  isCellBegin_ = false;
}

void FirstRows::addOutsideQuotes(char c) {
  if (c == '\n' || c == '\r') {
    endRow(c);
    return;
  }
  const std::size_t candidate = kCandidates.find(c);
  const bool isBlank = c == ' ';
  if (candidate != kCandidates.npos) {
    ++rows_.back().counts[candidate];
  }
  if (const std::size_t before = kCandidates.find(previous_); isBlank && before != kCandidates.npos) {
    isBeforeBlank_[before] = true;
  }
  if (previous_ == ',' && scrivalen::isAsciiDigit(beforePrevious_) && scrivalen::isAsciiDigit(c)) {
    ++rows_.back().betweenDigits;
  }
  isCellBegin_ = candidate != kCandidates.npos || (isCellBegin_ && isBlank);
}

void FirstRows::endRow(char c) {
  isCellBegin_ = true;
  if (c == '\n' && previous_ == '\r') {
    return;
  }
  ++ended_;
  if (!rows_.back().isEmpty()) {
    rows_.emplace_back();
  }
}

// In how many rows a candidate stands as often as in most of them. Lines above the table may have it more or less
// often.
std::size_t FirstRows::agreement(std::size_t candidate, bool isWithoutNumbers) const {
  std::map<std::size_t, std::size_t> rowsByCount;
  std::size_t most = 0;
  for (const Row& row : rows_) {
    const std::size_t count = row.counts[candidate] - (isWithoutNumbers ? row.betweenDigits : 0);
    if (count > 0) {
      most = std::max(most, ++rowsByCount[count]);
    }
  }
  return most;
}

char FirstRows::delimiter() const {
  Counts agreements{};
  for (std::size_t candidate = 0; candidate < kCandidates.size(); ++candidate) {
    agreements[candidate] = agreement(candidate);
  }
  if (*std::max_element(agreements.begin() + 1, agreements.end()) >= agreements[kComma]) {
    agreements[kComma] = agreement(kComma, true);
  }
  std::size_t best = kComma;
  for (std::size_t candidate = 1; candidate < kCandidates.size(); ++candidate) {
    const bool isEqual = agreements[candidate] == agreements[best];
    if (agreements[candidate] > agreements[best] ||
        (isEqual && agreements[best] > 0 && isBeforeBlank_[best] && !isBeforeBlank_[candidate])) {
      best = candidate;
    }
  }
  return kCandidates[best];
}

}  // namespace

char csvDelimiterOf(std::string_view start) {
  FirstRows rows;
  rows.add(start);
  return rows.delimiter();
}

// The pieces of a pipe depend on its timing, so the first one alone would not always give the same delimiter.
std::string readCsvStart(TextInput& input) {
  FirstRows rows;
  std::string text;
  while (!rows.isFull()) {
    const std::string_view more = input.next();
    if (more.empty()) {
      break;
    }
    text += more;
    rows.add(more);
  }
  return text;
}

}  // namespace scrivalen::command

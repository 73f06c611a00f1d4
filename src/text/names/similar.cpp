#include "text/names/similar.h"

#include "text/ascii.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen {
namespace {

// A longer name is not a slip of the keyboard. It also limits the work.
constexpr std::size_t kLongest = 64;

// The optimal string alignment distance: the number of letters added, left out, changed or swapped with the next one.
// Three rows of the table of all prefixes are enough.
std::size_t distance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> above(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) {
    above[j] = j;
  }
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t changed = above[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
      row[j] = std::min({above[j] + 1, row[j - 1] + 1, changed});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
        row[j] = std::min(row[j], before[j - 2] + 1);
      }
    }
    before.swap(above);
    above.swap(row);
  }
  return above[b.size()];
}

// "papersize" is perhaps "paper".
std::size_t extended(std::string_view wrong, std::string_view candidate) {
  constexpr std::size_t kShortest = 4;
  constexpr std::size_t kEdits = 2;
  return candidate.size() >= kShortest && wrong.starts_with(candidate) ? kEdits : wrong.size();
}

}  // namespace

std::string_view mostSimilar(std::string_view mistyped, std::span<const std::string_view> known) {
  if (mistyped.size() < 2 || mistyped.size() > kLongest) {
    return {};
  }
  const std::string wrong = asciiLowered(mistyped);
  std::size_t fewest = std::max<std::size_t>(1, wrong.size() / 3) + 1;
  std::string_view best;
  for (const std::string_view name : known) {
    if (name.size() > kLongest) {
      continue;
    }
    const std::string candidate = asciiLowered(name);
    const std::size_t edits = candidate.size() != wrong.size() && candidate.starts_with(wrong)
                                  ? 1
                                  : std::min(distance(wrong, candidate), extended(wrong, candidate));
    if (edits < fewest && edits < candidate.size()) {
      fewest = edits;
      best = name;
    }
  }
  return best;
}

}  // namespace scrivalen

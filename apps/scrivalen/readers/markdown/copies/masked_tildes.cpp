#include "readers/markdown/copies/masked_tildes.h"

#include <algorithm>
#include <functional>

namespace scrivalen::command {
namespace {

// ASCII punctuation, like the tilde, so that emphasis, escapes and addresses around it stay the same, and without a
// meaning of its own.
constexpr std::string_view kMasks = "^{}$%;";

// The number of backslashes before a place is odd, so the last one is no character of its own.
bool isEscaped(std::string_view text, std::size_t at) {
  const std::size_t last = text.substr(0, at).find_last_not_of('\\');
  return (at - (last == text.npos ? 0 : last + 1)) % 2 == 1;
}

// The next tilde that is alone, or alone after an escaped one; npos: there is none.
std::size_t nextSingle(std::string_view text, std::size_t from) {
  for (std::size_t at = text.find('~', from); at != text.npos; at = text.find('~', at)) {
    const std::size_t end = std::min(text.find_first_not_of('~', at), text.size());
    const std::size_t size = end - at;
    if (size == 1 || (size == 2 && isEscaped(text, at))) {
      return end - 1;
    }
    at = end;
  }
  return text.npos;
}

}  // namespace

MaskedTildes::MaskedTildes(std::string_view original) : original_(original) {
  if (nextSingle(original, 0) == original.npos) {
    return;
  }
  const auto isFree = [&](char c) { return original.find(c) == original.npos; };
  const auto* const mask = std::find_if(kMasks.begin(), kMasks.end(), isFree);
  isMaskUsed_ = mask == kMasks.end();
  mask_ = isMaskUsed_ ? kMasks[0] : *mask;
  copy_ = masked(mask_);
}

std::string MaskedTildes::masked(char mask) const {
  std::string copy(original_);
  for (std::size_t at = nextSingle(original_, 0); at != original_.npos; at = nextSingle(original_, at + 1)) {
    copy[at] = mask;
  }
  return copy;
}

std::string MaskedTildes::twin() const { return masked(kMasks[1]); }

bool MaskedTildes::holds(std::string_view part) const {
  const std::string_view all = text();
  const std::less<> isBefore;
  return !isBefore(part.data(), all.data()) && isBefore(part.data(), all.data() + all.size());
}

std::string_view MaskedTildes::original(std::string_view part) const {
  if (!isMasked() || !holds(part)) {
    return part;
  }
  return original_.substr(static_cast<std::size_t>(part.data() - copy_.data()), part.size());
}

void MaskedTildes::restore(std::string& made, std::string_view twin) {
  for (std::size_t at = 0; at < std::min(made.size(), twin.size()); ++at) {
    made[at] = made[at] == twin[at] ? made[at] : '~';
  }
}

void MaskedTildes::restore(std::string& made) const { std::replace(made.begin(), made.end(), mask_, '~'); }

}  // namespace scrivalen::command

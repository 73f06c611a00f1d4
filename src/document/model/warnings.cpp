#include "document/model/warnings.h"

namespace scrivalen::document {

void Warnings::add(std::size_t output, WarningCode code, std::string_view message, std::uint64_t count) {
  const auto place = places_.find(std::tuple<std::size_t, WarningCode, std::string_view>(output, code, message));
  if (place != places_.end()) {
    list_[place->second].count += count;
  } else if (list_.size() == kMost) {
    ++further_;
  } else {
    list_.push_back({output, code, count, std::string(message)});
    places_.emplace(std::tuple(output, code, std::string(message)), list_.size() - 1);
  }
}

std::vector<Warning> Warnings::all() const {
  std::vector<Warning> result = list_;
  if (further_ > 0) {
    // It takes the last place, so the warning there is one of those that it counts.
    result.back() = {kAllOutputs, WarningCode::SomethingLeftOut, further_ + 1, "further warnings are not listed"};
  }
  return result;
}

}  // namespace scrivalen::document

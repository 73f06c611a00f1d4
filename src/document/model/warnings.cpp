#include "document/model/warnings.h"

namespace scrivalen::document {
namespace {

// FNV-1a.
class Hash {
 public:
  void add(unsigned char byte) { value_ = (value_ ^ byte) * 0x100000001B3; }
  void add(std::uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8) {
      add(static_cast<unsigned char>(number >> shift));
    }
  }
  std::uint64_t value() const { return value_; }

 private:
  std::uint64_t value_ = 0xCBF29CE484222325;
};

std::uint64_t hashOf(std::size_t output, WarningCode code, std::string_view message) {
  Hash hash;
  hash.add(std::uint64_t{output});
  hash.add(static_cast<std::uint64_t>(code));
  for (const char byte : message) {
    hash.add(static_cast<unsigned char>(byte));
  }
  return hash.value();
}

}  // namespace

void Warnings::add(std::size_t output, WarningCode code, std::string_view message, std::uint64_t count) {
  const auto place = places_.find(std::tuple<std::size_t, WarningCode, std::string_view>(output, code, message));
  if (place != places_.end()) {
    list_[place->second].count += count;
  } else if (list_.size() == kMost) {
    addFurther(hashOf(output, code, message));
  } else {
    list_.push_back({output, code, count, std::string(message)});
    places_.emplace(std::tuple(output, code, std::string(message)), list_.size() - 1);
  }
}

void Warnings::addFurther(std::uint64_t hash) {
  if (further_.size() < kMostFurther) {
    further_.insert(hash);
  } else if (further_.find(hash) == further_.end()) {
    areFurtherLeftOut_ = true;
  }
}

std::vector<Warning> Warnings::all() const {
  std::vector<Warning> result = list_;
  if (!further_.empty()) {
    // It takes the last place, so the warning there is one of those that it counts.
    result.back() = {
        kAllOutputs, WarningCode::SomethingLeftOut, further_.size() + 1,
        areFurtherLeftOut_ ? "further warnings, at least, are not listed" : "further warnings are not listed"};
  }
  return result;
}

}  // namespace scrivalen::document

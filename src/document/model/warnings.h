#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_set>
#include <vector>

namespace scrivalen::document {

enum class WarningCode : int {
  CharactersReplaced = 1,
  TextCut = 2,
  CellsDropped = 3,
  SomethingLeftOut = 4,
  InputMended = 5
};

inline constexpr std::size_t kAllOutputs = static_cast<std::size_t>(-1);

struct Warning {
  std::size_t output;
  WarningCode code;
  std::uint64_t count;
  std::string message;
};

/// What could not be written as given: one warning for each output, code and message, with a count. After kMost of
/// them only the number of further ones is kept, up to kMostFurther.
class Warnings {
 public:
  static constexpr std::size_t kMost = 1000;
  static constexpr std::size_t kMostFurther = 16384;

  void add(std::size_t output, WarningCode code, std::string_view message, std::uint64_t count = 1);
  /// In the order in which they came; if there were more than kMost, the last says how many, each counted once.
  std::vector<Warning> all() const;

 private:
  // Compares the key of a warning with one whose text is not copied.
  struct Before {
    using is_transparent = void;
    using Place = std::tuple<std::size_t, WarningCode, std::string_view>;
    bool operator()(const Place& a, const Place& b) const { return a < b; }
  };

  void addFurther(std::uint64_t hash);

  std::vector<Warning> list_;
  std::map<std::tuple<std::size_t, WarningCode, std::string>, std::size_t, Before> places_;
  std::unordered_set<std::uint64_t> further_;  // the hashes of their keys
  bool areFurtherLeftOut_ = false;
};

/// Takes the warnings of one output.
class OutputWarnings {
 public:
  OutputWarnings(Warnings& all, std::size_t output) : all_(all), output_(output) {}

  /// @param message  one line for a person, without the count
  void add(WarningCode code, std::string_view message, std::uint64_t count = 1) {
    all_.add(output_, code, message, count);
  }

 private:
  Warnings& all_;
  std::size_t output_;
};

}  // namespace scrivalen::document

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace scrivalen::bench {

inline constexpr std::size_t kColumns = 6;
inline constexpr const wchar_t* kTitle = L"Ledger";

/// The cells of one row: number, name, remark, amount, date, status.
using Row = std::array<const wchar_t*, kColumns>;

/// An invented ledger, the same for every writer. Numbers, amounts and dates are formatted row by row, as in a program
/// that stores them as numbers; the texts exist already.
class Ledger {
 public:
  Ledger() = default;
  Ledger(const Ledger&) = delete;
  Ledger& operator=(const Ledger&) = delete;

  /// The next row; valid until the next call.
  const Row& next();

 private:
  std::uint32_t number_ = 0;
  std::array<wchar_t, 12> id_{};
  std::array<wchar_t, 12> amount_{};
  std::array<wchar_t, 12> date_{};
  Row row_{};
};

}  // namespace scrivalen::bench

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace scrivalen::bench {

inline constexpr std::size_t kDocumentColumns = 6;

/// A row of the ledger as a program stores it.
struct Booking {
  std::int64_t number;
  std::string_view name;
  std::string_view remark;
  std::int64_t cents;
  std::int32_t day;  ///< since 1970-01-01
  std::string_view status;
};

/// The same ledger as Ledger, in UTF-8.
class Bookings {
 public:
  Booking next();

 private:
  std::uint32_t number_ = 0;
};

/// The texts of a row: amounts as 1,234.50, dates as 2024-02-29.
class BookingTexts {
 public:
  using Texts = std::array<std::string_view, kDocumentColumns>;
  /// Valid until the next call.
  const Texts& of(const Booking& booking);

 private:
  std::array<char, 24> number_{};
  std::array<char, 24> amount_{};
  std::array<char, 12> date_{};
  Texts texts_{};
};

}  // namespace scrivalen::bench

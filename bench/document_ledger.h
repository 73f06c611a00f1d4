#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
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

/// What the texts of the ledger are taken from.
struct BookingWords {
  std::array<std::string_view, 16> names;
  std::array<std::string_view, 16> remarks;
  std::array<std::string_view, 4> statuses;
};

extern const BookingWords kLatinWords;

/// The same ledger as Ledger, in UTF-8.
class Bookings {
 public:
  /// @param words  not owned; must outlive the bookings
  explicit Bookings(const BookingWords& words = kLatinWords) : words_(words) {}
  Booking next();

 private:
  const BookingWords& words_;
  std::uint32_t number_ = 0;
};

/// The words in other letters: each Latin letter is a Cyrillic one, in every second text a Greek one. A text has as
/// many characters as before.
class OtherLetters {
 public:
  OtherLetters();
  const BookingWords& words() const { return words_; }

 private:
  std::string_view written(std::string_view text);

  std::deque<std::string> texts_;
  BookingWords words_;
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

#include "document_ledger.h"

#include <chrono>

namespace scrivalen::bench {
namespace {

constexpr BookingWords kWords{
    {"Anna Meyer", "Brown Bakery", "Clara Jensen", "David Okafor", "Elena Rossi", "Fox&Sons Ltd", "Grace Hopkins",
     "Harbour Caf\xC3\xA9", "Ivan Petrov", "Joan Whitfield", "Karl Lindgren", "Lucia Moretti", "Martin Schulz",
     "North Printers", "Olga Nowak", "Peter van Dyk"},
    {"Office supplies for the second quarter. ", "Delivery of paper and ink to the branch.",
     "Repair of the heating in the north hall.", "Travel to Hamburg and back, two nights. ",
     "Rent for the storage space in the yard. ", "Food & drinks for the summer party 2024.",
     "Annual licence for the drawing program. ", "Refund for a parcel that never got here.",
     "Cleaning of the windows, third instance.", "Spare parts, each < 5 kg, sent by train.",
     "Insurance for the two vans, first half. ", "Translation of the manual into Finnish. ",
     "Advertising in the local evening papers.", "Booked as \"other costs\" until clarified.",
     "Training for the new people in accounts.", "Telephone and data lines for two floors."},
    {"paid", "open", "overdue", "cancelled"}};

constexpr std::chrono::sys_days kFirstDay = std::chrono::year(2020) / 1 / 1;
constexpr std::uint32_t kRowsADay = 16;
constexpr std::uint32_t kDays = 5 * 365;

// Spreads the row's number over 32 bits, so that neighbouring rows differ in every column (Knuth's multiplier).
constexpr std::uint32_t spread(std::uint32_t number) { return number * 2654435761u; }

// Writes a number of at least `digits` digits that ends before `end`.
char* putNumberBefore(char* end, std::int64_t number, int digits) {
  for (; number > 0 || digits > 0; number /= 10, --digits) {
    *--end = static_cast<char>('0' + number % 10);
  }
  return end;
}

char* putAmountBefore(char* end, std::int64_t cents) {
  char* at = putNumberBefore(end, cents % 100, 2);
  *--at = '.';
  const std::int64_t units = cents / 100;
  if (units < 1000) {
    return putNumberBefore(at, units, 1);
  }
  at = putNumberBefore(at, units % 1000, 3);
  *--at = ',';
  return putNumberBefore(at, units / 1000, 1);
}

char* putDateBefore(char* end, std::int32_t day) {
  const std::chrono::year_month_day date = std::chrono::sys_days(std::chrono::days(day));
  char* at = putNumberBefore(end, static_cast<unsigned>(date.day()), 2);
  *--at = '-';
  at = putNumberBefore(at, static_cast<unsigned>(date.month()), 2);
  *--at = '-';
  return putNumberBefore(at, static_cast<int>(date.year()), 4);
}

template <std::size_t Size>
std::string_view textFrom(const char* begin, const std::array<char, Size>& buffer) {
  return {begin, static_cast<std::size_t>(buffer.data() + Size - begin)};
}

}  // namespace

const BookingWords kLatinWords = kWords;

Booking Bookings::next() {
  const std::uint32_t bits = spread(++number_);
  const std::chrono::sys_days day = kFirstDay + std::chrono::days(number_ / kRowsADay % kDays);
  return {number_,
          words_.names[bits >> 28],
          words_.remarks[bits >> 24 & 15],
          (bits >> 4) % 10'000'000,
          static_cast<std::int32_t>(day.time_since_epoch().count()),
          words_.statuses[bits >> 22 & 3]};
}

OtherLetters::OtherLetters() : words_(kLatinWords) {
  for (std::string_view& name : words_.names) {
    name = written(name);
  }
  for (std::string_view& remark : words_.remarks) {
    remark = written(remark);
  }
  for (std::string_view& status : words_.statuses) {
    status = written(status);
  }
}

std::string_view OtherLetters::written(std::string_view text) {
  std::string& other = texts_.emplace_back();
  const bool isGreek = texts_.size() % 2 == 0;
  for (const char c : text) {
    const bool isCapital = c >= 'A' && c <= 'Z';
    if (!isCapital && !(c >= 'a' && c <= 'z')) {
      other += c;
      continue;
    }
    // The letters from U+0391 and U+03B1, of which the eighteenth capital is none, and those from U+0410 and U+0430.
    const auto letter = static_cast<unsigned>(c - (isCapital ? 'A' : 'a'));
    const unsigned greek = letter % 17 + (isCapital ? 0x391u : 0x3B1u);
    const unsigned cyrillic = letter + (isCapital ? 0x410u : 0x430u);
    other += static_cast<char>(0xC0 | (isGreek ? greek : cyrillic) >> 6);
    other += static_cast<char>(0x80 | ((isGreek ? greek : cyrillic) & 0x3F));
  }
  return other;
}

const BookingTexts::Texts& BookingTexts::of(const Booking& booking) {
  texts_ = {textFrom(putNumberBefore(number_.data() + number_.size(), booking.number, 1), number_),
            booking.name,
            booking.remark,
            textFrom(putAmountBefore(amount_.data() + amount_.size(), booking.cents), amount_),
            textFrom(putDateBefore(date_.data() + date_.size(), booking.day), date_),
            booking.status};
  return texts_;
}

}  // namespace scrivalen::bench

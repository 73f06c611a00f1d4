#include "ledger.h"

#include <algorithm>
#include <chrono>
#include <string_view>

namespace scrivalen::bench {
namespace {

constexpr std::array<const wchar_t*, 16> kNames = {
    L"Anna Meyer",    L"Brown Bakery",      L"Clara Jensen", L"David Okafor",   L"Elena Rossi",   L"Fox&Sons Ltd",
    L"Grace Hopkins", L"Harbour Caf\u00E9", L"Ivan Petrov",  L"Joan Whitfield", L"Karl Lindgren", L"Lucia Moretti",
    L"Martin Schulz", L"North Printers",    L"Olga Nowak",   L"Peter van Dyk"};

constexpr std::size_t kRemarkLength = 40;
constexpr std::array<std::wstring_view, 16> kRemarks = {
    L"Office supplies for the second quarter. ", L"Delivery of paper and ink to the branch.",
    L"Repair of the heating in the north hall.", L"Travel to Hamburg and back, two nights. ",
    L"Rent for the storage space in the yard. ", L"Food & drinks for the summer party 2024.",
    L"Annual licence for the drawing program. ", L"Refund for a parcel that never got here.",
    L"Cleaning of the windows, third instance.", L"Spare parts, each < 5 kg, sent by train.",
    L"Insurance for the two vans, first half. ", L"Translation of the manual into Finnish. ",
    L"Advertising in the local evening papers.", L"Booked as \"other costs\" until clarified.",
    L"Training for the new people in accounts.", L"Telephone and data lines for two floors."};

constexpr std::chrono::sys_days kFirstDay = std::chrono::year(2020) / 1 / 1;
constexpr std::uint32_t kRowsADay = 16;
constexpr std::uint32_t kDays = 5 * 365;

constexpr std::array<const wchar_t*, 4> kStatuses = {L"paid", L"open", L"overdue", L"cancelled"};

static_assert(std::all_of(kRemarks.begin(), kRemarks.end(), [](auto text) { return text.size() == kRemarkLength; }));

// Spreads the row's number over 32 bits, so that neighbouring rows differ in every column (Knuth's multiplier).
constexpr std::uint32_t spread(std::uint32_t number) { return number * 2654435761u; }

// Writes a number of at least `digits` digits that ends before `end`.
wchar_t* putNumberBefore(wchar_t* end, std::uint32_t number, int digits) {
  for (; number > 0 || digits > 0; number /= 10, --digits) {
    *--end = static_cast<wchar_t>(L'0' + number % 10);
  }
  return end;
}

wchar_t* putAmountBefore(wchar_t* end, std::uint32_t cents) {
  wchar_t* at = putNumberBefore(end, cents % 100, 2);
  *--at = L'.';
  const std::uint32_t units = cents / 100;
  if (units < 1000) {
    return putNumberBefore(at, units, 1);
  }
  at = putNumberBefore(at, units % 1000, 3);
  *--at = L',';
  return putNumberBefore(at, units / 1000, 1);
}

wchar_t* putDateBefore(wchar_t* end, std::chrono::sys_days day) {
  const std::chrono::year_month_day date = day;
  wchar_t* at = putNumberBefore(end, static_cast<unsigned>(date.day()), 2);
  *--at = L'-';
  at = putNumberBefore(at, static_cast<unsigned>(date.month()), 2);
  *--at = L'-';
  return putNumberBefore(at, static_cast<std::uint32_t>(static_cast<int>(date.year())), 4);
}

}  // namespace

// The last character of a buffer is never written: it is the terminating NUL. The views of literals have one too.
const Row& Ledger::next() {
  const std::uint32_t bits = spread(++number_);
  row_ = {putNumberBefore(&id_.back(), number_, 1),
          kNames[bits >> 28],
          kRemarks[bits >> 24 & 15].data(),
          putAmountBefore(&amount_.back(), (bits >> 4) % 10'000'000),
          putDateBefore(&date_.back(), kFirstDay + std::chrono::days(number_ / kRowsADay % kDays)),
          kStatuses[bits >> 22 & 3]};
  return row_;
}

}  // namespace scrivalen::bench

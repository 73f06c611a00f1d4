// Writes the ledger as a document from columns that are ready, through the header for C++, and prints the cpu seconds
// of that alone. document_columns.py does the same in Python, from the columns that this program stores for it.
#include "document_ledger.h"
#include "process_usage.h"

#include <scrivalen/document.hpp>

#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

using namespace scrivalen::bench;
using scrivalen::Column;
using scrivalen::Date;
using scrivalen::TextColumn;
using scrivalen::Type;

namespace {

constexpr const char* kUsage =
    "usage: scrivalen_columns FORMAT ROWS FILE           writes the document and prints the cpu seconds\n"
    "       scrivalen_columns --store ROWS FOLDER        stores the columns as raw values\n";

struct Columns {
  explicit Columns(std::size_t rows) {
    Bookings bookings;
    for (std::size_t row = 0; row < rows; ++row) {
      const Booking booking = bookings.next();
      numbers.push_back(booking.number);
      names.add(booking.name);
      remarks.add(booking.remark);
      amounts.push_back(static_cast<double>(booking.cents) / 100);
      days.emplace_back(booking.day);
      statuses.add(booking.status);
    }
  }

  std::vector<std::int64_t> numbers;
  TextColumn names;
  TextColumn remarks;
  std::vector<double> amounts;
  std::vector<Date> days;
  TextColumn statuses;
};

void store(const std::string& path, const void* values, std::size_t size) {
  std::ofstream file(path, std::ios::binary);
  if (!file.write(static_cast<const char*>(values), static_cast<std::streamsize>(size)).flush()) {
    throw std::runtime_error("cannot write " + path);
  }
}

template <typename Value>
void store(const std::string& path, const std::vector<Value>& values) {
  store(path, values.data(), values.size() * sizeof(Value));
}

void store(const std::string& path, const TextColumn& texts) {
  store(path + ".bytes", texts.bytes(), static_cast<std::size_t>(texts.offsets()[texts.size()]));
  store(path + ".offsets", texts.offsets(), (texts.size() + 1) * sizeof(std::int64_t));
}

void storeAll(const Columns& columns, const std::string& folder) {
  store(folder + "/number", columns.numbers);
  store(folder + "/name", columns.names);
  store(folder + "/remark", columns.remarks);
  store(folder + "/amount", columns.amounts);
  store(folder + "/day", columns.days);
  store(folder + "/status", columns.statuses);
}

void write(const Columns& columns, const char* format, const char* file) {
  scrivalen::Document document;
  document.addFile(file, format);
  document.set("clock", "1700000000");
  document.heading(1, "Ledger");
  auto table = document.beginTable(
      {Column("number", Type::Integer), Column("name"), Column("remark"),
       Column("amount", Type::Number).format("#,##0.00"), Column("day", Type::Date), Column("status")},
      "ledger");
  table.rows({columns.numbers, columns.names, columns.remarks, columns.amounts, columns.days, columns.statuses});
  table.end();
  document.close();
}

}  // namespace

int main(int argc, char** argv) try {
  std::size_t rows = 0;
  if (argc != 4 || std::from_chars(argv[2], argv[2] + std::strlen(argv[2]), rows).ec != std::errc()) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  const Columns columns(rows);
  if (std::strcmp(argv[1], "--store") == 0) {
    storeAll(columns, argv[3]);
    return 0;
  }
  const double before = processUsage().cpuSeconds;
  write(columns, argv[1], argv[3]);
  std::printf("%.6f\n", processUsage().cpuSeconds - before);
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "scrivalen_columns: %s\n", error.what());
  return 1;
}

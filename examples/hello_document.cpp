// A first document from C++: plain text and a web page.
#include <scrivalen/document.hpp>

#include <cstdio>
#include <exception>
#include <optional>

using scrivalen::Column;
using scrivalen::Date;
using scrivalen::Type;

int main() try {
  scrivalen::Document document{"hello.txt", "hello.html"};
  document.set("title", "Stock");
  document.heading(1, "Stock");
  document.paragraph("What is on the shelves today.");
  {
    auto table = document.beginTable({Column("item"), Column("price", Type::Number).decimals(2), Column("since")});
    table.header("Item", "Price", "Since");
    table.row("Tea & biscuits", 4.5, Date(2026, 1, 31));
    table.row("Coffee", 12.8, std::nullopt);
  }
  document.close();
  for (const scrivalen::Warning& warning : document.warnings()) {
    std::printf("%s\n", warning.message.c_str());
  }
  return 0;
} catch (const std::exception& error) {
  std::fprintf(stderr, "hello_document: %s\n", error.what());
  return 1;
}

// The first program of README.md: one table in four formats. sales.py writes the same.
#include <scrivalen/document.hpp>

#include <cstdio>

using scrivalen::Column;
using scrivalen::Date;

int main() try {
  scrivalen::Document doc{"sales.html", "sales.pdf", "sales.rtf", "sales.xlsx"};
  doc.set("title", "Sales 2026");
  doc.heading(1, "Sales 2026");
  doc.paragraph("Three branches, one year.");
  const Column amount = Column("amount").decimals(2);
  auto table = doc.beginTable({Column("branch"), Column("since"), Column("sold"), amount});
  table.header("Branch", "Open since", "Sold", "Amount");
  table.row("Lyon", Date(2019, 3, 1), 1204, 48161.5);
  table.row("Nuuk", Date(2022, 11, 14), 870, 39020.25);
  table.row("Zürich", std::nullopt, 96, 12000);
  doc.close();
} catch (const std::exception& error) {
  std::printf("sales: %s\n", error.what());
  return 1;
}

/* Writes one document as plain text and as a web page. */
#include <scrivalen/document.h>

#include <stdio.h>

static void add_stock(scrivalen_document* document) {
  scrivalen_column columns[2] = {{0}};
  columns[0].size = sizeof columns[0];
  columns[1].size = sizeof columns[1];
  columns[1].type = SCRIVALEN_NUMBER;
  columns[1].decimals = 2;
  scrivalen_begin_table(document, columns, 2, "stock");
  scrivalen_begin_row(document, 1);
  scrivalen_cell(document, "Item", SCRIVALEN_NUL);
  scrivalen_cell(document, "Price", SCRIVALEN_NUL);
  scrivalen_end(document);
  scrivalen_begin_row(document, 0);
  scrivalen_cell(document, "Tea & biscuits", SCRIVALEN_NUL);
  scrivalen_cell_number(document, 4.5);
  scrivalen_end(document);
  scrivalen_end(document);
}

static void print_warnings(scrivalen_document* document) {
  scrivalen_warning warning = {0};
  warning.size = sizeof warning;
  while (scrivalen_next_warning(document, &warning)) {
    fprintf(stderr, "hello_document: %s\n", warning.message);
  }
}

int main(void) {
  scrivalen_document* document = scrivalen_new();
  scrivalen_add_file(document, "hello.txt", NULL);
  scrivalen_add_file(document, "hello.html", NULL);
  scrivalen_set(document, "title", "Stock");
  scrivalen_heading(document, 1, "Stock", SCRIVALEN_NUL);
  scrivalen_paragraph(document, "What is on the shelves today.", SCRIVALEN_NUL);
  add_stock(document);
  const int failed = scrivalen_close(document) != SCRIVALEN_OK;
  if (failed) {
    fprintf(stderr, "hello_document: %s\n", scrivalen_error(document));
  }
  print_warnings(document);
  scrivalen_free(document);
  return failed;
}

/* Writes one document, with every kind of block, span and table, into each format of the library.
 *
 *   document [FOLDER]
 */
#include <scrivalen/document.h>
#include <stdio.h>
#include <string.h>

static scrivalen_status first_failure = SCRIVALEN_OK;

/* Keeps the first result that is not SCRIVALEN_OK, and reports it. */
static void check(scrivalen_document* document, scrivalen_status status) {
  if (status != SCRIVALEN_OK && first_failure == SCRIVALEN_OK) {
    first_failure = status;
    fprintf(stderr, "document: %s\n", scrivalen_error(document));
  }
}

static void add_outputs(scrivalen_document* document, const char* folder) {
  char path[4096];
  const char* format;
  size_t i;
  for (i = 0; (format = scrivalen_format(i)) != NULL; ++i) {
    if (strcmp(format, "chm") == 0) {
      continue; /* it needs a help compiler */
    }
    snprintf(path, sizeof path, "%s/report.%s", folder, format);
    check(document, scrivalen_add_file(document, path, format));
  }
}

static void write_text(scrivalen_document* document) {
  scrivalen_paragraph_style centered = {sizeof centered, SCRIVALEN_CENTER};
  check(document, scrivalen_heading(document, 1, "Fleet", SCRIVALEN_NUL));
  check(document, scrivalen_begin_contents(document));
  check(document, scrivalen_contents_item(document, 1, "costs", "Costs", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_paragraph(document, &centered));
  check(document, scrivalen_text(document, "Cars in ", SCRIVALEN_NUL));
  check(document, scrivalen_begin_span(document, SCRIVALEN_STRONG));
  check(document, scrivalen_text(document, "M\xC3\xBCnchen", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_line_break(document));
  check(document, scrivalen_begin_colored(document, "navy", "#FFFFE0"));
  check(document, scrivalen_begin_sized(document, 14));
  check(document, scrivalen_begin_language(document, "de"));
  check(document, scrivalen_text(document, "Fuhrpark", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_end(document));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_link(document, "https://example.org/?a=1&b=2", "all cars"));
  check(document, scrivalen_text(document, " and <more>", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_anchor(document, "cars"));
  check(document, scrivalen_raw(document, "html", "<wbr>", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_rule(document));
}

static void write_blocks(scrivalen_document* document) {
  check(document, scrivalen_begin_quote(document));
  check(document, scrivalen_paragraph(document, "Every car has a driver.", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_list(document, 1, 3, 1));
  check(document, scrivalen_begin_item(document, 0));
  check(document, scrivalen_text(document, "third", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_item(document, 2));
  check(document, scrivalen_text(document, "done", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_code(document, "c"));
  check(document, scrivalen_text(document, "if (a < b)\n\treturn a;\n", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_page_break(document));
}

static void write_cells(scrivalen_document* document) {
  scrivalen_cell_style wide = {sizeof wide, 1, SCRIVALEN_CENTER, 2, "white", "#204060"};
  check(document, scrivalen_begin_row(document, 1));
  check(document, scrivalen_begin_cell(document, &wide));
  check(document, scrivalen_text(document, "Car", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_cell(document, "Since", SCRIVALEN_NUL));
  check(document, scrivalen_cell(document, "Used", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_row(document, 0));
  check(document, scrivalen_cell(document, "bus", 3));
  check(document, scrivalen_cell_number(document, 0.125));
  check(document, scrivalen_cell_date(document, 20000));
  check(document, scrivalen_cell_boolean(document, 1));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_row(document, 0));
  check(document, scrivalen_cell(document, "van", 3));
  check(document, scrivalen_cell_integer(document, -42));
  check(document, scrivalen_cell_time(document, 86399));
  check(document, scrivalen_cell(document, "", 0));
  check(document, scrivalen_end(document));
}

static void write_rows(scrivalen_document* document) {
  static const char names[] = "carlorry";
  static const int64_t ends[] = {0, 3, 8};
  static const double costs[] = {1234.5, 2};
  static const int32_t days[] = {19000, 0};
  static const uint8_t used[] = {2};
  static const uint8_t known[] = {1};
  scrivalen_column_data columns[4];
  memset(columns, 0, sizeof columns);
  columns[0].size = columns[1].size = columns[2].size = columns[3].size = sizeof columns[0];
  columns[0].type = SCRIVALEN_TEXT;
  columns[0].values = names;
  columns[0].offsets = ends;
  columns[1].type = SCRIVALEN_NUMBER;
  columns[1].values = costs;
  columns[2].type = SCRIVALEN_DATE;
  columns[2].values = days;
  columns[2].validity = known;
  columns[3].type = SCRIVALEN_BOOLEAN;
  columns[3].values = used;
  check(document, scrivalen_rows(document, columns, 4, 2));
}

static void write_table(scrivalen_document* document) {
  scrivalen_column columns[4];
  memset(columns, 0, sizeof columns);
  columns[0].size = columns[1].size = columns[2].size = columns[3].size = sizeof columns[0];
  columns[0].name = "car";
  columns[1].name = "cost";
  columns[1].type = SCRIVALEN_NUMBER;
  columns[1].decimals = 2;
  columns[2].align = SCRIVALEN_CENTER;
  check(document, scrivalen_begin_heading(document, 2, "costs", NULL));
  check(document, scrivalen_text(document, "Costs", SCRIVALEN_NUL));
  check(document, scrivalen_end(document));
  check(document, scrivalen_begin_table(document, columns, 4, "costs"));
  write_cells(document);
  write_rows(document);
  check(document, scrivalen_end(document));
}

int main(int argc, char** argv) {
  scrivalen_document* document = scrivalen_new();
  scrivalen_warning warning;
  if (document == NULL) {
    return 1;
  }
  add_outputs(document, argc > 1 ? argv[1] : ".");
  check(document, scrivalen_set(document, "title", "Fleet"));
  check(document, scrivalen_set(document, "clock", "2026-01-31 23:59:59"));
  check(document, scrivalen_begin_section(document, "Fleet", "fleet"));
  write_text(document);
  write_blocks(document);
  write_table(document);
  check(document, scrivalen_end(document));
  check(document, scrivalen_close(document));
  warning.size = sizeof warning;
  while (scrivalen_next_warning(document, &warning)) {
    printf("%s (%llu)\n", warning.message, (unsigned long long)warning.count);
  }
  scrivalen_free(document);
  return first_failure == SCRIVALEN_OK ? 0 : 1;
}

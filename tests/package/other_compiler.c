/* A program without a C library, as a host built by another compiler: it writes a document into memory and into a file.
 * Its exit status says which step failed. */
#include <scrivalen/document.h>

static char written[256];
static size_t size;

static int take(void *user, const void *data, size_t bytes) {
  size_t i;
  if (user != &size || bytes > sizeof written - size) {
    return 28;
  }
  for (i = 0; i < bytes; ++i) {
    written[size + i] = ((const char *)data)[i];
  }
  size += bytes;
  return 0;
}

static int is_expected(void) {
  static const char expected[] = "Cars\n====\n\nbus  1.50\n";
  size_t i;
  for (i = 0; i < sizeof expected - 1; ++i) {
    if (written[i] != expected[i]) {
      return 0;
    }
  }
  return size == sizeof expected - 1;
}

int start(void) {
  static scrivalen_column columns[2];
  scrivalen_document *document = scrivalen_new();
  if (scrivalen_add_stream(document, "text", take, &size) != SCRIVALEN_OK) {
    return 1;
  }
  if (scrivalen_add_file(document, "other.html", 0) != SCRIVALEN_OK) {
    return 2;
  }
  columns[0].size = columns[1].size = sizeof columns[0];
  columns[1].decimals = 2;
  scrivalen_heading(document, 1, "Cars", SCRIVALEN_NUL);
  scrivalen_begin_table(document, columns, 2, 0);
  scrivalen_begin_row(document, 0);
  scrivalen_cell(document, "bus", SCRIVALEN_NUL);
  scrivalen_cell_number(document, 1.5);
  if (scrivalen_close(document) != SCRIVALEN_OK) {
    return 3;
  }
  scrivalen_free(document);
  return is_expected() ? 0 : 4;
}

int _fltused;

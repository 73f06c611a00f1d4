#pragma once

/** @file
 * The document interface: a document is streamed once and comes out in every format that was asked for. It is C, from
 * C99 on, so that programs in any language and from any compiler can use the same library.
 *
 * **Texts** are UTF-8, given by pointer and length in bytes; SCRIVALEN_NUL as the length means "up to the NUL". Bytes
 * that are not UTF-8, and control characters, become U+FFFD and are counted in a warning. LF, CR and CR LF are line
 * breaks; outside code a TAB is a blank. Names, ids, addresses and paths end at a NUL. A path is UTF-8 on Windows;
 * elsewhere its bytes are used as they are. A null text is an empty one.
 *
 * **Ownership:** whatever is passed is copied, or used before the call returns. A pointer that a function returns is
 * valid until the next call that takes the document without const; the version and the names of formats are valid for
 * ever. No exception and no signal crosses this border.
 *
 * **Threads:** one thread at a time uses a document. Documents share nothing.
 *
 * **Structs:** 0 is the default of each field but `size`, which is sizeof the struct as the caller's compiler has it,
 * so that later versions can add fields. The stride of an array of structs is the size of its first element. A size
 * smaller than that of the first version, and sizes that differ within an array, are SCRIVALEN_MISUSE.
 *
 * **Order:** scrivalen_new; outputs, settings, progress; content; scrivalen_close; results and warnings;
 * scrivalen_free. The first content call opens the document. A call out of order, with an argument out of range, or
 * from a callback of the same document returns SCRIVALEN_MISUSE and does nothing, and the document goes on. Functions
 * that take the document as const may be called from a callback. With a null document each function returns
 * SCRIVALEN_MISUSE, 0 or "".
 *
 * **Failures** of outputs and of memory, and cancelling, are the document's result: the first one stays. The other
 * outputs go on. A content call is taken, and returns SCRIVALEN_OK, as long as one output lives; when none does, or
 * after cancelling or when memory ran out, it does nothing and returns the result. A document logs nothing and shows no
 * message: errors and warnings are data.
 */

#include <scrivalen/export.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/// A document that is being written. Made by scrivalen_new, released by scrivalen_free.
typedef struct scrivalen_document scrivalen_document;

/// What a call returns.
typedef int scrivalen_status;
enum {
  SCRIVALEN_OK = 0,
  SCRIVALEN_FILE_ERROR = 1,  ///< an output cannot be created, or was not written whole
  SCRIVALEN_TEMPLATE_NOT_FOUND = 2,
  SCRIVALEN_OUT_OF_MEMORY = 3,
  SCRIVALEN_MISUSE = 4,  ///< out of order or out of range: this call did nothing, the document goes on
  SCRIVALEN_UNKNOWN_FORMAT = 5,
  SCRIVALEN_UNKNOWN_SETTING = 6,  ///< the name, or a value that it does not take
  SCRIVALEN_CANCELLED = 7,
  SCRIVALEN_INPUT_ERROR = 8  ///< the host's data failed in the middle (an Arrow stream); what came before it is kept
};

/// As the length of a text: it ends at its NUL.
#define SCRIVALEN_NUL SIZE_MAX

/// The version of the library, such as "1.1.0". Valid for ever.
SCRIVALEN_API const char* scrivalen_version(void);
/// The names of the formats that this library writes, among "text", "html", "xml", "rtf", "chm", "pdf", "xlsx", "docx"
/// and "markdown". Their order may change. Valid for ever; null after the last.
SCRIVALEN_API const char* scrivalen_format(size_t index);

/// Makes a document without outputs. The caller releases it with scrivalen_free. Null when memory runs out.
SCRIVALEN_API scrivalen_document* scrivalen_new(void);
/// Releases a document; null is allowed. One that was not closed is abandoned: nothing is delivered, and earlier files
/// stay as they are. From a callback of the document it does nothing.
SCRIVALEN_API void scrivalen_free(scrivalen_document* document);

/// Adds a file as an output. It is written beside its target and replaces it when the document closes well; a device or
/// a pipe is written to directly. Any number of outputs is allowed, also of one format. They are numbered from 0 as
/// they are accepted; one that is refused gets no number. Whether a file can be created shows when the document opens.
///
/// The path is not empty. A format that is null or empty is taken from the path's extension, in any case: ".txt";
/// ".html", ".htm"; ".xml"; ".rtf"; ".chm"; ".pdf"; ".xlsx"; ".docx"; ".md", ".markdown".
/// SCRIVALEN_UNKNOWN_FORMAT for a format that this library does not write; SCRIVALEN_MISUSE after the document opened.
SCRIVALEN_API scrivalen_status scrivalen_add_file(scrivalen_document*, const char* path, const char* format);
/// Takes the next bytes of an output, all of them. It may not call the document. Returns 0, or an errno value: then the
/// stream has failed and is not called again.
typedef int (*scrivalen_write)(void* user, const void* data, size_t size);
/// Adds a stream as an output: a function that must not be null, and what it gets as its first argument, which may be.
/// Both are used until the document is closed, or released. What was written to a stream stays written. After a
/// failure, a cancel or scrivalen_free it is not called again. "chm" is compiled in a private folder and copied into
/// the stream when the document closes. Errors as those of scrivalen_add_file.
SCRIVALEN_API scrivalen_status scrivalen_add_stream(scrivalen_document*, const char* format, scrivalen_write,
                                                    void* user);
/// Sets a setting by name, for all formats or, with a format's name in front, for that one alone, as in
/// "text.encoding": "title", "author", "subject", "keywords", "language", "date", "clock", "paper", "margins",
/// "landscape", "header", "footer", "header-image", "font", "font-file", "template", "reference", "property:NAME",
/// "encoding", "widths", "numbers", "dates" and those that one format has. "numbers" says how numbers are shown:
/// "1234.5" (the default), "1,234.5", "1.234,5" or "1 234,5"; "dates" how dates are: "yyyy-mm-dd" (the default) or
/// another order and separator. A spreadsheet keeps the values and takes both as formats. "header-image" is the path of
/// a picture, "reference" that of a Word document whose styles a Word document takes over.
///
/// A setting given again replaces the earlier value; "font-file" and "property:NAME" add to it.
/// SCRIVALEN_UNKNOWN_SETTING for an unknown name, or a value that the setting does not take; SCRIVALEN_MISUSE after the
/// document opened.
SCRIVALEN_API scrivalen_status scrivalen_set(scrivalen_document*, const char* name, const char* value);
/// Learns how far the document is: its rows, and the bytes of all its outputs. A result other than 0 cancels it:
/// nothing more is written or delivered. It may not call the document.
typedef int (*scrivalen_progress)(void* user, uint64_t rows, uint64_t bytes);
/// Sets a function that is called at least every 64 KiB of output, every page, and while the document closes; null
/// sets none. The second pointer is passed to it; it may be null. SCRIVALEN_MISUSE after the document opened.
SCRIVALEN_API scrivalen_status scrivalen_set_progress(scrivalen_document*, scrivalen_progress, void* user);
/// Creates every output now; the first content call does it otherwise. Returns the first failure, and the document is
/// open all the same if an output lives. SCRIVALEN_MISUSE without outputs, and when the document is open already.
SCRIVALEN_API scrivalen_status scrivalen_open(scrivalen_document*);

/** @name Parts
 * Each begin is ended by one scrivalen_end, innermost first. The document, sections, quotes and items hold blocks:
 * headings, paragraphs, quotes, lists, code, tables, contents, rules, page breaks. Lists hold items, tables hold rows,
 * and rows hold cells. Headings, paragraphs, items and cells hold text, line breaks, spans, links, pictures and
 * anchors; code holds text. A misplaced begin is SCRIVALEN_MISUSE, and so is nesting deeper than 1,000.
 */
/// @{

/// Begins a new sheet, topic or page, at the outermost level only. Its name and id may be null.
SCRIVALEN_API scrivalen_status scrivalen_begin_section(scrivalen_document*, const char* name, const char* id);
/// How lines are aligned. AUTO is what the format or the column has.
enum { SCRIVALEN_ALIGN_AUTO = 0, SCRIVALEN_LEFT = 1, SCRIVALEN_CENTER = 2, SCRIVALEN_RIGHT = 3, SCRIVALEN_JUSTIFY = 4 };
typedef struct {
  size_t size;
  int align;
} scrivalen_paragraph_style;
/// Begins a heading of level 1 to 6. Without an id it gets one made from its text; the style may be null. Of two equal
/// ids the first counts; both cases of that, and a link to an id that never comes, are warnings.
SCRIVALEN_API scrivalen_status scrivalen_begin_heading(scrivalen_document*, int level, const char* id,
                                                       const scrivalen_paragraph_style* style);
/// Begins a paragraph. The style may be null.
SCRIVALEN_API scrivalen_status scrivalen_begin_paragraph(scrivalen_document*, const scrivalen_paragraph_style* style);
/// Begins a quote, which holds blocks.
SCRIVALEN_API scrivalen_status scrivalen_begin_quote(scrivalen_document*);
/// Begins a list. An ordered one counts from its first number, which is not negative; a tight one has no space between
/// its items.
SCRIVALEN_API scrivalen_status scrivalen_begin_list(scrivalen_document*, int ordered, int first, int tight);
/// Begins an item of a list. 0: no task; 1: one that is open; 2: one that is done.
SCRIVALEN_API scrivalen_status scrivalen_begin_item(scrivalen_document*, int task);
/// Begins code, in which spaces, tabs and line breaks stay. Its language may be null.
SCRIVALEN_API scrivalen_status scrivalen_begin_code(scrivalen_document*, const char* language);
/// The type of a column, or of a column of values.
enum {
  SCRIVALEN_AUTO = 0,
  SCRIVALEN_TEXT = 1,
  SCRIVALEN_NUMBER = 2,
  SCRIVALEN_INTEGER = 3,
  SCRIVALEN_DATE = 4,
  SCRIVALEN_TIME = 5,
  SCRIVALEN_BOOLEAN = 6
};
typedef struct {
  size_t size;       ///< sizeof: says which version of this struct the caller knows
  const char* name;  ///< its element in XML; null: cell. Never shown: header rows are the host's
  /// Of its texts: what they become in a spreadsheet where they read the same there. AUTO: a number or an ISO date
  int type;
  int align;     ///< AUTO: numbers to the right
  double width;  ///< a share, beside those of the others; 0.000001 to 1,000,000; 0: from the content
  int decimals;  ///< of numbers given as numbers, 1 to 15; 0: as many as they need; -1: none
  /// Of its values, over decimals and "numbers": "0%", "0.0%", "#,##0.00", "yyyy-mm"; null: none
  const char* format;
} scrivalen_column;
/// Begins a table. The first rows that are begun as header rows, at most 20, are repeated on each page. The columns may
/// be null: then the count says how many there are, and 0 means as many as the widest row of the sample, the first rows
/// that are held back to measure them, has. Cells past the last column join it after a blank, as a text; missing cells
/// are empty; both are counted in a warning. The name, its element in XML, may be null.
/// SCRIVALEN_MISUSE for a column whose field is out of range, or with a format that is not known.
SCRIVALEN_API scrivalen_status scrivalen_begin_table(scrivalen_document*, const scrivalen_column* columns, size_t count,
                                                     const char* name);
/// Describes a column of the table that is open, counted from 0, for a host that does not know how many columns there
/// will be: what the description has, over what the column had. Once the table's columns are known, after its sample,
/// it has no effect; nor has one past the last column where their number was given. SCRIVALEN_MISUSE without a table,
/// and for a column whose field is out of range.
SCRIVALEN_API scrivalen_status scrivalen_describe_column(scrivalen_document*, size_t index, const scrivalen_column*);
/// Begins a row of a table; not 0: a header row.
SCRIVALEN_API scrivalen_status scrivalen_begin_row(scrivalen_document*, int header);
typedef struct {
  size_t size;
  int header, align, span;         ///< span: in columns, up to 16,384; 0 is 1
  const char *color, *background;  ///< a CSS name or #RRGGBB; null: none
} scrivalen_cell_style;
/// Begins a cell, for text with spans, or with one of the cell functions for a value with a style. A null style is
/// plain. SCRIVALEN_MISUSE for a field out of range or an unknown colour.
SCRIVALEN_API scrivalen_status scrivalen_begin_cell(scrivalen_document*, const scrivalen_cell_style* style);

/// @}

/** @name Spans
 * In paragraphs, headings, items, cells, and in one another. Each is ended by one scrivalen_end.
 */
/// @{

enum {
  SCRIVALEN_STRONG = 1,
  SCRIVALEN_EMPHASIS = 2,
  SCRIVALEN_CODE = 3,
  SCRIVALEN_DELETED = 4,
  SCRIVALEN_UNDERLINED = 5,
  SCRIVALEN_SUPERSCRIPT = 6,
  SCRIVALEN_SUBSCRIPT = 7
};
/// Begins a span of one of the kinds above.
SCRIVALEN_API scrivalen_status scrivalen_begin_span(scrivalen_document*, int kind);
/// Begins text in a colour and on a background, each a CSS name or #RRGGBB; null: unchanged. SCRIVALEN_MISUSE for an
/// unknown colour.
SCRIVALEN_API scrivalen_status scrivalen_begin_colored(scrivalen_document*, const char* color, const char* background);
/// Begins text of a size in points: more than 0, at most 1,000.
SCRIVALEN_API scrivalen_status scrivalen_begin_sized(scrivalen_document*, double points);
/// Begins a link; "#id" leads to a place in the document. The title may be null. A link cannot be in a link.
SCRIVALEN_API scrivalen_status scrivalen_begin_link(scrivalen_document*, const char* address, const char* title);
/// Begins text in another language, given by its BCP 47 tag.
SCRIVALEN_API scrivalen_status scrivalen_begin_language(scrivalen_document*, const char* tag);
/// Ends the innermost part or span. SCRIVALEN_MISUSE when none is open.
SCRIVALEN_API scrivalen_status scrivalen_end(scrivalen_document*);

/// @}

/// Writes text, where text is allowed. A text may come in pieces, divided between any two of its characters.
SCRIVALEN_API scrivalen_status scrivalen_text(scrivalen_document*, const char* text, size_t size);
/// Begins a new line where text is allowed, outside code.
SCRIVALEN_API scrivalen_status scrivalen_line_break(scrivalen_document*);
/// Begins a new page, where blocks are allowed.
SCRIVALEN_API scrivalen_status scrivalen_page_break(scrivalen_document*);
/// Writes a horizontal line, where blocks are allowed.
SCRIVALEN_API scrivalen_status scrivalen_rule(scrivalen_document*);
/// Names a place that links can lead to, among blocks or in text. Of two equal ids the first counts.
SCRIVALEN_API scrivalen_status scrivalen_anchor(scrivalen_document*, const char* id);
/// Begins a list of contents, where the host knows it. Formats with pages add the numbers of the pages.
SCRIVALEN_API scrivalen_status scrivalen_begin_contents(scrivalen_document*);
/// Writes a line of the contents: its level, 1 to 6, the id that it leads to, and its text.
SCRIVALEN_API scrivalen_status scrivalen_contents_item(scrivalen_document*, int level, const char* id, const char* text,
                                                       size_t size);
/// Places a picture among blocks or in text: the bytes of a PNG or JPEG, known by its first ones. The width, 0 to
/// 14,400, is in points; 0: the picture's own, at most that of the text. A picture that is missing, broken or too large
/// (over 64 megapixels) leaves its alternative text and a warning. SCRIVALEN_MISUSE for null data whose size is not 0.
SCRIVALEN_API scrivalen_status scrivalen_image(scrivalen_document*, const void* data, size_t size,
                                               const char* alternative, double width);
/// The same for a picture in a file, which is read during the call. A file that cannot be read leaves the alternative
/// text and a warning with its path and the reason.
SCRIVALEN_API scrivalen_status scrivalen_image_file(scrivalen_document*, const char* path, const char* alternative,
                                                    double width);
/// Writes markup for one format, unchanged: "html", which help shares, "xml", "rtf" or "markdown". Other formats do not
/// see it. SCRIVALEN_UNKNOWN_FORMAT for any other name.
SCRIVALEN_API scrivalen_status scrivalen_raw(scrivalen_document*, const char* format, const char* markup, size_t size);

/** @name Wholes
 * Each begins a part, writes its content and ends it. Directly inside scrivalen_begin_cell, the cell functions give
 * that cell its value instead: one value, and no text.
 */
/// @{

/// Writes a heading of level 1 to 6.
SCRIVALEN_API scrivalen_status scrivalen_heading(scrivalen_document*, int level, const char* text, size_t size);
/// Writes a paragraph.
SCRIVALEN_API scrivalen_status scrivalen_paragraph(scrivalen_document*, const char* text, size_t size);
/// Writes a cell with a text, which becomes a value in a spreadsheet as its column's type has it.
SCRIVALEN_API scrivalen_status scrivalen_cell(scrivalen_document*, const char* text, size_t size);
/// Writes a cell with a number. One that is not finite is an empty cell and a warning.
SCRIVALEN_API scrivalen_status scrivalen_cell_number(scrivalen_document*, double value);
/// Writes a cell with an integer. The decimals of its column are zeros.
SCRIVALEN_API scrivalen_status scrivalen_cell_integer(scrivalen_document*, int64_t value);
/// Writes a cell with the number digits / 10^decimals. Unless its column has decimals or a format, it is shown with
/// just so many decimals, 0 to 15: 1250 and 2 are "12.50". SCRIVALEN_MISUSE for decimals out of range.
SCRIVALEN_API scrivalen_status scrivalen_cell_decimal(scrivalen_document*, int64_t digits, int decimals);
/// Writes a cell with a date, in days since 1970-01-01.
SCRIVALEN_API scrivalen_status scrivalen_cell_date(scrivalen_document*, int32_t days);
/// Writes a cell with a date and a time, in seconds since 1970-01-01 00:00, without a time zone.
SCRIVALEN_API scrivalen_status scrivalen_cell_time(scrivalen_document*, int64_t seconds);
/// Writes a cell with "true", or with "false" for 0.
SCRIVALEN_API scrivalen_status scrivalen_cell_boolean(scrivalen_document*, int value);

/// @}

/** @name Many rows at once
 * Column by column: as fast from any language as from C.
 */
/// @{

typedef struct {
  size_t size;
  /// AUTO is a misuse. TEXT: offsets, and values as bytes; NUMBER: double; INTEGER and TIME: int64_t; DATE: int32_t;
  /// BOOLEAN: bits, least first
  int type;
  const void* values;       ///< aligned as the type requires; null only where no byte of it is needed
  const int64_t* offsets;   ///< of TEXT: rows + 1 of them, ascending and not negative, in bytes from values
  const uint8_t* validity;  ///< a bit a row, least first, 0: an empty cell; null: all there
  size_t offset;            ///< rows to skip in values, offsets and validity
} scrivalen_column_data;
/// Writes rows of a table that is open, without a row of it. Each of the columns gives one cell to each row. All
/// columns are checked before a row is written. SCRIVALEN_MISUSE, with the column in scrivalen_error, for a type out of
/// range, values or offsets that are missing, and offsets that descend.
SCRIVALEN_API scrivalen_status scrivalen_rows(scrivalen_document*, const scrivalen_column_data* columns, size_t count,
                                              size_t rows);
struct ArrowSchema;
struct ArrowArray;
struct ArrowArrayStream;
/// Writes rows from a record batch of Arrow's C data interface: an array of the type struct, whose fields are the
/// columns. The array is taken over and released before the call returns, whatever it returns; the schema is only read.
/// Types: bool, (u)int8 to (u)int64, float32 and 64, utf8, large_utf8, utf8_view, date32 and 64, timestamp (one with a
/// zone in UTC; fractions of a second are cut, with a warning), decimal128, null, and dictionaries of these.
/// SCRIVALEN_MISUSE for any other type, with column and type in scrivalen_error, and for an array that does not match
/// its schema; then no row is written.
SCRIVALEN_API scrivalen_status scrivalen_rows_arrow(scrivalen_document*, const struct ArrowSchema*, struct ArrowArray*);
/// Writes the rows of all batches of an Arrow stream, which is taken over and released before the call returns,
/// whatever it returns. Types as those of scrivalen_rows_arrow. SCRIVALEN_INPUT_ERROR when the stream fails, or gives a
/// batch that does not match its schema; the rows before it are kept.
SCRIVALEN_API scrivalen_status scrivalen_rows_arrow_stream(scrivalen_document*, struct ArrowArrayStream*);

/// @}

/// Ends what is open, finishes the document and delivers the outputs that did not fail. Returns the document's result,
/// and the same when it is called again. A document without content is delivered as an empty, valid one.
/// SCRIVALEN_MISUSE without outputs.
SCRIVALEN_API scrivalen_status scrivalen_close(scrivalen_document*);
/// The first failure so far.
SCRIVALEN_API scrivalen_status scrivalen_result(const scrivalen_document*);
/// The reason of the last call that did not return SCRIVALEN_OK, with the file that it is about; if every call did, the
/// reason of the document's result. One line of UTF-8; empty without a reason, never null.
SCRIVALEN_API const char* scrivalen_error(const scrivalen_document*);
/// How many outputs were accepted.
SCRIVALEN_API size_t scrivalen_output_count(const scrivalen_document*);
/// The result of one output; SCRIVALEN_MISUSE if there is no such output.
SCRIVALEN_API scrivalen_status scrivalen_output_result(const scrivalen_document*, size_t output);
/// Why that output failed; empty if it did not, or if there is no such output; never null.
SCRIVALEN_API const char* scrivalen_output_error(const scrivalen_document*, size_t output);
/// As the output of a warning: the warning is about the input.
#define SCRIVALEN_ALL_OUTPUTS SIZE_MAX
typedef struct {
  size_t size;
  size_t output;  ///< its number, or SCRIVALEN_ALL_OUTPUTS for a warning about the input
  int code;       ///< 1 characters replaced, 2 text cut, 3 cells dropped, 4 something left out, 5 input mended
  uint64_t count;
  const char* message;  ///< one line, for a person
} scrivalen_warning;
/// Gives the next warning of a closed document: what could not be written as given. There are at most 1,000, one for
/// each output, code and message; the last says how many more there were. The caller sets size, and no byte past it is
/// written. Returns 1; 0 after the last, before closing, and for a size that is too small.
SCRIVALEN_API int scrivalen_next_warning(scrivalen_document*, scrivalen_warning*);

#ifdef __cplusplus
}
#endif

#pragma once

#include <cstddef>
#include <string>

namespace scrivalen::bench {

enum class Format { Text, Html, Xml, Rtf, Pdf, Xlsx };

struct NamedFormat {
  const char* name;
  Format format;
};

inline constexpr NamedFormat kFormats[] = {{"text", Format::Text}, {"html", Format::Html}, {"xml", Format::Xml},
                                           {"rtf", Format::Rtf},   {"pdf", Format::Pdf},   {"xlsx", Format::Xlsx}};

/// How many of them, from the first on, writeAllWithCommonCalls writes.
inline constexpr std::size_t kFormatsAtOnce = 3;

/// Writes the first rows of the ledger through the library, as a host does that wants this one format.
/// @return why it failed; empty when it did not
std::string writeWithLibrary(Format format, long rows, const std::string& file);

/// Writes the same bytes through RTFdoc, without a report in front of it.
/// @param format  RTF: the only format with a document writer that hosts may call
std::string writeWithDocument(Format format, long rows, const std::string& file);

/// Does the same as writeWithLibrary with the calls that serve every format: a cell's text between its begin and its
/// end. In XML this escapes quotation marks and every > too, elsewhere the bytes are the same.
std::string writeWithCommonCalls(Format format, long rows, const std::string& file);

/// Writes text, HTML and XML at once with those calls, into the file name with ".txt", ".html" and ".xml" behind it.
std::string writeAllWithCommonCalls(long rows, const std::string& file);

/// Writes the same bytes as writeWithLibrary with nothing but buffered stdio: what a program would do for one format
/// without the library. There is none for PDF, where libharu is the peer, and for xlsx, where libxlsxwriter is.
std::string writeByHand(Format format, long rows, const std::string& file);

/// Draws the same table as writeWithLibrary makes of PDF with libharu.
/// @param format  PDF
std::string writeWithHaru(Format format, long rows, const std::string& file);

/// Writes the same cells as writeWithLibrary makes of xlsx with libxlsxwriter.
/// @param format  xlsx
std::string writeWithXlsxwriter(Format format, long rows, const std::string& file);

/// Writes sections of prose as PDF.
std::string writeProseWithLibrary(long sections, const std::string& file);
std::string writeProseWithHaru(long sections, const std::string& file);

}  // namespace scrivalen::bench

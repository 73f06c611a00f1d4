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

/// The number of formats, from the first, that writeAllWithCommonCalls writes.
inline constexpr std::size_t kFormatsAtOnce = 3;

/// Writes the first rows of the ledger through the library, with the calls that suit the one format.
/// @return the reason of a failure; empty on success
std::string writeWithLibrary(Format format, long rows, const std::string& file);

/// Writes the same bytes through RTFdoc, without a report.
/// @param format  RTF: the only format with a document writer that hosts may call
std::string writeWithDocument(Format format, long rows, const std::string& file);

/// Does the same as writeWithLibrary with the calls that serve every format: a cell's text comes between BeginCell and
/// EndCell. In XML this also escapes quotation marks and every >, elsewhere the bytes are the same.
std::string writeWithCommonCalls(Format format, long rows, const std::string& file);

/// Writes text, HTML and XML at once with those calls, to @p file with ".txt", ".html" and ".xml" appended.
std::string writeAllWithCommonCalls(long rows, const std::string& file);

/// Writes the same bytes as writeWithLibrary with only buffered stdio, as a program would for one format without the
/// library. There is none for PDF and xlsx, which are compared with libharu and libxlsxwriter.
std::string writeByHand(Format format, long rows, const std::string& file);

/// Draws with libharu the table that writeWithLibrary draws as PDF.
/// @param format  PDF
std::string writeWithHaru(Format format, long rows, const std::string& file);

/// Writes with libxlsxwriter the cells that writeWithLibrary writes as xlsx.
/// @param format  xlsx
std::string writeWithXlsxwriter(Format format, long rows, const std::string& file);

/// Writes sections of prose as PDF.
std::string writeProseWithLibrary(long sections, const std::string& file);
std::string writeProseWithHaru(long sections, const std::string& file);

}  // namespace scrivalen::bench

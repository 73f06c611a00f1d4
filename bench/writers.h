#pragma once

#include <string>

namespace scrivalen::bench {

enum class Format { Text, Html, Xml };

/// Writes the first rows of the ledger through the library, as a host does that wants this one format.
/// @return why it failed; empty when it did not
std::string writeWithLibrary(Format format, long rows, const std::string& file);

/// Does the same with the calls that serve every format: a cell's text between its begin and its end. In XML this
/// escapes quotation marks and every > too, elsewhere the bytes are the same.
std::string writeWithCommonCalls(Format format, long rows, const std::string& file);

/// Writes all formats at once with those calls, into the file name with ".txt", ".html" and ".xml" behind it.
std::string writeAllWithCommonCalls(long rows, const std::string& file);

/// Writes the same bytes as writeWithLibrary with nothing but buffered stdio: what a program would do for one format
/// without the library.
std::string writeByHand(Format format, long rows, const std::string& file);

}  // namespace scrivalen::bench

#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::typeset {

/// What a file says about its document. Texts are UTF-8 and may be empty.
struct Metadata {
  std::string title;
  std::string author;
  std::string subject;
  std::string keywords;
  std::string language;
  std::int64_t time = 0;                                             ///< of its making, in seconds since 1970-01-01 UTC
  std::vector<std::pair<std::string, std::string>> properties = {};  ///< others, by their names

  /// A number that differs for different documents, for the identifier of a file.
  std::uint64_t identity() const;
};

/// Whether a property can have this name beside those that every file may have.
bool isPropertyName(std::string_view name);
/// The information dictionary (PDF 1.7, 14.3.3). @return its number
int writeInformation(PdfFile& file, const Metadata& metadata);
/// The same as XMP (14.3.2), uncompressed, for programs that do not read PDF, and the standard that the file conforms
/// to. @return its number
int writeXmp(PdfFile& file, const Metadata& metadata);

}  // namespace scrivalen::typeset

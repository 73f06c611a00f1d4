#pragma once

#include "formats/pdf/typeset/file/pdf_file.h"

#include <string>

namespace scrivalen::typeset {

/// A profile of sRGB (ICC.1:1998-09, version 2, which PDF 1.4 takes): what the colours of a file for archives mean.
std::string srgbProfile();

/// Writes the profile and the output intent that names it (PDF 1.7, 14.11.5). @return the number of the intent
int writeOutputIntent(PdfFile& file);

}  // namespace scrivalen::typeset

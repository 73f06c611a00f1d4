#pragma once

#include "formats/docx/made_docx.h"
#include "support/files.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::test {

using ReferenceParts = std::vector<std::pair<std::string, std::string>>;  ///< names and contents

/// The bytes of an archive of parts.
std::string referenceOfParts(const ReferenceParts& parts);

/// The parts of a Word document with these elements in "w:styles".
ReferenceParts partsWithStyles(std::string_view styles);

/// Their bytes.
inline std::string referenceWithStyles(std::string_view styles) { return referenceOfParts(partsWithStyles(styles)); }

/// A part of a document of the content with the reference, by default that of the styles.
std::string partWithReference(const std::string& reference, const Content& content = {},
                              std::string_view part = "word/styles.xml", SettingValues settings = {},
                              std::vector<document::Warning>* warnings = nullptr);

/// The document itself.
std::string docxWithReference(const std::string& reference, const Content& content = {}, SettingValues settings = {},
                              std::vector<document::Warning>* warnings = nullptr);

/// The error of a document with this reference, whose path is '@' in it; empty for none. The document has no byte then.
std::string errorWithReference(const std::string& reference);

/// A style of a part of styles by its id; fails the test if there are two, or none.
std::string styleIn(const std::string& part, std::string_view id);
bool hasStyle(const std::string& part, std::string_view id);

}  // namespace scrivalen::test

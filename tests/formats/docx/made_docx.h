#pragma once

#include "support/documents/made_document.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A Word document.
/// @param warnings  gets those of the document; may be null
std::string docxOf(const Content& content, const SettingValues& settings = {},
                   std::vector<document::Warning>* warnings = nullptr);

/// A part of one, such as "word/styles.xml".
std::string partOf(const std::string& docx, std::string_view name);
/// The names of all parts, in the order of the file.
std::vector<std::string> partsOf(const std::string& docx);

/// The text's paragraphs and tables, without the properties of the last section.
std::string bodyOf(const Content& content, const SettingValues& settings = {});
/// The same of a paragraph with this content.
std::string paragraphOf(const Content& content, const SettingValues& settings = {});
/// The properties of the last section.
std::string lastSectionOf(const Content& content, const SettingValues& settings = {});

/// The element of a style in "word/styles.xml".
std::string styleOf(const std::string& docx, std::string_view id);

}  // namespace scrivalen::test

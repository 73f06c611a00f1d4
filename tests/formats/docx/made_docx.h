#pragma once

#include "document/document.h"

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::test {

using Content = std::function<void(document::Document&)>;
using SettingValues = std::vector<std::pair<std::string_view, std::string_view>>;

/// A Word document, with the time 2026-01-31 23:59:58. Fails the test when it cannot be written.
/// @param warnings  gets their messages; may be null
std::string docxOf(const Content& content, const SettingValues& settings = {},
                   std::vector<std::string>* warnings = nullptr);

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

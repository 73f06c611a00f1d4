#pragma once

#include "support/documents/made_document.h"

#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A document in RTF.
/// @param warnings  gets those of the document; may be null
std::string rtfOf(const Content& content, const SettingValues& settings = {},
                  std::vector<document::Warning>* warnings = nullptr);

/// The text of one: what comes after the tables and the words of the first section, without the final brace.
std::string rtfBodyOf(const Content& content, const SettingValues& settings = {});

/// The lines that contain a text, in their order.
std::string linesWith(std::string_view part, const std::string& rtf);

/// A text in place of each occurrence of another.
std::string replaced(std::string text, std::string_view from, std::string_view to);

}  // namespace scrivalen::test

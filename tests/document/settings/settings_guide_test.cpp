#include "document/settings/definitions.h"
#include "support/files.h"
#include "text/utf.h"

#include <gtest/gtest.h>

#include <sstream>

namespace scrivalen::document {
namespace {

std::string rowOf(const SettingDefinition& definition) {
  const std::string name = std::string(definition.name) + (definition.name == kProperty ? "NAME" : "");
  const std::string usual = definition.usual.empty() ? "none" : '`' + std::string(definition.usual) + '`';
  return "| `" + name + "` | " + std::string(definition.values) + " | " + usual + " | " +
         formatNames(definition.formats) + " |";
}

TEST(SettingsGuide, HasARowForEachSetting) {
  std::string expected;
  for (const SettingDefinition& definition : settingDefinitions()) {
    expected += rowOf(definition) + '\n';
  }
  std::istringstream page(test::bytesOf(toWide(SCRIVALEN_SETTINGS_GUIDE)));
  std::string rows;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("| `")) {
      rows += line + '\n';
    }
  }
  EXPECT_EQ(rows, expected);
}

}  // namespace
}  // namespace scrivalen::document

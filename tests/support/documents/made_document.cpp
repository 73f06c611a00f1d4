#include "support/documents/made_document.h"

#include <gtest/gtest.h>

namespace scrivalen::test {

std::string bytesOfDocument(const document::Format& format, const Content& content, const SettingValues& settings,
                            std::vector<document::Warning>* warnings) {
  MadeDocument document(format);
  document.set("clock", "2026-01-31 23:59:58");
  for (const auto& [name, value] : settings) {
    EXPECT_EQ(document.set(name, value), document::Status::Ok) << document.error();
  }
  content(document);
  EXPECT_EQ(document.close(), document::Status::Ok) << document.error();
  while (warnings != nullptr) {
    const document::Warning* const warning = document.nextWarning();
    if (warning == nullptr) {
      break;
    }
    warnings->push_back(*warning);
  }
  return document.bytes();
}

int MadeDocument::append(void* bytes, const void* data, std::size_t size) {
  static_cast<std::string*>(bytes)->append(static_cast<const char*>(data), size);
  return 0;
}

std::string MadeDocument::warnings() {
  close();
  std::string result;
  while (const document::Warning* warning = nextWarning()) {
    result += std::to_string(warning->count) + " x " + warning->message + "\n";
  }
  return result;
}

void MadeDocument::addRow(std::initializer_list<std::string_view> cells, bool header) {
  beginRow(header);
  for (const std::string_view text : cells) {
    cell(text);
  }
  end();
}

void MadeDocument::addSpan(document::Span span, std::string_view text) {
  beginSpan(span);
  this->text(text);
  end();
}

}  // namespace scrivalen::test

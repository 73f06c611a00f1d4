#include "support/documents/made_document.h"

namespace scrivalen::test {

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

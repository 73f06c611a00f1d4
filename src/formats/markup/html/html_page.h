#pragma once

#include "document/model/writer.h"

#include <string>

namespace scrivalen::document {

/// What an HTML document has around its content.
struct HtmlPage {
  std::string head;
  std::string tail;
};

/// The page that the settings describe: that of the template, or one with a style sheet of its own.
HtmlPage htmlPageOf(const WriterContext& context);

}  // namespace scrivalen::document

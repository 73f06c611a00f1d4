#include "readers/markdown/markdown_reader.h"

#include "readers/markdown/markdown_listener.h"
#include "readers/markdown/markdown_parser.h"

namespace scrivalen::command {

void readMarkdown(std::string_view text, Safety safety, DocumentSink& sink) {
  MarkdownListener listener(text, safety, sink);
  parseMarkdown(text, listener);
}

}  // namespace scrivalen::command

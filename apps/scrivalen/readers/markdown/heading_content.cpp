#include "readers/markdown/heading_content.h"

#include <utility>

namespace scrivalen::command {

void HeadingContent::add(Part part) {
  size_ += sizeof part + part.first.size() + part.second.size();
  parts_.push_back(std::move(part));
}

void HeadingContent::pass(const Part& part, DocumentSink& sink) {
  switch (part.kind) {
    case Kind::Span: return sink.beginSpan(part.span);
    case Kind::Link: return sink.beginLink(part.first, part.second);
    case Kind::End: return sink.end();
    case Kind::Text: return sink.text(part.first);
    case Kind::Image: return sink.image(part.first, part.second);
    case Kind::Markup: return sink.markup(part.first);
  }
}

void HeadingContent::moveTo(DocumentSink& sink) {
  for (const Part& part : parts_) {
    pass(part, sink);
  }
  parts_.clear();
  size_ = 0;
}

}  // namespace scrivalen::command

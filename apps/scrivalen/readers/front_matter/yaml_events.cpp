#include "readers/front_matter/yaml_events.h"

#include <algorithm>
#include <new>

namespace scrivalen::command {
namespace {

constexpr int kDeepest = 100;

int depthAfter(const yaml_event_t& event) {
  switch (event.type) {
    case YAML_SEQUENCE_START_EVENT:
    case YAML_MAPPING_START_EVENT: return 1;
    case YAML_SEQUENCE_END_EVENT:
    case YAML_MAPPING_END_EVENT: return -1;
    default: return 0;
  }
}

}  // namespace

YamlEvents::YamlEvents(std::string_view text) : text_(text) {
  if (yaml_parser_initialize(&parser_) == 0) {
    throw std::bad_alloc();
  }
  yaml_parser_set_encoding(&parser_, YAML_UTF8_ENCODING);
  yaml_parser_set_input_string(&parser_, reinterpret_cast<const unsigned char*>(text.data()), text.size());
}

YamlEvents::~YamlEvents() {
  releaseEvent();
  yaml_parser_delete(&parser_);
}

const yaml_event_t& YamlEvents::next() {
  releaseEvent();
  if (yaml_parser_parse(&parser_, &event_) == 0) {
    fail();
  }
  depth_ += depthAfter(event_);
  if (depth_ > kDeepest) {
    throw YamlError(line(), "lists and mappings are too deep in each other");
  }
  return event_;
}

void YamlEvents::releaseEvent() {
  yaml_event_delete(&event_);
  event_ = {};
}

void YamlEvents::fail() const {
  if (parser_.error == YAML_MEMORY_ERROR) {
    throw std::bad_alloc();
  }
  const std::string problem = parser_.problem != nullptr ? parser_.problem : "it cannot be read";
  if (parser_.error == YAML_READER_ERROR) {
    const std::string_view before = text_.substr(0, parser_.problem_offset);
    throw YamlError(static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1, problem);
  }
  const std::string context = parser_.context != nullptr ? std::string(parser_.context) + ", " : std::string();
  throw YamlError(parser_.problem_mark.line + 1, context + problem);
}

}  // namespace scrivalen::command

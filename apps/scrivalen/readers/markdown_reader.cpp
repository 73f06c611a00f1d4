#include "readers/markdown_reader.h"

#include "errors.h"
#include "readers/markdown_dialect.h"
#include "readers/markdown_listener.h"

#include <exception>
#include <limits>
#include <new>

namespace scrivalen::command {
namespace {

struct Reading {
  MarkdownListener listener;
  std::exception_ptr failure;
};

constexpr int kContinue = 0;
constexpr int kStop = -1;  // the parser stops on negative values only

// The parser is C code: exceptions must not pass through it. It is stopped, and the exception is rethrown afterwards.
template <class Call>
int guarded(void* reading, Call call) {
  auto& state = *static_cast<Reading*>(reading);
  try {
    call(state.listener);
    return kContinue;
  } catch (...) {
    state.failure = std::current_exception();
    return kStop;
  }
}

int onEnterBlock(MD_BLOCKTYPE type, void* detail, void* reading) {
  return guarded(reading, [&](MarkdownListener& listener) { listener.enterBlock(type, detail); });
}

int onLeaveBlock(MD_BLOCKTYPE type, void* detail, void* reading) {
  return guarded(reading, [&](MarkdownListener& listener) { listener.leaveBlock(type, detail); });
}

int onEnterSpan(MD_SPANTYPE type, void* detail, void* reading) {
  return guarded(reading, [&](MarkdownListener& listener) { listener.enterSpan(type, detail); });
}

int onLeaveSpan(MD_SPANTYPE type, void*, void* reading) {
  return guarded(reading, [&](MarkdownListener& listener) { listener.leaveSpan(type); });
}

int onText(MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* reading) {
  return guarded(reading, [&](MarkdownListener& listener) { listener.text(type, {text, size}); });
}

}  // namespace

void readMarkdown(std::string_view text, Safety safety, EventSink& sink) {
  if (text.size() > std::numeric_limits<MD_SIZE>::max() / 2) {
    throw InputError("a Markdown text of more than 2 GiB cannot be read");
  }
  MD_PARSER parser{};
  parser.flags = kMarkdownDialect;
  parser.enter_block = &onEnterBlock;
  parser.leave_block = &onLeaveBlock;
  parser.enter_span = &onEnterSpan;
  parser.leave_span = &onLeaveSpan;
  parser.text = &onText;
  Reading reading{MarkdownListener(text, safety, sink), nullptr};
  const int result = md_parse(text.data(), static_cast<MD_SIZE>(text.size()), &parser, &reading);
  if (reading.failure) {
    std::rethrow_exception(reading.failure);
  }
  if (result != 0) {
    throw std::bad_alloc();
  }
}

}  // namespace scrivalen::command

#include "readers/markdown/markdown_parser.h"

#include "errors.h"
#include "readers/markdown/copies/code_in_lists.h"
#include "readers/markdown/original_text.h"

#include <exception>
#include <limits>
#include <new>

namespace scrivalen::command {
namespace {

struct Parsing {
  MarkdownHandler& handler;
  std::exception_ptr failure;
};

constexpr int kContinue = 0;
constexpr int kStop = -1;  // the parser stops on negative values only

// The parser is C code: exceptions must not pass through it. It is stopped, and the exception is rethrown afterwards.
template <class Call>
int guarded(void* parsing, Call call) {
  auto& state = *static_cast<Parsing*>(parsing);
  try {
    call(state.handler);
    return kContinue;
  } catch (...) {
    state.failure = std::current_exception();
    return kStop;
  }
}

int onEnterBlock(MD_BLOCKTYPE type, void* detail, void* parsing) {
  return guarded(parsing, [&](MarkdownHandler& handler) { handler.enterBlock(type, detail); });
}

int onLeaveBlock(MD_BLOCKTYPE type, void* detail, void* parsing) {
  return guarded(parsing, [&](MarkdownHandler& handler) { handler.leaveBlock(type, detail); });
}

int onEnterSpan(MD_SPANTYPE type, void* detail, void* parsing) {
  return guarded(parsing, [&](MarkdownHandler& handler) { handler.enterSpan(type, detail); });
}

int onLeaveSpan(MD_SPANTYPE type, void*, void* parsing) {
  return guarded(parsing, [&](MarkdownHandler& handler) { handler.leaveSpan(type); });
}

int onText(MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* parsing) {
  return guarded(parsing, [&](MarkdownHandler& handler) { handler.text(type, {text, size}); });
}

}  // namespace

void parseUnchanged(std::string_view text, MarkdownHandler& handler) {
  if (text.size() > std::numeric_limits<MD_SIZE>::max() / 2) {
    throw InputError("a Markdown text of more than 2 GiB cannot be read");
  }
  MD_PARSER parser{};
  parser.flags = MD_DIALECT_GITHUB;
  parser.enter_block = &onEnterBlock;
  parser.leave_block = &onLeaveBlock;
  parser.enter_span = &onEnterSpan;
  parser.leave_span = &onLeaveSpan;
  parser.text = &onText;
  Parsing parsing{handler, nullptr};
  const int result = md_parse(text.data(), static_cast<MD_SIZE>(text.size()), &parser, &parsing);
  if (parsing.failure) {
    std::rethrow_exception(parsing.failure);
  }
  if (result != 0) {
    throw std::bad_alloc();
  }
}

void parseMarkdown(std::string_view text, MarkdownHandler& handler) {
  const auto copy = withCodeKeptInLists(text);
  OriginalText original(copy ? *copy : text, handler);
  parseUnchanged(original.toBeParsed(), original);
}

}  // namespace scrivalen::command

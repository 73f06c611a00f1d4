#include "readers/hidden_content_ends.h"

#include "readers/markdown_dialect.h"
#include "texts.h"

#include <exception>
#include <new>

namespace scrivalen::command {
namespace {

struct Search {
  std::array<std::size_t, 4>& last;
  std::size_t text = 0;
  std::exception_ptr failure;
};

int ignoreBlock(MD_BLOCKTYPE, void*, void*) { return 0; }
int ignoreSpan(MD_SPANTYPE, void*, void*) { return 0; }

void lookInto(Search& search, MD_TEXTTYPE type, std::string_view text) {
  const auto note = [&](HiddenContent hidden, std::wstring_view markup) {
    if (endOfHidden(hidden, markup) != std::wstring_view::npos) {
      search.last[static_cast<std::size_t>(hidden)] = search.text;
    }
  };
  ++search.text;
  const bool isMarkup = type == MD_TEXT_HTML;
  if (isMarkup && text.find("</") != std::string_view::npos) {
    const std::wstring markup = toWide(text);
    note(HiddenContent::Script, markup);
    note(HiddenContent::StyleSheet, markup);
  }
  if ((isMarkup || type == MD_TEXT_NORMAL) && text.find("-->") != std::string_view::npos) {
    search.last[static_cast<std::size_t>(HiddenContent::Comment)] = search.text;
  }
}

int onHiddenText(MD_TEXTTYPE type, const MD_CHAR* text, MD_SIZE size, void* data) {
  auto& search = *static_cast<Search*>(data);
  try {
    lookInto(search, type, {text, size});
    return 0;
  } catch (...) {
    search.failure = std::current_exception();
    return -1;  // the parser stops on negative values only
  }
}

}  // namespace

HiddenContentEnds::HiddenContentEnds(std::string_view markdown) {
  MD_PARSER parser{};
  parser.flags = kMarkdownDialect;
  parser.enter_block = &ignoreBlock;
  parser.leave_block = &ignoreBlock;
  parser.enter_span = &ignoreSpan;
  parser.leave_span = &ignoreSpan;
  parser.text = &onHiddenText;
  Search search{last_, 0, nullptr};
  const int result = md_parse(markdown.data(), static_cast<MD_SIZE>(markdown.size()), &parser, &search);
  if (search.failure) {
    std::rethrow_exception(search.failure);
  }
  if (result != 0) {
    throw std::bad_alloc();
  }
}

}  // namespace scrivalen::command

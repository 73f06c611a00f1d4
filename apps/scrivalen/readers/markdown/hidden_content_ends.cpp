#include "readers/markdown/hidden_content_ends.h"

#include "readers/markdown/markdown_parser.h"

namespace scrivalen::command {
namespace {

class EndSearch final : public MarkdownHandler {
 public:
  explicit EndSearch(std::array<std::size_t, 4>& last) : last_(last) {}

  void text(MD_TEXTTYPE type, std::string_view text) override;

 private:
  void note(HiddenContent hidden) { last_[static_cast<std::size_t>(hidden)] = texts_; }
  void noteEndIn(HiddenContent hidden, std::string_view markup) {
    if (endOfHidden(hidden, markup) != std::string_view::npos) {
      note(hidden);
    }
  }

  std::array<std::size_t, 4>& last_;
  std::size_t texts_ = 0;
};

void EndSearch::text(MD_TEXTTYPE type, std::string_view text) {
  ++texts_;
  const bool isMarkup = type == MD_TEXT_HTML;
  if (isMarkup && text.find("</") != std::string_view::npos) {
    noteEndIn(HiddenContent::Script, text);
    noteEndIn(HiddenContent::StyleSheet, text);
  }
  if ((isMarkup || type == MD_TEXT_NORMAL) && text.find("-->") != std::string_view::npos) {
    note(HiddenContent::Comment);
  }
}

}  // namespace

HiddenContentEnds::HiddenContentEnds(std::string_view markdown) {
  EndSearch search(last_);
  parseMarkdown(markdown, search);
}

}  // namespace scrivalen::command

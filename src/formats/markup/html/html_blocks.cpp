#include "formats/markup/html/html_blocks.h"

#include <algorithm>
#include <string>

namespace scrivalen::document {
namespace {

// The first word of a code block's language; a class name ends there.
std::string_view firstWord(std::string_view text) {
  constexpr std::string_view kWhiteSpace = " \t\n\f\r";
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  return text.substr(0, text.find_first_of(kWhiteSpace));
}

}  // namespace

void HtmlBlocks::put(std::string_view markup) {
  lists_.beginBlock();
  markup_.put(markup);
}

void HtmlBlocks::title(const Event& title) {
  markup_.put("<h1 class=\"title\">");
  markup_.putText(title.text);
  markup_.put("</h1>\n");
}

void HtmlBlocks::beginSection(const Event& section) {
  put("<section");
  lists_.enter();
  markup_.putId(section.id);
  if (!section.text.empty()) {
    markup_.putAttribute("aria-label", section.text);
  }
  markup_.put(">\n");
}

void HtmlBlocks::beginQuote() {
  put("<blockquote>\n");
  lists_.enter();
}

void HtmlBlocks::endContainer(std::string_view endTag) {
  lists_.leave();
  markup_.put(endTag);
}

void HtmlBlocks::beginHeading(const Event& heading) {
  lists_.beginBlock();
  isInParagraph_ = true;
  const char element[] = {'h', static_cast<char>('0' + heading.number)};
  markup_.putStart({element, sizeof element}, heading.id, heading.align);
}

void HtmlBlocks::endHeading(const Event& heading) {
  isInParagraph_ = false;
  const char element[] = {'h', static_cast<char>('0' + heading.number)};
  markup_.putEnd({element, sizeof element});
  markup_.put("\n");
}

void HtmlBlocks::beginParagraph(const Event& paragraph) {
  isInParagraph_ = true;
  isParagraphBare_ = lists_.beginParagraph(paragraph.align);
  if (!isParagraphBare_) {
    markup_.putStart("p", {}, paragraph.align);
  }
  lists_.putTask();
}

void HtmlBlocks::endParagraph() {
  isInParagraph_ = false;
  markup_.put(isParagraphBare_ ? "" : "</p>\n");
}

// Code is written from the left in every language.
void HtmlBlocks::beginCode(const Event& code) {
  put(markup_.isRightToLeft() ? "<pre dir=\"ltr\"><code" : "<pre><code");
  isInParagraph_ = true;
  markup_.setInCode(true);
  const std::string_view language = firstWord(code.text);
  if (!language.empty()) {
    markup_.putAttribute("class", std::string("language-").append(language));
  }
  markup_.put(">");
}

void HtmlBlocks::endCode() {
  isInParagraph_ = false;
  markup_.setInCode(false);
  markup_.put("</code></pre>\n");
}

void HtmlBlocks::beginInline() {
  if (!isInParagraph_) {
    lists_.beginText();
  }
}

}  // namespace scrivalen::document

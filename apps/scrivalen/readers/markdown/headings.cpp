#include "readers/markdown/headings.h"

#include "document/anchor_names.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace scrivalen::command {
namespace {

// A title is a line that people read, and some formats write it several times.
constexpr std::size_t kLongestTitle = 1000;

/// Ends the reading.
struct HeadingFound {};

std::string titleOf(const std::string& heading) {
  if (heading.size() <= kLongestTitle) {
    return heading;
  }
  std::size_t size = heading.rfind(' ', kLongestTitle);
  if (size == heading.npos) {
    size = kLongestTitle;
    while ((static_cast<unsigned char>(heading[size]) & 0xC0) == 0x80) {
      --size;  // within a character
    }
  }
  return heading.substr(0, size) + "\xE2\x80\xA6";
}

class HeadingCollector final : public DocumentSink {
 public:
  explicit HeadingCollector(HeadingSearch search) : search_(search) {}

  void beginHeading(int level, const std::string& id) override {
    result_.isFirst = result_.isFirst || isFirst_;
    isFirst_ = false;
    heading_ = {level, {}, !id.empty() && names_.claim(id) ? id : std::string()};
    depth_ = 1;
  }
  void beginParagraph() override { beginPart(); }
  void beginQuote() override { beginPart(); }
  void beginList(bool, int, bool) override { beginPart(); }
  void beginItem(Task) override { beginPart(); }
  void beginCode(const std::string&) override { beginPart(); }
  void beginTable() override { beginPart(); }
  void beginRow(bool) override { beginPart(); }
  void beginCell(Align) override { beginPart(); }
  void beginSpan(Span) override { beginPart(); }
  void beginLink(const std::string&, const std::string&) override { beginPart(); }
  void end() override;

  void text(std::string_view text) override { add(text); }
  void cell(std::string_view) override {}
  void rule() override { isFirst_ = false; }
  void image(const std::string&, const std::string& alternative) override {
    isFirst_ = false;
    add(alternative);
  }
  void markup(std::string_view) override { isFirst_ = false; }

  Headings& result() { return result_; }

 private:
  void beginPart() {
    isFirst_ = false;
    depth_ += depth_ > 0 ? 1 : 0;
  }
  void add(std::string_view text) {
    if (depth_ > 0) {
      heading_.text += text;
    }
  }

  HeadingSearch search_;
  Headings result_;
  Heading heading_;  // the one that is open
  int depth_ = 0;    // of the parts that are open from it on; 0 outside a heading
  bool isFirst_ = true;
  document::AnchorNames names_;
};

void HeadingCollector::end() {
  if (depth_ == 0 || --depth_ > 0) {
    return;
  }
  std::replace(heading_.text.begin(), heading_.text.end(), '\n', ' ');
  if (heading_.id.empty()) {
    heading_.id = names_.next(heading_.text);
  }
  if (result_.title.empty()) {
    result_.title = titleOf(heading_.text);
  }
  result_.all.push_back(std::move(heading_));
  if (search_ == HeadingSearch::First && !result_.title.empty()) {
    throw HeadingFound();
  }
}

// The first blocks, as far as they cannot depend on what follows: a bracket may be a reference to a later definition,
// and HTML may hide text up to its end, wherever that is.
std::string_view independentBeginning(std::string_view markdown) {
  constexpr std::size_t kLongest = 4096;
  const std::string_view text = markdown.substr(0, std::min(kLongest, markdown.find_first_of("[<")));
  for (const std::string_view blankLine : {"\n\n", "\n\r\n"}) {
    if (const std::size_t at = text.rfind(blankLine); at != text.npos) {
      return text.substr(0, at + blankLine.size());
    }
  }
  return {};
}

Headings collected(std::string_view markdown, Safety safety, HeadingSearch search) {
  HeadingCollector collector(search);
  try {
    readMarkdown(markdown, safety, collector);
  } catch (const HeadingFound&) {
  }
  return std::move(collector.result());
}

}  // namespace

// The parser finds all blocks before it reports the first, so the first heading of a whole text costs a seventh of the
// run.
Headings headingsOf(std::string_view markdown, Safety safety, HeadingSearch search) {
  if (search == HeadingSearch::First) {
    if (Headings first = collected(independentBeginning(markdown), safety, search); !first.title.empty()) {
      return first;
    }
  }
  return collected(markdown, safety, search);
}

}  // namespace scrivalen::command

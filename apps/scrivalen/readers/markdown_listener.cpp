#include "readers/markdown_listener.h"

#include "addresses.h"
#include "readers/entities.h"
#include "text/address.h"
#include "text/utf.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

// A longer text is passed on in pieces, so that a huge code block is never held as a whole in wide characters.
constexpr std::size_t kLongText = 16384;

struct SpanEvents {
  EventKind begin;
  EventKind end;
};

std::optional<SpanEvents> eventsOf(MD_SPANTYPE type) {
  switch (type) {
    case MD_SPAN_EM: return SpanEvents{EventKind::BeginEmphasis, EventKind::EndEmphasis};
    case MD_SPAN_STRONG: return SpanEvents{EventKind::BeginStrong, EventKind::EndStrong};
    case MD_SPAN_DEL: return SpanEvents{EventKind::BeginDeleted, EventKind::EndDeleted};
    case MD_SPAN_CODE: return SpanEvents{EventKind::BeginCode, EventKind::EndCode};
    case MD_SPAN_A: return SpanEvents{EventKind::BeginLink, EventKind::EndLink};
    default: return std::nullopt;
  }
}

Align alignOf(MD_ALIGN align) {
  switch (align) {
    case MD_ALIGN_LEFT: return Align::Left;
    case MD_ALIGN_CENTER: return Align::Center;
    case MD_ALIGN_RIGHT: return Align::Right;
    case MD_ALIGN_DEFAULT: break;
  }
  return Align::Default;
}

Task taskOf(const MD_BLOCK_LI_DETAIL& item) {
  if (!item.is_task) {
    return Task::None;
  }
  return item.task_mark == ' ' ? Task::Open : Task::Done;
}

void assignAttribute(std::wstring& wide, const MD_ATTRIBUTE& attribute) {
  wide.clear();
  const std::string_view text(attribute.text, attribute.size);
  for (std::size_t i = 0; !text.empty() && attribute.substr_offsets[i] < attribute.size; ++i) {
    const auto start = attribute.substr_offsets[i];
    const std::string_view part = text.substr(start, attribute.substr_offsets[i + 1] - start);
    if (attribute.substr_types[i] == MD_TEXT_ENTITY) {
      appendEntity(wide, part);
    } else {
      scrivalen::appendWide(wide, part);
    }
  }
}

// The text of tags and comments where a line cannot be broken.
std::wstring textOnOneLine(MarkupText& reader, std::wstring_view markup) {
  std::wstring text;
  reader.appendInline(text, markup);
  std::replace(text.begin(), text.end(), L'\n', L' ');
  return text;
}

bool isBlank(std::wstring_view text) { return text.find_first_not_of(L" \t\n") == std::wstring_view::npos; }

template <class Detail>
const Detail& as(const void* detail) {
  return *static_cast<const Detail*>(detail);
}

}  // namespace

void MarkdownListener::enterBlock(MD_BLOCKTYPE type, void* detail) {
  endSpans();
  flush();
  switch (type) {
    case MD_BLOCK_QUOTE: return put({.kind = EventKind::BeginQuote});
    case MD_BLOCK_UL: return put({.kind = EventKind::BeginList, .tight = as<MD_BLOCK_UL_DETAIL>(detail).is_tight != 0});
    case MD_BLOCK_OL: {
      const auto& list = as<MD_BLOCK_OL_DETAIL>(detail);
      const int start = static_cast<int>(list.start);
      return put({.kind = EventKind::BeginList, .ordered = true, .tight = list.is_tight != 0, .number = start});
    }
    case MD_BLOCK_LI: return put({.kind = EventKind::BeginItem, .task = taskOf(as<MD_BLOCK_LI_DETAIL>(detail))});
    case MD_BLOCK_HR: return putVisible({.kind = EventKind::Rule});
    case MD_BLOCK_H: return beginHeading();
    case MD_BLOCK_CODE: return beginCodeBlock(as<MD_BLOCK_CODE_DETAIL>(detail));
    case MD_BLOCK_P: return beginParagraph();
    case MD_BLOCK_TABLE:
      columns_ = static_cast<int>(as<MD_BLOCK_TABLE_DETAIL>(detail).col_count);
      return put({.kind = EventKind::BeginTable});
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY: header_ = type == MD_BLOCK_THEAD; return;
    case MD_BLOCK_TR: return put({.kind = EventKind::BeginRow, .header = header_, .number = columns_});
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
      isInCell_ = true;
      return put({.kind = EventKind::BeginCell,
                  .align = alignOf(as<MD_BLOCK_TD_DETAIL>(detail).align),
                  .header = type == MD_BLOCK_TH});
    case MD_BLOCK_HTML:
    case MD_BLOCK_DOC: return;
  }
}

void MarkdownListener::leaveBlock(MD_BLOCKTYPE type, void* detail) {
  endSpans();
  switch (type) {
    case MD_BLOCK_QUOTE: return put({.kind = EventKind::EndQuote});
    case MD_BLOCK_UL:
    case MD_BLOCK_OL: return put({.kind = EventKind::EndList, .ordered = type == MD_BLOCK_OL});
    case MD_BLOCK_LI: return put({.kind = EventKind::EndItem});
    case MD_BLOCK_H: return endHeading(static_cast<int>(as<MD_BLOCK_H_DETAIL>(detail).level));
    case MD_BLOCK_CODE: return putVisible({.kind = EventKind::EndCodeBlock});
    case MD_BLOCK_HTML: return endMarkupBlock();
    case MD_BLOCK_P: return endParagraph();
    case MD_BLOCK_TABLE: return put({.kind = EventKind::EndTable});
    case MD_BLOCK_TR: return put({.kind = EventKind::EndRow, .header = header_});
    case MD_BLOCK_TH:
    case MD_BLOCK_TD: isInCell_ = false; return put({.kind = EventKind::EndCell, .header = type == MD_BLOCK_TH});
    case MD_BLOCK_DOC:
    case MD_BLOCK_HR:
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY: return;
  }
}

void MarkdownListener::enterSpan(MD_SPANTYPE type, void* detail) {
  flushMarkup(EventKind::Markup);
  if (type == MD_SPAN_IMG) {
    return beginImage(as<MD_SPAN_IMG_DETAIL>(detail));
  }
  const auto events = eventsOf(type);
  if (imageDepth_ > 0 || !events) {
    return;
  }
  Form form = Form::Written;
  if (isHidden()) {
    form = Form::Omitted;
  } else if (type == MD_SPAN_A) {
    form = beginLink(as<MD_SPAN_A_DETAIL>(detail));
  } else {
    put({.kind = events->begin});
  }
  spans_.push_back({type, form});
}

// The parser does not always nest spans: it may pair the beginning or end of an emphasis with one in a link's address
// and then drops that one. The end of a span that was never begun is ignored; the end of a span also ends the spans
// inside it.
void MarkdownListener::leaveSpan(MD_SPANTYPE type) {
  flushMarkup(EventKind::Markup);
  if (imageDepth_ > 0) {
    if (type == MD_SPAN_IMG) {
      endImage();
    }
    return;
  }
  const auto isOfType = [type](const Span& span) { return span.type == type; };
  const auto span = std::find_if(spans_.rbegin(), spans_.rend(), isOfType);
  if (span == spans_.rend()) {
    return;
  }
  for (auto count = span - spans_.rbegin() + 1; count > 0; --count) {
    endSpan();
  }
}

void MarkdownListener::endSpan() {
  const Span span = spans_.back();
  spans_.pop_back();
  if (span.form == Form::Written) {
    put({.kind = eventsOf(span.type)->end});
  } else if (span.form == Form::ShownAddress) {
    endShownLink();
  }
}

void MarkdownListener::endSpans() {
  while (imageDepth_ > 0) {
    endImage();
  }
  while (!spans_.empty()) {
    endSpan();
  }
}

void MarkdownListener::text(MD_TEXTTYPE type, std::string_view text) {
  ++texts_;
  if (type == MD_TEXT_HTML) {
    if (safety_ == Safety::Unsafe) {
      flushText();
    }
    scrivalen::appendWide(markup_, text);
    return;
  }
  flushMarkup(EventKind::Markup);
  if (isHidden()) {
    return readHidden(type, text);
  }
  if (type == MD_TEXT_ENTITY) {
    appendEntity(text_, text);
  } else if (type == MD_TEXT_SOFTBR) {
    text_ += L' ';
  } else if (type == MD_TEXT_BR) {
    breakLine();
  } else if (type == MD_TEXT_CODE && isInCell_) {
    appendCode(text);
  } else {
    scrivalen::appendWide(text_, text);
  }
  if (text_.size() > kLongText) {
    flushText();
  }
}

// A cell ends at a bar even in code, so it is escaped there (GFM 0.29, 4.10). The parser leaves the backslash.
void MarkdownListener::appendCode(std::string_view code) {
  constexpr std::string_view kBar = "\\|";
  for (std::size_t at = code.find(kBar); at != code.npos; at = code.find(kBar)) {
    scrivalen::appendWide(text_, code.substr(0, at));
    code.remove_prefix(at + 1);
  }
  scrivalen::appendWide(text_, code);
}

void MarkdownListener::put(const Event& event) {
  flush();
  write(event);
}

void MarkdownListener::putVisible(const Event& event) {
  if (!isHidden()) {
    put(event);
  }
}

void MarkdownListener::beginPendingParagraph() {
  isParagraphPending_ = false;
  sink_->write({.kind = EventKind::BeginParagraph});
}

void MarkdownListener::flush() {
  flushMarkup(EventKind::Markup);
  flushText();
}

void MarkdownListener::flushText() {
  if (text_.empty() || imageDepth_ > 0) {
    return;
  }
  addToHeading(text_);
  if (isLinkShown_) {
    linkText_ += text_;
  }
  write({.kind = EventKind::Text, .text = text_});
  text_.clear();
}

void MarkdownListener::flushMarkup(EventKind kind) {
  if (markup_.empty()) {
    return;
  }
  if (safety_ == Safety::Safe) {
    return flushVisibleText();
  }
  if (imageDepth_ > 0) {
    MarkupText reader;
    text_ += textOnOneLine(reader, markup_);
  } else {
    write({.kind = kind, .text = markup_});
    addMarkupToHeading();
  }
  markup_.clear();
}

// Tags inside a line.
void MarkdownListener::flushVisibleText() {
  std::wstring shown;
  markupText_.appendInline(shown, markup_);
  markup_.clear();
  hasLostMarkup_ = true;
  revealUnlessItEnds();
  putLines(shown);
}

void MarkdownListener::breakLine() {
  if (imageDepth_ > 0) {
    text_ += L' ';
    return;
  }
  put({.kind = EventKind::LineBreak});
  addToHeading(L" ");
}

void MarkdownListener::putLines(std::wstring_view text) {
  for (const wchar_t c : text) {
    if (c == L'\n') {
      breakLine();
    } else {
      text_ += c;
    }
  }
}

void MarkdownListener::endMarkupBlock() {
  if (safety_ == Safety::Unsafe) {
    return flushMarkup(EventKind::MarkupBlock);
  }
  std::wstring shown;
  markupText_.appendBlock(shown, markup_);
  markup_.clear();
  revealUnlessItEnds();
  shown.erase(shown.find_last_not_of(L" \n") + 1);
  if (!shown.empty()) {
    put({.kind = EventKind::BeginParagraph});
    putLines(shown);
    put({.kind = EventKind::EndParagraph});
  }
}

void MarkdownListener::revealUnlessItEnds() {
  if (!isHidden()) {
    return;
  }
  if (!hiddenContentEnds_) {
    hiddenContentEnds_.emplace(markdown_);
  }
  if (!hiddenContentEnds_->follow(markupText_.hidden(), texts_)) {
    markupText_.reveal();
  }
}

// The parser passes the end of a comment outside an HTML block as text.
void MarkdownListener::readHidden(MD_TEXTTYPE type, std::string_view text) {
  constexpr std::string_view kEnd = "-->";
  const std::size_t end = text.find(kEnd);
  if (markupText_.hidden() == HiddenContent::Comment && type == MD_TEXT_NORMAL && end != std::string_view::npos) {
    markupText_.reveal();
    scrivalen::appendWide(text_, text.substr(end + kEnd.size()));
  }
}

// Whether the current paragraph or heading is blank after its markup was removed.
bool MarkdownListener::isEmptied() const { return hasLostMarkup_ && isBlank(text_); }

void MarkdownListener::beginParagraph() {
  isParagraphPending_ = true;
  hasLostMarkup_ = isHidden();
}

void MarkdownListener::endParagraph() {
  flushMarkup(EventKind::Markup);
  if (isParagraphPending_ && isEmptied()) {
    isParagraphPending_ = false;
    text_.clear();
  } else {
    put({.kind = EventKind::EndParagraph});
  }
}

void MarkdownListener::beginCodeBlock(const MD_BLOCK_CODE_DETAIL& code) {
  assignAttribute(language_, code.lang);
  putVisible({.kind = EventKind::BeginCodeBlock, .text = language_});
}

void MarkdownListener::beginHeading() {
  headingLog_.clear();
  headingText_.clear();
  headingMarkup_.reveal();
  sink_ = &headingLog_;
  hasLostMarkup_ = isHidden();
}

void MarkdownListener::addToHeading(std::wstring_view text) {
  if (sink_ == &headingLog_ && headingMarkup_.hidden() == HiddenContent::None) {
    headingText_ += text;
  }
}

// Markup is passed on as it is, but the plain text of the heading is what a page shows of it.
void MarkdownListener::addMarkupToHeading() {
  if (sink_ == &headingLog_) {
    headingText_ += textOnOneLine(headingMarkup_, markup_);
  }
}

void MarkdownListener::endHeading(int level) {
  flushMarkup(EventKind::Markup);
  if (headingLog_.isEmpty() && isEmptied()) {
    sink_ = &document_;
    return text_.clear();
  }
  flush();
  sink_ = &document_;
  const std::wstring& name = anchorNames_.next(headingText_);
  sink_->write({.kind = EventKind::BeginHeading, .number = level, .text = headingText_, .address = name});
  headingLog_.replay(*sink_);
  sink_->write({.kind = EventKind::EndHeading, .number = level});
}

// No format supports nested links, but the text of a link may contain a bare address.
MarkdownListener::Form MarkdownListener::beginLink(const MD_SPAN_A_DETAIL& link) {
  const auto isLink = [](const Span& span) { return span.type == MD_SPAN_A; };
  if (std::any_of(spans_.begin(), spans_.end(), isLink)) {
    return Form::Omitted;
  }
  assignAttribute(linkAddress_, link.href);
  if (safety_ == Safety::Safe && runsProgram(linkAddress_, AddressUse::Link)) {
    flush();
    linkText_.clear();
    isLinkShown_ = true;
    return Form::ShownAddress;
  }
  assignAttribute(title_, link.title);
  put({.kind = EventKind::BeginLink, .address = linkAddress_, .title = title_});
  return Form::Written;
}

void MarkdownListener::endShownLink() {
  isLinkShown_ = false;
  if (!isHidden()) {
    linkText_ += text_;
    text_.append(withAddress(linkText_, linkAddress_), linkText_.size());
  }
}

void MarkdownListener::beginImage(const MD_SPAN_IMG_DETAIL& image) {
  if (imageDepth_ == 0) {
    flush();
    assignAttribute(address_, image.src);
    assignAttribute(title_, image.title);
    isImageHidden_ = isHidden();
  }
  ++imageDepth_;
}

void MarkdownListener::endImage() {
  if (--imageDepth_ > 0) {
    return;
  }
  if (isImageHidden_) {
    return text_.clear();
  }
  if (safety_ == Safety::Safe && runsProgram(address_, AddressUse::Image)) {
    text_ = withAddress(text_, address_);
    return;
  }
  addToHeading(text_);
  if (isLinkShown_) {
    linkText_ += text_;
  }
  write({.kind = EventKind::Image, .text = text_, .address = address_, .title = title_});
  text_.clear();
}

}  // namespace scrivalen::command

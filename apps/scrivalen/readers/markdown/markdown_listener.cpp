#include "readers/markdown/markdown_listener.h"

#include "addresses.h"
#include "readers/markdown/entities.h"
#include "text/address.h"
#include "text/ascii.h"

#include <algorithm>
#include <array>
#include <utility>

namespace scrivalen::command {
namespace {

// A longer text is passed on in pieces, so that a huge code block is never held as a whole.
constexpr std::size_t kLongText = 16384;

std::optional<Span> spanOf(MD_SPANTYPE type) {
  switch (type) {
    case MD_SPAN_EM: return Span::Emphasis;
    case MD_SPAN_STRONG: return Span::Strong;
    case MD_SPAN_DEL: return Span::Deleted;
    case MD_SPAN_CODE: return Span::Code;
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

void assignAttribute(std::string& value, const MD_ATTRIBUTE& attribute) {
  value.clear();
  const std::string_view text(attribute.text, attribute.size);
  for (std::size_t i = 0; !text.empty() && attribute.substr_offsets[i] < attribute.size; ++i) {
    const auto start = attribute.substr_offsets[i];
    const std::string_view part = text.substr(start, attribute.substr_offsets[i + 1] - start);
    if (attribute.substr_types[i] == MD_TEXT_ENTITY) {
      appendEntity(value, part);
    } else {
      value += part;
    }
  }
}

struct AlertKind {
  std::string_view mark;
  std::string_view title;
};

// The alerts of GitHub.
constexpr std::array<AlertKind, 5> kAlerts = {{{"[!NOTE]", "Note"},
                                               {"[!TIP]", "Tip"},
                                               {"[!IMPORTANT]", "Important"},
                                               {"[!WARNING]", "Warning"},
                                               {"[!CAUTION]", "Caution"}}};

// Empty: the line begins no alert.
std::string_view alertTitle(std::string_view line) {
  line = line.substr(0, line.find_last_not_of(" \t") + 1);
  const auto* const kind = std::find_if(kAlerts.begin(), kAlerts.end(), [line](const AlertKind& alert) {
    return scrivalen::equalIgnoringCase(line, alert.mark);
  });
  return kind == kAlerts.end() ? std::string_view() : kind->title;
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\n") == std::string_view::npos; }

template <class Detail>
const Detail& as(const void* detail) {
  return *static_cast<const Detail*>(detail);
}

}  // namespace

void MarkdownListener::enterBlock(MD_BLOCKTYPE type, void* detail) {
  endSpans();
  flush();
  hasText_ = false;
  isApart_ = false;
  const bool isAfterQuote = std::exchange(isAfterQuote_, type == MD_BLOCK_QUOTE);
  alert_ = isAfterQuote && type == MD_BLOCK_P && !isHidden() ? Alert::Possible : Alert::None;
  switch (type) {
    case MD_BLOCK_QUOTE: return sink().beginQuote();
    case MD_BLOCK_UL: return sink().beginList(false, 0, as<MD_BLOCK_UL_DETAIL>(detail).is_tight != 0);
    case MD_BLOCK_OL: {
      const auto& list = as<MD_BLOCK_OL_DETAIL>(detail);
      return sink().beginList(true, static_cast<int>(list.start), list.is_tight != 0);
    }
    case MD_BLOCK_LI: return sink().beginItem(taskOf(as<MD_BLOCK_LI_DETAIL>(detail)));
    case MD_BLOCK_HR: return isHidden() ? void() : sink().rule();
    case MD_BLOCK_H: return beginLater(Pending::Heading, static_cast<int>(as<MD_BLOCK_H_DETAIL>(detail).level));
    case MD_BLOCK_CODE: return beginCode(as<MD_BLOCK_CODE_DETAIL>(detail));
    case MD_BLOCK_P: return beginLater(Pending::Paragraph, 0);
    case MD_BLOCK_TABLE: return sink().beginTable();
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY: header_ = type == MD_BLOCK_THEAD; return;
    case MD_BLOCK_TR: return sink().beginRow(header_);
    case MD_BLOCK_TH:
    case MD_BLOCK_TD: isInCell_ = true; return sink().beginCell(alignOf(as<MD_BLOCK_TD_DETAIL>(detail).align));
    case MD_BLOCK_HTML:
    case MD_BLOCK_DOC: return;
  }
}

void MarkdownListener::leaveBlock(MD_BLOCKTYPE type, void*) {
  endSpans();
  switch (type) {
    case MD_BLOCK_H: return endHeading();
    case MD_BLOCK_P: return alert_ == Alert::Marked ? writeAlert() : endPending();
    case MD_BLOCK_CODE: return isHidden() ? void() : sink().end();
    case MD_BLOCK_HTML: return endMarkupBlock();
    case MD_BLOCK_QUOTE:
    case MD_BLOCK_UL:
    case MD_BLOCK_OL:
    case MD_BLOCK_LI:
    case MD_BLOCK_TABLE:
    case MD_BLOCK_TR:
    case MD_BLOCK_TH:
    case MD_BLOCK_TD: isInCell_ = false; return sink().end();
    case MD_BLOCK_DOC:
    case MD_BLOCK_HR:
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY: return;
  }
}

void MarkdownListener::enterSpan(MD_SPANTYPE type, void* detail) {
  flushMarkup();
  separate();
  alert_ = Alert::None;
  lastPiece_ = 0;
  if (type == MD_SPAN_IMG) {
    return beginImage(as<MD_SPAN_IMG_DETAIL>(detail));
  }
  const auto span = spanOf(type);
  if (imageDepth_ > 0 || (!span && type != MD_SPAN_A)) {
    return;
  }
  Form form = Form::Written;
  if (isHidden()) {
    form = Form::Omitted;
  } else if (type == MD_SPAN_A) {
    form = beginLink(as<MD_SPAN_A_DETAIL>(detail));
  } else {
    sink().beginSpan(*span);
  }
  spans_.push_back({type, form, false});
}

// The parser does not always nest spans: it may pair the beginning or end of an emphasis with one in a link's address
// and then drops that one. The end of a span that was never begun is ignored; the end of a span also ends the spans
// inside it.
void MarkdownListener::leaveSpan(MD_SPANTYPE type) {
  flushMarkup();
  lastPiece_ = 0;
  if (imageDepth_ > 0) {
    if (type == MD_SPAN_IMG) {
      endImage();
    }
    return;
  }
  const auto isOfType = [type](const OpenSpan& span) { return span.type == type && !span.isMarkup; };
  const auto span = std::find_if(spans_.rbegin(), spans_.rend(), isOfType);
  if (span == spans_.rend()) {
    return;
  }
  for (auto count = span - spans_.rbegin() + 1; count > 0; --count) {
    endSpan();
  }
}

void MarkdownListener::endSpan() {
  const OpenSpan span = spans_.back();
  spans_.pop_back();
  if (span.form == Form::Written) {
    sink().end();
  } else if (span.form == Form::ShownAddress) {
    endShownLink();
  }
}

void MarkdownListener::endSpans() {
  if (imageDepth_ > 0 || !spans_.empty()) {
    lastPiece_ = 0;
  }
  while (imageDepth_ > 0) {
    endImage();
  }
  while (!spans_.empty()) {
    endSpan();
  }
}

void MarkdownListener::text(MD_TEXTTYPE type, std::string_view text) {
  ++texts_;
  lastPiece_ = 0;
  if (alert_ != Alert::None && readAlert(type, text)) {
    return;
  }
  if (type == MD_TEXT_HTML) {
    if (safety_ == Safety::Unsafe) {
      flushText();
    }
    markup_ += text;
    return;
  }
  flushMarkup();
  if (isHidden()) {
    return readHidden(type, text);
  }
  separate();
  if (type == MD_TEXT_ENTITY) {
    appendEntity(text_, text);
  } else if (type == MD_TEXT_SOFTBR) {
    text_ += text_.empty() || text_.back() != '\n' ? " " : "";
  } else if (type == MD_TEXT_BR) {
    breakLine();
  } else if (type == MD_TEXT_CODE && isInCell_) {
    appendCode(text);
  } else {
    text_ += text;
    lastPiece_ = type == MD_TEXT_NORMAL && imageDepth_ == 0 ? text.size() : 0;
  }
  if (text_.size() > kLongText) {
    flushText();
  }
}

// A cell ends at a bar even in code, so it is escaped there (GFM 0.29, 4.10). The parser leaves the backslash.
void MarkdownListener::appendCode(std::string_view code) {
  constexpr std::string_view kBar = "\\|";
  for (std::size_t at = code.find(kBar); at != code.npos; at = code.find(kBar)) {
    text_ += code.substr(0, at);
    code.remove_prefix(at + 1);
  }
  text_ += code;
}

DocumentSink& MarkdownListener::sink() {
  flush();
  beginPending();
  return *sink_;
}

// The id of a heading is at its end, so what comes before it waits.
void MarkdownListener::beginPending() {
  const Pending part = std::exchange(pending_, Pending::None);
  if (part == Pending::Heading) {
    sink_ = &heading_;
  } else if (part == Pending::Paragraph) {
    sink_->beginParagraph();
  }
}

void MarkdownListener::flush() {
  flushMarkup();
  flushText();
}

void MarkdownListener::flushText() {
  if (text_.empty() || imageDepth_ > 0) {
    return;
  }
  if (isLinkShown_) {
    linkText_ += text_;
  }
  beginPending();
  sink_->text(text_);
  text_.clear();
  lastPiece_ = 0;
  if (heading_.size() > kLongText) {
    writeHeading({});
  }
}

// Tags and comments inside a line. Where a page breaks the line, a blank keeps the words apart for readers that do not
// see the markup.
void MarkdownListener::flushMarkup() {
  if (markup_.empty()) {
    return;
  }
  const std::string markup = std::exchange(markup_, std::string());
  std::string shown;
  markupText_.appendInline(shown, markup);
  if (safety_ == Safety::Safe) {
    hasLostMarkup_ = true;
    revealUnlessItEnds();
    return putMarkup(shown, Markup::Inline);
  }
  if (imageDepth_ == 0) {
    beginPending();
    sink_->markup(markup);
    std::replace(shown.begin(), shown.end(), '\n', ' ');
  }
  revealUnlessItEnds();
  putSeparately(shown);
}

// What tags inside a line leave: line breaks, and a blank that keeps words apart.
void MarkdownListener::putSeparately(std::string_view shown) {
  if (shown.ends_with(' ')) {
    shown.remove_suffix(1);
    isApart_ = true;
  }
  putLines(shown);
}

// The text between the pictures and links of raw HTML, and these.
void MarkdownListener::putMarkup(std::string_view text, Markup markup) {
  const auto put = [&](std::string_view shown) { markup == Markup::Block ? putLines(shown) : putSeparately(shown); };
  std::size_t from = 0;
  for (const MarkupPart& part : markupText_.parts()) {
    const std::size_t to = std::clamp(part.at, from, text.size());
    put(text.substr(from, to - from));
    if (markup == Markup::Inline && part.kind != MarkupPart::Kind::EndOfLink) {
      separate();
    }
    putPart(part);
    from = to;
  }
  put(text.substr(from));
}

void MarkdownListener::putPart(const MarkupPart& part) {
  if (part.kind == MarkupPart::Kind::EndOfLink) {
    return endMarkupLink();
  }
  const bool isImage = part.kind == MarkupPart::Kind::Image;
  if (imageDepth_ > 0 || (isImage && part.address.empty())) {
    text_ += isImage ? std::string_view(part.text) : std::string_view();
    return;
  }
  if (isImage) {
    flushText();
    address_ = part.address;
    text_ = part.text;
    return putImage();
  }
  endMarkupLink();  // as in a page, where a link ends one that is open
  nextAddress_ = part.address;
  title_ = part.text;
  spans_.push_back({MD_SPAN_A, openLink(), true});
}

void MarkdownListener::endMarkupLink() {
  const auto isOfMarkup = [](const OpenSpan& span) { return span.isMarkup; };
  const auto link = std::find_if(spans_.rbegin(), spans_.rend(), isOfMarkup);
  if (imageDepth_ > 0 || link == spans_.rend()) {
    return;
  }
  for (auto count = link - spans_.rbegin() + 1; count > 0; --count) {
    endSpan();
  }
}

// Keeps the words around the tags of a block apart, where a line has both.
void MarkdownListener::separate() {
  if (std::exchange(isApart_, false) && hasText_ && (text_.empty() || text_.back() != ' ')) {
    text_ += ' ';
  }
  hasText_ = true;
}

void MarkdownListener::breakLine() { text_ += imageDepth_ > 0 ? ' ' : '\n'; }

void MarkdownListener::putLines(std::string_view text) {
  for (const char c : text) {
    if (c == '\n') {
      breakLine();
    } else {
      text_ += c;
    }
  }
}

void MarkdownListener::endMarkupBlock() {
  if (safety_ == Safety::Unsafe) {
    sink_->markup(markup_);
    return markup_.clear();
  }
  std::string shown;
  markupText_.appendBlock(shown, markup_);
  markup_.clear();
  revealUnlessItEnds();
  const auto& parts = markupText_.parts();
  const std::size_t fixed = parts.empty() ? 0 : std::min(parts.back().at, shown.size());
  shown.erase(std::max(shown.find_last_not_of(" \n") + 1, fixed));
  beginLater(Pending::Paragraph, 0);
  hasLostMarkup_ = true;
  putMarkup(shown, Markup::Block);
  endSpans();
  endPending();
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
  std::size_t end = text.size();
  if (markupText_.hidden() == HiddenContent::Comment && type == MD_TEXT_NORMAL) {
    if (const std::size_t at = text.find(kEnd); at != text.npos) {
      markupText_.reveal();
      end = at + kEnd.size();
    }
  }
  if (safety_ == Safety::Unsafe && imageDepth_ == 0) {
    beginPending();
    sink_->markup(text.substr(0, end));
  }
  text_ += text.substr(end);
}

// Whether the current paragraph or heading is blank after its markup was removed.
bool MarkdownListener::isEmptied() const { return hasLostMarkup_ && isBlank(text_); }

void MarkdownListener::beginLater(Pending part, int level) {
  pending_ = part;
  level_ = level;
  hasLostMarkup_ = isHidden();
}

void MarkdownListener::endPending() {
  flushMarkup();
  if (pending_ != Pending::None && isEmptied()) {
    pending_ = Pending::None;
    text_.clear();
  } else {
    sink().end();
  }
}

void MarkdownListener::endHeading() {
  flushMarkup();
  if (pending_ != Pending::None && isEmptied()) {
    pending_ = Pending::None;
    return text_.clear();
  }
  const bool isWritten = pending_ == Pending::None && sink_ == &document_;  // because it is long
  if (!isWritten) {
    pending_ = Pending::None;
    writeHeading(takeId());
  }
  sink().end();
}

// An id, "{#id}", comes after a blank. The parser passes a brace after a backslash as a piece of its own.
std::string MarkdownListener::takeId() {
  constexpr std::string_view kStart = " {#";
  const std::string_view last = std::string_view(text_).substr(text_.size() - lastPiece_);
  const std::size_t at = last.rfind(kStart);
  if (at == last.npos || !last.ends_with('}')) {
    return {};
  }
  const std::string_view id = last.substr(at + kStart.size(), last.size() - at - kStart.size() - 1);
  if (id.empty() || id.find_first_of(" \t{}#") != id.npos) {
    return {};
  }
  std::string result(id);
  text_.erase(text_.size() - lastPiece_ + at);
  text_.erase(text_.find_last_not_of(" \t") + 1);
  return result;
}

void MarkdownListener::writeHeading(const std::string& id) {
  sink_ = &document_;
  document_.beginHeading(level_, id);
  heading_.moveTo(document_);
}

// A quote whose first line is one of these is an alert. Its title is a paragraph of its own, in bold: a heading would
// be an entry of the table of contents.
bool MarkdownListener::readAlert(MD_TEXTTYPE type, std::string_view text) {
  if (alert_ == Alert::Possible && type == MD_TEXT_NORMAL && !alertTitle(text).empty()) {
    alert_ = Alert::Marked;
    text_ = text;
    return true;
  }
  const bool isMarked = std::exchange(alert_, Alert::None) == Alert::Marked;
  if (!isMarked || (type != MD_TEXT_SOFTBR && type != MD_TEXT_BR)) {
    return false;
  }
  writeAlert();
  beginLater(Pending::Paragraph, 0);
  return true;
}

void MarkdownListener::writeAlert() {
  alert_ = Alert::None;
  pending_ = Pending::None;
  document_.beginParagraph();
  document_.beginSpan(Span::Strong);
  document_.text(alertTitle(text_));
  document_.end();
  document_.end();
  text_.clear();
}

void MarkdownListener::beginCode(const MD_BLOCK_CODE_DETAIL& code) {
  if (!isHidden()) {
    assignAttribute(language_, code.lang);
    sink().beginCode(language_);
  }
}

MarkdownListener::Form MarkdownListener::beginLink(const MD_SPAN_A_DETAIL& link) {
  assignAttribute(nextAddress_, link.href);
  assignAttribute(title_, link.title);
  return openLink();
}

// No format supports nested links, but the text of a link may contain a bare address.
MarkdownListener::Form MarkdownListener::openLink() {
  const auto isLink = [](const OpenSpan& span) { return span.type == MD_SPAN_A; };
  if (std::any_of(spans_.begin(), spans_.end(), isLink)) {
    return Form::Omitted;
  }
  linkAddress_ = nextAddress_;
  if (safety_ == Safety::Safe && runsProgram(linkAddress_, AddressUse::Link)) {
    flush();
    linkText_.clear();
    isLinkShown_ = true;
    return Form::ShownAddress;
  }
  sink().beginLink(linkAddress_, title_);
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
  putImage();
}

// The picture of the address, whose alternative text is the text.
void MarkdownListener::putImage() {
  if (safety_ == Safety::Safe && runsProgram(address_, AddressUse::Image)) {
    text_ = withAddress(text_, address_);
    return;
  }
  if (isLinkShown_) {
    linkText_ += text_;
  }
  beginPending();
  sink_->image(address_, text_);
  text_.clear();
}

}  // namespace scrivalen::command

#include "writing/document_stream.h"

#include "errors.h"
#include "text/address.h"
#include "texts.h"
#include "writing/data_address.h"
#include "writing/percent_encoding.h"
#include "writing/picture_source.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <utility>

namespace scrivalen::command {
namespace {

constexpr std::size_t kCallsBetweenPolls = 64;
constexpr std::size_t kBlocksOfProgress = 256;
// A document nests 1,000 parts. The last are for what cannot be left out: a table and its parts, spans.
constexpr std::size_t kDeepestContainer = 900;
constexpr std::size_t kDeepestSpan = 990;

constexpr const char* kTooDeep =
    "quotes and lists are nested more than 900 levels deep, where a list and its item are two: the inner ones are not "
    "indented";

int spanKind(Span span) {
  switch (span) {
    case Span::Strong: return SCRIVALEN_STRONG;
    case Span::Emphasis: return SCRIVALEN_EMPHASIS;
    case Span::Deleted: return SCRIVALEN_DELETED;
    case Span::Code: break;
  }
  return SCRIVALEN_CODE;
}

int alignOf(Align align) {
  switch (align) {
    case Align::Left: return SCRIVALEN_LEFT;
    case Align::Center: return SCRIVALEN_CENTER;
    case Align::Right: return SCRIVALEN_RIGHT;
    case Align::Default: break;
  }
  return SCRIVALEN_ALIGN_AUTO;
}

int taskOf(Task task) {
  if (task == Task::None) {
    return 0;
  }
  return task == Task::Open ? 1 : 2;
}

std::string inAttribute(std::string_view value) {
  std::string escaped = replacedAll<char>(value, "&", "&amp;");
  escaped = replacedAll<char>(escaped, "\"", "&quot;");
  return replacedAll<char>(replacedAll<char>(escaped, "<", "&lt;"), ">", "&gt;");
}

}  // namespace

DocumentStream::DocumentStream(scrivalen_document* document, Plan plan) : document_(document), plan_(std::move(plan)) {
  const auto hasText = [](const Heading& heading) { return !heading.text.empty(); };
  const std::ptrdiff_t first = plan_.beginsWithTitle ? 1 : 0;
  isContentsDue_ = std::any_of(plan_.headings.begin() + first, plan_.headings.end(), hasText);
}

void DocumentStream::check(scrivalen_status status) {
  switch (status) {
    case SCRIVALEN_OK: return;
    case SCRIVALEN_CANCELLED: throw Interrupted();
    case SCRIVALEN_OUT_OF_MEMORY: throw std::bad_alloc();
    case SCRIVALEN_MISUSE: throw std::logic_error(scrivalen_error(document_));
    default: throw NoOutputLeft();
  }
}

void DocumentStream::countCall() {
  if (calls_++ % kCallsBetweenPolls == 0) {
    plan_.poll();
  }
}

// Also ends the paragraph that was begun for the text of an item that is omitted.
void DocumentStream::beginBlock() {
  countCall();
  endProvided();
  if (isContentsDue_) {
    writeContents();
  }
}

// The contents come after a heading that the document begins with, which is its title.
void DocumentStream::writeContents() {
  if (plan_.beginsWithTitle && heading_ == 0) {
    return;
  }
  isContentsDue_ = false;
  check(scrivalen_begin_contents(document_));
  for (std::size_t i = plan_.beginsWithTitle ? 1 : 0; i < plan_.headings.size(); ++i) {
    const Heading& heading = plan_.headings[i];
    if (!heading.text.empty()) {
      check(scrivalen_contents_item(document_, heading.level, heading.id.c_str(), heading.text.data(),
                                    heading.text.size()));
    }
  }
  check(scrivalen_end(document_));
}

void DocumentStream::beginInline() {
  countCall();
  if (!parts_.empty() && parts_.back().part == Part::Item && parts_.back().form == Form::Omitted) {
    check(scrivalen_begin_paragraph(document_, nullptr));
    parts_.push_back({Part::Block, Form::Provided});
    ++written_;
  }
}

void DocumentStream::endProvided() {
  if (!parts_.empty() && parts_.back().form == Form::Provided) {
    parts_.pop_back();
    --written_;
    check(scrivalen_end(document_));
  }
}

void DocumentStream::open(Part part, scrivalen_status status) {
  check(status);
  parts_.push_back({part, Form::Written});
  ++written_;
}

// Whether a part that begins is nested too deeply to be written. The items of a list that is omitted are, too.
bool DocumentStream::omits(Part part) {
  const bool isTooDeep = part == Part::Item ? parts_.back().form == Form::Omitted
                                            : written_ >= (part == Part::Container ? kDeepestContainer : kDeepestSpan);
  if (!isTooDeep) {
    return false;
  }
  parts_.push_back({part, Form::Omitted});
  if (part == Part::Container) {
    warnOfInput(kTooDeep);
  }
  return true;
}

bool DocumentStream::isIn(Part part) const {
  return std::any_of(parts_.begin(), parts_.end(), [part](const OpenPart& open) { return open.part == part; });
}

void DocumentStream::beginHeading(int level, const std::string& id) {
  beginBlock();
  const bool isPlanned = id.empty() && heading_ < plan_.headings.size();
  const std::string& place = isPlanned ? plan_.headings[heading_].id : id;
  ++heading_;
  open(Part::Heading, scrivalen_begin_heading(document_, level, place.c_str(), nullptr));
}

void DocumentStream::beginParagraph() {
  beginBlock();
  open(Part::Block, scrivalen_begin_paragraph(document_, nullptr));
}

void DocumentStream::beginQuote() {
  beginBlock();
  if (!omits(Part::Container)) {
    open(Part::Container, scrivalen_begin_quote(document_));
  }
}

void DocumentStream::beginList(bool ordered, int first, bool tight) {
  beginBlock();
  if (!omits(Part::Container)) {
    open(Part::Container, scrivalen_begin_list(document_, ordered ? 1 : 0, first, tight ? 1 : 0));
  }
}

void DocumentStream::beginItem(Task task) {
  countCall();
  if (!omits(Part::Item)) {
    open(Part::Item, scrivalen_begin_item(document_, taskOf(task)));
  }
}

void DocumentStream::beginCode(const std::string& language) {
  beginBlock();
  open(Part::Block, scrivalen_begin_code(document_, language.c_str()));
}

void DocumentStream::beginTable() {
  beginBlock();
  open(Part::Container, scrivalen_begin_table(document_, nullptr, 0, nullptr));
}

void DocumentStream::beginRow(bool header) {
  countCall();
  open(Part::Row, scrivalen_begin_row(document_, header ? 1 : 0));
}

void DocumentStream::beginCell(Align align) {
  countCall();
  scrivalen_cell_style style{};
  style.size = sizeof style;
  style.align = alignOf(align);
  open(Part::Cell, scrivalen_begin_cell(document_, &style));
}

void DocumentStream::beginSpan(Span span) {
  beginInline();
  if (!omits(Part::Span)) {
    open(Part::Span, scrivalen_begin_span(document_, spanKind(span)));
  }
}

void DocumentStream::beginLink(const std::string& address, const std::string& title) {
  beginInline();
  if (scrivalen::runsProgram(address, scrivalen::AddressUse::Link)) {
    raw("<a href=\"" + inAttribute(address) + "\">");
    parts_.push_back({Part::Link, Form::MarkupOfLink});
  } else if (!omits(Part::Link)) {
    // Places in the document have their own letters, which addresses in Markdown may encode.
    const std::string place = address.starts_with('#') ? percentDecoded(address) : address;
    open(Part::Link, scrivalen_begin_link(document_, place.c_str(), title.c_str()));
  }
}

void DocumentStream::end() {
  countCall();
  endProvided();
  const OpenPart part = parts_.back();
  parts_.pop_back();
  if (part.form == Form::MarkupOfLink) {
    return raw("</a>");
  }
  if (part.form == Form::Omitted) {
    return;
  }
  --written_;
  check(scrivalen_end(document_));
  const bool isBlock = part.part == Part::Heading || part.part == Part::Block || part.part == Part::Row;
  if (isBlock && ++blocks_ % kBlocksOfProgress == 0) {
    plan_.progress(blocks_);
  }
  if (part.part == Part::Heading && isContentsDue_) {
    writeContents();
  }
}

void DocumentStream::text(std::string_view text) {
  beginInline();
  check(scrivalen_text(document_, text.data(), text.size()));
}

void DocumentStream::cell(std::string_view text) {
  countCall();
  check(scrivalen_cell(document_, text.data(), text.size()));
}

void DocumentStream::describeColumn(std::size_t index, const TableColumn& column) {
  scrivalen_column description{};
  description.size = sizeof description;
  description.type = column.isText ? SCRIVALEN_TEXT : SCRIVALEN_AUTO;
  description.align = alignOf(column.align);
  description.width = column.width;
  check(scrivalen_describe_column(document_, index, &description));
}

void DocumentStream::numberCell(std::int64_t digits, int decimals) {
  countCall();
  check(scrivalen_cell_decimal(document_, digits, decimals));
}

void DocumentStream::dateCell(std::int32_t days) {
  countCall();
  check(scrivalen_cell_date(document_, days));
}

void DocumentStream::rule() {
  beginBlock();
  check(scrivalen_rule(document_));
}

void DocumentStream::image(const std::string& address, const std::string& alternative) {
  beginInline();
  if (scrivalen::runsProgram(address, scrivalen::AddressUse::Image)) {
    return raw("<img src=\"" + inAttribute(address) + "\" alt=\"" + inAttribute(alternative) + "\">");
  }
  if (isDataAddress(address)) {
    const std::string data = dataOf(address).value_or(std::string());
    return check(scrivalen_image(document_, data.data(), data.size(), alternative.c_str(), 0));
  }
  const PictureSource source = pictureSource(plan_.folder, address);
  switch (source.place) {
    case PictureSource::Place::File:
      return check(scrivalen_image_file(document_, source.path.c_str(), alternative.c_str(), 0));
    case PictureSource::Place::Elsewhere:
      warnOfInput("pictures on other computers are links");
      return link(address, alternative.empty() ? address : alternative);
    case PictureSource::Place::Outside:
      return leaveOut("the picture '" + address + "' is not in the " +
                          (plan_.folder.empty() ? "current folder" : "folder of the input") + " or below it",
                      alternative);
    case PictureSource::Place::Nowhere: return leaveOut("a picture has no address", alternative);
  }
}

void DocumentStream::leaveOut(const std::string& reason, const std::string& alternative) {
  warnOfInput(reason + (alternative.empty() ? "; nothing takes its place" : "; its text takes its place"));
  check(scrivalen_text(document_, alternative.data(), alternative.size()));
}

void DocumentStream::link(const std::string& address, std::string_view text) {
  const bool isInLink = isIn(Part::Link);
  if (!isInLink) {
    check(scrivalen_begin_link(document_, address.c_str(), nullptr));
  }
  check(scrivalen_text(document_, text.data(), text.size()));
  if (!isInLink) {
    check(scrivalen_end(document_));
  }
}

void DocumentStream::markup(std::string_view html) {
  if (parts_.empty() || parts_.back().part == Part::Container || parts_.back().part == Part::Item) {
    beginBlock();
  } else {
    beginInline();
  }
  raw(std::string(html));
}

// Markdown may hold HTML as well; GFM 0.29, 4.6 and 6.10.
void DocumentStream::raw(const std::string& html) {
  check(scrivalen_raw(document_, "html", html.data(), html.size()));
  check(scrivalen_raw(document_, "markdown", html.data(), html.size()));
}

std::vector<std::string> DocumentStream::warnings() const {
  std::vector<std::string> list;
  for (const auto& [text, count] : warnings_) {
    list.push_back(text + (count > 1 ? " (" + std::to_string(count) + ")" : ""));
  }
  return list;
}

}  // namespace scrivalen::command

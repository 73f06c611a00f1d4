#include "formats/docx/text/inline_writer.h"

#include "formats/docx/parts/relations.h"
#include "formats/docx/text/drawing.h"
#include "formats/docx/text/fields.h"
#include "text/address.h"

#include <algorithm>
#include <cmath>

namespace scrivalen::document::docx {
namespace {

constexpr int kMostHalfPoints = 3276;  // of a text in Word

int halfPointsOf(double points) {
  return static_cast<int>(std::lround(std::clamp(2 * points, 2.0, double{kMostHalfPoints})));
}

void addSpan(RunStyle& style, Span span) {
  switch (span) {
    case Span::Strong: style.bold = true; return;
    case Span::Emphasis: style.italic = true; return;
    case Span::Code: style.code = true; return;
    case Span::Deleted: style.deleted = true; return;
    case Span::Underlined: style.underlined = true; return;
    case Span::Superscript: style.script = Script::Superscript; return;
    case Span::Subscript: style.script = Script::Subscript; return;
    case Span::None: return;
  }
}

void addColors(RunStyle& style, const Event& event) {
  style.color = event.color ? event.color : style.color;
  style.background = event.background ? event.background : style.background;
}

}  // namespace

void InlineWriter::beginText(const RunStyle& style, bool isRightToLeft) {
  styles_.assign(1, style);
  runs_.setStyle(style);
  isRightToLeft_ = isRightToLeft;
}

void InlineWriter::renumberPictures(std::string& markup) { renumberDrawings(markup, drawings_); }

void InlineWriter::write(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return writeText(event.text);
    case EventKind::BeginSpan:
    case EventKind::BeginColored:
    case EventKind::BeginSized:
    case EventKind::BeginLanguage: return beginStyle(event);
    case EventKind::EndSpan:
    case EventKind::EndColored:
    case EventKind::EndSized:
    case EventKind::EndLanguage: return endStyle();
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return endLink();
    case EventKind::Anchor: return anchor(event.id);
    case EventKind::Image: return image(event);
    default: return;
  }
}

void InlineWriter::beginStyle(const Event& event) {
  RunStyle style = styles_.back();
  switch (event.kind) {
    case EventKind::BeginSpan: addSpan(style, event.span); break;
    case EventKind::BeginColored: addColors(style, event); break;
    case EventKind::BeginSized: style.halfPoints = halfPointsOf(event.points); break;
    case EventKind::BeginLanguage: style.language = event.text; break;
    default: style.link = link_ != OpenLink::None; break;
  }
  styles_.push_back(style);
  runs_.setStyle(style);
}

void InlineWriter::endStyle() {
  styles_.pop_back();
  runs_.setStyle(styles_.back());
}

void InlineWriter::beginLink(const Event& event) {
  const bool isSafe = !runsProgram(event.address, AddressUse::Link);
  if (!isSafe) {
    warnings_.add(WarningCode::SomethingLeftOut, "the address of a link that may run a program");
  }
  if (!isSafe || event.address.empty() || event.address == "#") {
    link_ = OpenLink::None;
  } else if (event.address.starts_with('#')) {
    link_ = OpenLink::Place;
    beginPlaceLink(out(), event.address.substr(1), linkTitle(event.title, warnings_));
  } else {
    link_ = OpenLink::Address;
    beginAddressField(out(), event.address, linkTitle(event.title, warnings_));
  }
  beginStyle(event);
}

void InlineWriter::endLink() {
  if (link_ == OpenLink::Address) {
    endAddressField(out());
  } else if (link_ == OpenLink::Place) {
    endPlaceLink(out());
  }
  link_ = OpenLink::None;
  endStyle();
}

void InlineWriter::writePlace(std::string_view id) { writeBookmark(out(), id, places_++); }

void InlineWriter::writePageLink(const Event& item) {
  beginPlaceLink(out(), item.id, {});
  writeText(item.text);
  writeText("\t");
  writePageReference(out(), item.id);
  endPlaceLink(out());
}

void InlineWriter::image(const Event& event) {
  if (event.picture == nullptr) {
    return event.text.empty() ? void() : writeText(event.text);
  }
  const std::string relation = pictureRelation(pictures_.add(*event.picture));
  runs_.begin(out());
  writeDrawing(out(), *event.picture, {relation, ++drawings_, event.text, event.points}, room());
  RunWriter::end(out());
}

}  // namespace scrivalen::document::docx

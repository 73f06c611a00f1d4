#include "formats/pdf/typeset/blocks/inline_collector.h"

#include "document/pictures/picture.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace scrivalen::typeset {
namespace {

using document::Event;
using document::EventKind;
using document::Span;

constexpr Rgb kLinkColor = 0x0B4F9E;
constexpr Rgb kCodeSpanShade = 0xF0F0F0;

// In thousandths of the size around them.
constexpr int kSmallSize = 650;
constexpr int kSuperscriptRise = 350;
constexpr int kSubscriptDrop = 150;

constexpr unsigned kBold = 2;
constexpr unsigned kItalic = 1;

// In points. No page is as long, and products of two lengths up to this one do not overflow.
constexpr double kLongestPicture = 1'000'000;

// How much larger than its own a picture is asked to be. A width of 0 asks for its own.
double scaleOf(const document::Picture& picture, double width) {
  const double asked = width > 0 ? width / picture.widthPt() : 1;
  return std::min({asked, kLongestPicture / picture.widthPt(), kLongestPicture / picture.heightPt()});
}

}  // namespace

void InlineCollector::begin(const TextStyle& style, Length largestSize) {
  largestSize_ = largestSize;
  styles_.assign(1, style);
  for (StyledSpan& span : text_.spans) {
    span.style = style;
  }
}

StyledText InlineCollector::take() { return std::exchange(text_, {}); }

void InlineCollector::write(const Event& event) {
  TextStyle style = styles_.back();
  switch (event.kind) {
    case EventKind::Text: return add(event.text);
    case EventKind::Image: return addPicture(event);
    case EventKind::Anchor: return addAnchor(event.id);
    case EventKind::BeginSpan: return beginSpan(event.span);
    case EventKind::BeginColored:
      style.color = event.color.value_or(style.color);
      style.background = event.background ? event.background : style.background;
      return push(style);
    case EventKind::BeginSized: style.size = std::min(lengthOf(event.points), largestSize_); return push(style);
    case EventKind::BeginLink: return beginLink(event.address);
    case EventKind::BeginLanguage:
      text_.languages.emplace_back(event.text);
      style.language = static_cast<int>(text_.languages.size()) - 1;
      return push(style);
    case EventKind::EndSpan:
    case EventKind::EndColored:
    case EventKind::EndSized:
    case EventKind::EndLink:
    case EventKind::EndLanguage: return styles_.pop_back();
    default: return;
  }
}

std::optional<int> InlineCollector::objectOf(const document::Picture& picture) {
  if (pictures_ == nullptr) {
    return 0;
  }
  std::string reason;
  const auto object = pictures_->write(picture, reason);
  if (!object) {
    warnings_->add(document::WarningCode::SomethingLeftOut, reason + " Its text takes its place.");
  }
  return object;
}

void InlineCollector::addPicture(const Event& event) {
  const auto object = event.picture == nullptr ? std::nullopt : objectOf(*event.picture);
  if (!object) {
    return add(event.text);
  }
  const document::Picture& picture = *event.picture;
  const double scale = scaleOf(picture, event.points);
  const auto scaledLength = [scale](double points) { return std::max<Length>(lengthOf(points * scale), 1); };
  text_.addPicture({0, scaledLength(picture.widthPt()), scaledLength(picture.heightPt()), *object,
                    picture.orientation(), std::string(event.text)},
                   styles_.back());
}

// A link that leads nowhere is text.
void InlineCollector::beginLink(std::string_view address) {
  TextStyle style = styles_.back();
  if (!address.empty()) {
    text_.links.push_back({std::string(address), text_.text.size()});
    style.link = static_cast<int>(text_.links.size()) - 1;
    style.color = kLinkColor;
  }
  push(style);
}

void InlineCollector::beginSpan(Span span) {
  TextStyle style = styles_.back();
  switch (span) {
    case Span::Strong: style.font |= kBold; break;
    case Span::Emphasis: style.font ^= kItalic; break;
    case Span::Code:
      style.font = static_cast<FontId>(fontOf(Family::Mono, false, false) | (style.font & (kBold | kItalic)));
      style.size = scaled(kCodeSpanSize, style.size);
      style.background = kCodeSpanShade;
      style.isCode = true;
      break;
    case Span::Deleted: style.isDeleted = true; break;
    case Span::Underlined: style.isUnderlined = true; break;
    case Span::Superscript:
      style.rise += scaled(kSuperscriptRise, style.size);
      style.size = scaled(kSmallSize, style.size);
      break;
    case Span::Subscript:
      style.rise -= scaled(kSubscriptDrop, style.size);
      style.size = scaled(kSmallSize, style.size);
      break;
    case Span::None: break;
  }
  push(style);
}

}  // namespace scrivalen::typeset

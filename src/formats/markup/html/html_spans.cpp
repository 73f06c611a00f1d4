#include "formats/markup/html/html_spans.h"

#include "document/language.h"
#include "document/pictures/picture.h"
#include "formats/markup/html/html_links.h"
#include "text/address.h"

#include <algorithm>
#include <cmath>

namespace scrivalen::document {
namespace {

std::string_view elementOf(Span span) {
  switch (span) {
    case Span::Strong: return "strong";
    case Span::Emphasis: return "em";
    case Span::Code: return "code";
    case Span::Deleted: return "del";
    case Span::Underlined: return "u";
    case Span::Superscript: return "sup";
    case Span::Subscript: return "sub";
    case Span::None: break;
  }
  return "span";
}

}  // namespace

void HtmlSpans::write(const Event& event) {
  switch (event.kind) {
    case EventKind::Text: return markup_.putText(event.text);
    case EventKind::BeginSpan: return begin(event.span);
    case EventKind::EndSpan: return markup_.putEnd(elementOf(event.span));
    case EventKind::BeginColored: return beginColored(event);
    case EventKind::BeginSized: return beginSized(event);
    case EventKind::EndColored:
    case EventKind::EndSized: return markup_.put("</span>");
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return endLink();
    case EventKind::BeginLanguage: return beginLanguage(event);
    case EventKind::EndLanguage: return endLanguage();
    case EventKind::Anchor: return anchor(event);
    case EventKind::Image: return image(event);
    default: return;
  }
}

void HtmlSpans::begin(Span span) {
  if (span == Span::Code && markup_.isRightToLeft()) {
    return markup_.put("<code dir=\"ltr\">");
  }
  markup_.putStart(elementOf(span), {}, Align::Auto);
}

void HtmlSpans::beginColored(const Event& colored) {
  std::string style;
  appendColors(style, colored.color, colored.background);
  tag_ = "<span";
  appendStyle(tag_, style);
  markup_.put(tag_.append(">"));
}

void HtmlSpans::beginSized(const Event& sized) {
  tag_ = "<span style=\"font-size:";
  appendNumber(tag_, sized.points, 2);
  markup_.put(tag_.append("pt\">"));
}

void HtmlSpans::beginLink(const Event& link) {
  isLinkOpen_ = !link.address.empty() && !runsProgram(link.address, AddressUse::Link);
  if (!isLinkOpen_) {
    if (!link.address.empty()) {
      warnings_.add(WarningCode::SomethingLeftOut, "the address of a link that may run a program");
    }
    return;
  }
  markup_.put("<a");
  markup_.putAttribute("href", addressOf(link.address));
  if (!link.title.empty()) {
    markup_.putAttribute("title", link.title);
  }
  markup_.put(">");
}

std::string HtmlSpans::addressOf(std::string_view address) const {
  return set_ && address.starts_with('#') ? set_->addressOf(address.substr(1)) : htmlAddress(address);
}

void HtmlSpans::endLink() {
  markup_.put(isLinkOpen_ ? "</a>" : "");
  isLinkOpen_ = false;
}

void HtmlSpans::beginLanguage(const Event& language) {
  const bool isOuterRightToLeft = rightToLeft_.empty() ? markup_.isRightToLeft() : rightToLeft_.back();
  rightToLeft_.push_back(isRightToLeft(language.text));
  markup_.put("<span");
  markup_.putAttribute("lang", language.text);
  if (rightToLeft_.back() != isOuterRightToLeft) {
    markup_.putAttribute("dir", rightToLeft_.back() ? "rtl" : "ltr");
  }
  markup_.put(">");
}

void HtmlSpans::endLanguage() {
  rightToLeft_.pop_back();
  markup_.put("</span>");
}

// No <a>: an anchor may be inside a link.
void HtmlSpans::anchor(const Event& anchor) {
  if (!anchor.id.empty()) {
    markup_.putStart("span", anchor.id, Align::Auto);
    markup_.put("</span>");
  }
}

void HtmlSpans::image(const Event& image) {
  constexpr double kPixelsPerPoint = 96.0 / 72;
  if (image.picture == nullptr) {
    return markup_.putText(image.text);
  }
  markup_.put("<img");
  putSource(*image.picture);
  markup_.putAttribute("alt", image.text);
  const double width = (image.points > 0 ? image.points : image.picture->widthPt()) * kPixelsPerPoint;
  tag_ = " width=\"";
  appendNumber(tag_, std::max(1.0, std::round(width)), 0);
  markup_.put(tag_.append("\">"));
}

void HtmlSpans::putSource(const Picture& picture) {
  if (set_) {
    return markup_.putAttribute("src", set_->addressOf(picture));
  }
  markup_.put(" src=\"data:");
  markup_.put(picture.mediaType());
  markup_.put(";base64,");
  markup_.putData(picture.bytes());
  markup_.put("\"");
}

}  // namespace scrivalen::document

#include "formats/markup/xml_spans.h"

#include "document/pictures/base64.h"
#include "document/pictures/picture.h"
#include "text/address.h"

namespace scrivalen::document {
namespace {

std::string_view elementOfSpan(Span span) {
  switch (span) {
    case Span::Strong: return "strong";
    case Span::Emphasis: return "emphasis";
    case Span::Code: return "inlinecode";
    case Span::Deleted: return "deleted";
    case Span::Underlined: return "underlined";
    case Span::Superscript: return "superscript";
    case Span::Subscript: return "subscript";
    case Span::None: break;
  }
  return "span";
}

}  // namespace

void XmlSpans::write(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginSpan: return markup_.putElement(elementOfSpan(event.span));
    case EventKind::EndSpan: return markup_.putEnd(elementOfSpan(event.span));
    case EventKind::BeginColored: return beginColored(event);
    case EventKind::EndColored: return markup_.putEnd("colored");
    case EventKind::BeginSized: return beginSized(event);
    case EventKind::EndSized: return markup_.putEnd("sized");
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return markup_.putEnd("link");
    case EventKind::BeginLanguage: return beginLanguage(event);
    case EventKind::EndLanguage: return markup_.putEnd("lang");
    case EventKind::Anchor: return putAnchor(event);
    case EventKind::Image: return putImage(event);
    case EventKind::Raw: return markup_.put(event.text);
    default: return;
  }
}

void XmlSpans::beginColored(const Event& colored) {
  markup_.putStart("colored");
  markup_.putColors(colored.color, colored.background);
  markup_.put(">");
}

void XmlSpans::beginSized(const Event& sized) {
  markup_.putStart("sized");
  markup_.putAttribute("points", sized.points);
  markup_.put(">");
}

void XmlSpans::beginLink(const Event& link) {
  const bool isSafe = !runsProgram(link.address, AddressUse::Link);
  if (!isSafe) {
    warnings_.add(WarningCode::SomethingLeftOut, "the address of a link that may run a program");
  }
  markup_.putStart("link");
  markup_.putAttribute("address", isSafe ? link.address : std::string_view());
  markup_.putAttribute("title", link.title);
  markup_.put(">");
}

void XmlSpans::beginLanguage(const Event& language) {
  markup_.putStart("lang");
  markup_.putAttribute("tag", language.text);
  markup_.put(">");
}

void XmlSpans::putAnchor(const Event& anchor) {
  markup_.putStart("anchor");
  markup_.putAttribute("id", anchor.id);
  markup_.put("/>");
}

void XmlSpans::putImage(const Event& image) {
  markup_.putStart("image");
  markup_.putAttribute("alternative", image.text);
  if (image.points > 0) {
    markup_.putAttribute("width", image.points);
  }
  if (image.picture == nullptr) {
    return markup_.put("/>");
  }
  markup_.putAttribute("media", image.picture->mediaType());
  markup_.put(">");
  putBase64(markup_.out(), image.picture->bytes());
  markup_.putEnd("image");
}

}  // namespace scrivalen::document

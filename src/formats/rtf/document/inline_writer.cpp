#include "formats/rtf/document/inline_writer.h"

#include "document/word/bookmark_name.h"
#include "formats/rtf/document/escape.h"
#include "formats/rtf/document/picture.h"
#include "formats/rtf/document/prolog/style_sheet.h"
#include "text/address.h"
#include "text/languages/windows_language.h"

#include <algorithm>
#include <cmath>

namespace scrivalen::document::rtf {
namespace {

constexpr std::string_view kLinkEnd = "}}}";

constexpr int kNoLanguage = 1024;  // its spelling is not checked

int languageNumber(std::string_view tag) {
  const WindowsLanguage* const language = windowsLanguageOf(tag);
  return language ? language->identifier : kNoLanguage;
}

int halfPointsOf(double points) { return static_cast<int>(std::max(1L, std::lround(2 * points))); }

// Three closing braces end the link.
void beginLinkField(OutputBuffer& out, std::string_view address, std::string_view title) {
  if (address.empty() || address == "#") {
    return put(out, "{{{");
  }
  put(out, "{\\field{\\*\\fldinst{HYPERLINK ");
  if (address.starts_with('#')) {
    put(out, "\\\\l \"");
    writeArgument(out, bookmarkName(address.substr(1)));
  } else {
    put(out, "\"");
    writeArgument(out, address, "%22");
  }
  out.put('"');
  if (!title.empty()) {
    put(out, " \\\\o \"");
    writeArgument(out, title);
    // The frame in which addresses open anyway; a reader takes the last argument for it, whatever that is.
    put(out, "\" \\\\t \"_self\"");
  }
  put(out, "}}{\\fldrslt{");
}

}  // namespace

void InlineWriter::beginText(const RunStyle& style, bool isRightToLeft) {
  styles_.assign(1, style);
  isRightToLeft_ = isRightToLeft;
}

void InlineWriter::write(const Event& event) {
  beginStyle(event);
  switch (event.kind) {
    case EventKind::Text: return writeText(event.text);
    case EventKind::BeginSpan: return beginSpan(event.span);
    case EventKind::BeginColored: return beginColored(event);
    case EventKind::BeginSized: return beginSized(event.points);
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::BeginLanguage: return beginLanguage(event.text);
    case EventKind::EndSpan:
    case EventKind::EndColored:
    case EventKind::EndSized:
    case EventKind::EndLanguage: endStyle(); return out().put('}');
    case EventKind::EndLink: endStyle(); return put(out(), kLinkEnd);
    case EventKind::Anchor: return anchor(event.id);
    case EventKind::Image: return image(event);
    case EventKind::Raw:
      if (event.address == "rtf") {
        put(out(), event.text);
      }
      return;
    default: return;
  }
}

void InlineWriter::beginStyle(const Event& event) {
  RunStyle style = styles_.back();
  switch (event.kind) {
    case EventKind::BeginSpan:
      style.bold = style.bold || event.span == Span::Strong;
      style.italic = style.italic || event.span == Span::Emphasis;
      style.font = event.span == Span::Code ? kMonoFont : style.font;
      break;
    case EventKind::BeginSized: style.halfPoints = halfPointsOf(event.points); break;
    case EventKind::BeginLanguage: style.language = languageNumber(event.text); break;
    case EventKind::BeginColored:
    case EventKind::BeginLink: break;
    default: return;
  }
  styles_.push_back(style);
}

void InlineWriter::endStyle() { styles_.pop_back(); }

void InlineWriter::beginSpan(Span span) {
  constexpr std::string_view kWords[] = {"{",          "{\\b ",  "{\\i ",     "{\\noproof\\f2 ",
                                         "{\\strike ", "{\\ul ", "{\\super ", "{\\sub "};
  put(out(), kWords[static_cast<int>(span)]);
}

// Word reads \chcbpat, other readers \cb.
void InlineWriter::beginColored(const Event& event) {
  out().put('{');
  if (event.color) {
    put(out(), "\\cf", colors_.indexOf(*event.color));
  }
  if (event.background) {
    const int color = colors_.indexOf(*event.background);
    put(out(), "\\chshdng0\\chcbpat", color);
    put(out(), "\\cb", color);
  }
  if (event.color || event.background) {
    out().put(' ');
  }
}

void InlineWriter::beginSized(double points) {
  put(out(), "{\\fs", halfPointsOf(points));
  out().put(' ');
}

void InlineWriter::beginLink(const Event& event) {
  const bool isSafe = !runsProgram(event.address, AddressUse::Link);
  if (!isSafe) {
    warnings_.add(WarningCode::SomethingLeftOut, "the address of a link that may run a program");
  }
  const std::string_view address = isSafe ? event.address : std::string_view();
  beginLinkField(out(), address, linkTitle(event.title, warnings_));
  if (!address.empty()) {
    put(out(), "\\ul\\cf", colors_.indexOf(kLinkColor));
    out().put(' ');
  }
}

void InlineWriter::beginLanguage(std::string_view tag) {
  put(out(), "{\\lang", languageNumber(tag));
  out().put(' ');
}

void InlineWriter::writePlace(std::string_view id) {
  writeBookmarkBegin(out(), id);
  writeBookmarkEnd(out(), id);
}

void InlineWriter::writePageLink(const Event& item) {
  beginLinkField(out(), std::string("#").append(item.id), {});
  writeText(item.text);
  if (isRightToLeft_) {
    beginRightToLeftRun(out(), styles_.back());
  }
  put(out(), "\\tab {\\field\\flddirty{\\*\\fldinst{PAGEREF ");
  writeArgument(out(), bookmarkName(item.id));
  put(out(), " \\\\h}}{\\fldrslt }}");
  put(out(), isRightToLeft_ ? "}" : "");
  put(out(), kLinkEnd);
}

void InlineWriter::image(const Event& event) {
  if (event.picture == nullptr) {
    return writeText(event.text);
  }
  warnOfTurn(*event.picture, warnings_);
  writePicture(out(), *event.picture, event.text, event.points, room());
}

}  // namespace scrivalen::document::rtf

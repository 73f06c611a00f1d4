// Blocks, spans and text.

#include "api/call.h"
#include "api/colors.h"
#include "document/pictures/picture_file.h"

#include <algorithm>
#include <array>

namespace {

using namespace scrivalen::api;
using scrivalen::Rgb;
using scrivalen::document::Align;
using scrivalen::document::Picture;
using scrivalen::document::Span;
using scrivalen::document::Task;

static_assert(static_cast<int>(Align::Auto) == SCRIVALEN_ALIGN_AUTO);
static_assert(static_cast<int>(Align::Left) == SCRIVALEN_LEFT);
static_assert(static_cast<int>(Align::Center) == SCRIVALEN_CENTER);
static_assert(static_cast<int>(Align::Right) == SCRIVALEN_RIGHT);
static_assert(static_cast<int>(Align::Justify) == SCRIVALEN_JUSTIFY);
static_assert(static_cast<int>(Span::Strong) == SCRIVALEN_STRONG);
static_assert(static_cast<int>(Span::Emphasis) == SCRIVALEN_EMPHASIS);
static_assert(static_cast<int>(Span::Code) == SCRIVALEN_CODE);
static_assert(static_cast<int>(Span::Deleted) == SCRIVALEN_DELETED);
static_assert(static_cast<int>(Span::Underlined) == SCRIVALEN_UNDERLINED);
static_assert(static_cast<int>(Span::Superscript) == SCRIVALEN_SUPERSCRIPT);
static_assert(static_cast<int>(Span::Subscript) == SCRIVALEN_SUBSCRIPT);

// The formats whose markup a host may write, whether or not there is a writer for them.
constexpr std::array<std::string_view, 4> kMarkups{"html", "xml", "rtf", "markdown"};

// Calls @p begin with the alignment of a style, which may be null.
template <typename Begin>
Status withStyle(Document& document, const scrivalen_paragraph_style* given, Begin begin) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  scrivalen_paragraph_style style{};
  if (given && !readStruct(given, style)) {
    return document.misuse(kWrongSize);
  }
  const auto align = enumOf(style.align, Align::Justify);
  return align ? begin(*align) : document.misuse(kUnknownAlignment);
}

Status beginItem(Document& document, int given) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  const auto task = enumOf(given, Task::Done);
  return task ? document.beginItem(*task) : document.misuse("the task of an item is 0, 1 or 2");
}

Status beginSpan(Document& document, int kind) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  const auto span = enumOf(kind, Span::Subscript);
  return span && *span != Span::None ? document.beginSpan(*span) : document.misuse("the kind of a span is 1 to 7");
}

Status beginColored(Document& document, const char* color, const char* background) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  std::optional<Rgb> foregroundColor;
  std::optional<Rgb> backgroundColor;
  if (!readColor(color, foregroundColor)) {
    return document.misuse(unknownColor(color));
  }
  if (!readColor(background, backgroundColor)) {
    return document.misuse(unknownColor(background));
  }
  return document.beginColored(foregroundColor, backgroundColor);
}

// Why a picture is left out, and what is in its place.
std::string leftOut(const std::string& what, std::string reason, std::string_view alternative) {
  constexpr std::string_view kSubject = "The picture ";
  if (reason.starts_with(kSubject)) {
    reason.replace(0, kSubject.size(), "it ");
    reason.erase(reason.find_last_not_of('.') + 1);
  }
  return "cannot use " + what + ": " + reason +
         (alternative.empty() ? "; nothing takes its place" : "; its text takes its place");
}

Status image(Document& document, const void* data, std::size_t size, std::string_view alternative, double width) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  if (!data && size > 0) {
    return document.misuse("the bytes of a picture are null");
  }
  if (const Status status = document.readyForImage(width); status != Status::Ok) {
    return status;
  }
  std::string reason;
  const auto picture = Picture::read({static_cast<const char*>(data), size}, reason);
  return document.image(picture, alternative, width, leftOut("a picture", std::move(reason), alternative));
}

Status imageFile(Document& document, std::string_view path, std::string_view alternative, double width) {
  if (const Status status = document.readyForImage(width); status != Status::Ok) {
    return status;
  }
  std::string reason;
  const auto picture = scrivalen::document::readPictureFile(path, reason);
  return document.image(picture, alternative, width,
                        leftOut("the picture " + quoted(path), std::move(reason), alternative));
}

Status raw(Document& document, std::string_view format, std::string_view markup) {
  if (const Status status = document.ready(); status != Status::Ok) {
    return status;
  }
  if (std::find(kMarkups.begin(), kMarkups.end(), format) == kMarkups.end()) {
    return document.refuse(Status::UnknownFormat, "there is no markup of the format " + quoted(format) +
                                                      "; html, xml, rtf and markdown have it");
  }
  return document.raw(format, markup);
}

}  // namespace

scrivalen_status scrivalen_begin_section(scrivalen_document* document, const char* name, const char* id) {
  return call(document, [&](Document& to) { return to.beginSection(textOf(name), textOf(id)); });
}

scrivalen_status scrivalen_begin_heading(scrivalen_document* document, int level, const char* id,
                                         const scrivalen_paragraph_style* style) {
  return call(document, [&](Document& to) {
    return withStyle(to, style, [&](Align align) { return to.beginHeading(level, textOf(id), align); });
  });
}

scrivalen_status scrivalen_begin_paragraph(scrivalen_document* document, const scrivalen_paragraph_style* style) {
  return call(document, [&](Document& to) {
    return withStyle(to, style, [&](Align align) { return to.beginParagraph(align); });
  });
}

scrivalen_status scrivalen_begin_quote(scrivalen_document* document) {
  return call(document, [](Document& to) { return to.beginQuote(); });
}

scrivalen_status scrivalen_begin_list(scrivalen_document* document, int ordered, int first, int tight) {
  return call(document, [&](Document& to) { return to.beginList(ordered != 0, first, tight != 0); });
}

scrivalen_status scrivalen_begin_item(scrivalen_document* document, int task) {
  return call(document, [&](Document& to) { return beginItem(to, task); });
}

scrivalen_status scrivalen_begin_code(scrivalen_document* document, const char* language) {
  return call(document, [&](Document& to) { return to.beginCode(textOf(language)); });
}

scrivalen_status scrivalen_begin_span(scrivalen_document* document, int kind) {
  return call(document, [&](Document& to) { return beginSpan(to, kind); });
}

scrivalen_status scrivalen_begin_colored(scrivalen_document* document, const char* color, const char* background) {
  return call(document, [&](Document& to) { return beginColored(to, color, background); });
}

scrivalen_status scrivalen_begin_sized(scrivalen_document* document, double points) {
  return call(document, [&](Document& to) { return to.beginSized(points); });
}

scrivalen_status scrivalen_begin_link(scrivalen_document* document, const char* address, const char* title) {
  return call(document, [&](Document& to) { return to.beginLink(textOf(address), textOf(title)); });
}

scrivalen_status scrivalen_begin_language(scrivalen_document* document, const char* tag) {
  return call(document, [&](Document& to) { return to.beginLanguage(textOf(tag)); });
}

scrivalen_status scrivalen_end(scrivalen_document* document) {
  return call(document, [](Document& to) { return to.end(); });
}

scrivalen_status scrivalen_text(scrivalen_document* document, const char* text, size_t size) {
  return call(document, [&](Document& to) { return to.text(textOf(text, size)); });
}

scrivalen_status scrivalen_line_break(scrivalen_document* document) {
  return call(document, [](Document& to) { return to.lineBreak(); });
}

scrivalen_status scrivalen_page_break(scrivalen_document* document) {
  return call(document, [](Document& to) { return to.pageBreak(); });
}

scrivalen_status scrivalen_rule(scrivalen_document* document) {
  return call(document, [](Document& to) { return to.rule(); });
}

scrivalen_status scrivalen_anchor(scrivalen_document* document, const char* id) {
  return call(document, [&](Document& to) { return to.anchor(textOf(id)); });
}

scrivalen_status scrivalen_begin_contents(scrivalen_document* document) {
  return call(document, [](Document& to) { return to.beginContents(); });
}

scrivalen_status scrivalen_contents_item(scrivalen_document* document, int level, const char* id, const char* text,
                                         size_t size) {
  return call(document, [&](Document& to) { return to.contentsItem(level, textOf(id), textOf(text, size)); });
}

scrivalen_status scrivalen_image(scrivalen_document* document, const void* data, size_t size, const char* alternative,
                                 double width) {
  return call(document, [&](Document& to) { return image(to, data, size, textOf(alternative), width); });
}

scrivalen_status scrivalen_image_file(scrivalen_document* document, const char* path, const char* alternative,
                                      double width) {
  return call(document, [&](Document& to) { return imageFile(to, textOf(path), textOf(alternative), width); });
}

scrivalen_status scrivalen_raw(scrivalen_document* document, const char* format, const char* markup, size_t size) {
  return call(document, [&](Document& to) { return raw(to, textOf(format), textOf(markup, size)); });
}

scrivalen_status scrivalen_heading(scrivalen_document* document, int level, const char* text, size_t size) {
  return call(document, [&](Document& to) { return to.heading(level, textOf(text, size)); });
}

scrivalen_status scrivalen_paragraph(scrivalen_document* document, const char* text, size_t size) {
  return call(document, [&](Document& to) { return to.paragraph(textOf(text, size)); });
}

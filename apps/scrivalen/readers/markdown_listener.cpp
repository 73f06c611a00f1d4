#include "readers/markdown_listener.h"

#include "readers/entities.h"
#include "text/utf.h"

#include <optional>

namespace scrivalen::command {
namespace {

// A text is handed on once it is this long, so that a huge code block does not become a huge wide text.
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
      platform::appendWide(wide, part);
    }
  }
}

template <class Detail>
const Detail& as(const void* detail) {
  return *static_cast<const Detail*>(detail);
}

}  // namespace

void MarkdownListener::enterBlock(MD_BLOCKTYPE type, void* detail) {
  switch (type) {
    case MD_BLOCK_QUOTE: return put({.kind = EventKind::BeginQuote});
    case MD_BLOCK_UL: return put({.kind = EventKind::BeginList, .tight = as<MD_BLOCK_UL_DETAIL>(detail).is_tight != 0});
    case MD_BLOCK_OL: {
      const auto& list = as<MD_BLOCK_OL_DETAIL>(detail);
      const int start = static_cast<int>(list.start);
      return put({.kind = EventKind::BeginList, .ordered = true, .tight = list.is_tight != 0, .number = start});
    }
    case MD_BLOCK_LI: return put({.kind = EventKind::BeginItem, .task = taskOf(as<MD_BLOCK_LI_DETAIL>(detail))});
    case MD_BLOCK_HR: return put({.kind = EventKind::Rule});
    case MD_BLOCK_H: return beginHeading();
    case MD_BLOCK_CODE: return beginCodeBlock(as<MD_BLOCK_CODE_DETAIL>(detail));
    case MD_BLOCK_P: return put({.kind = EventKind::BeginParagraph});
    case MD_BLOCK_TABLE:
      columns_ = static_cast<int>(as<MD_BLOCK_TABLE_DETAIL>(detail).col_count);
      return put({.kind = EventKind::BeginTable});
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY: header_ = type == MD_BLOCK_THEAD; return;
    case MD_BLOCK_TR: return put({.kind = EventKind::BeginRow, .header = header_, .number = columns_});
    case MD_BLOCK_TH:
    case MD_BLOCK_TD:
      return put({.kind = EventKind::BeginCell,
                  .align = alignOf(as<MD_BLOCK_TD_DETAIL>(detail).align),
                  .header = type == MD_BLOCK_TH});
    case MD_BLOCK_HTML: return flush();
    case MD_BLOCK_DOC: return;
  }
}

void MarkdownListener::leaveBlock(MD_BLOCKTYPE type, void* detail) {
  switch (type) {
    case MD_BLOCK_QUOTE: return put({.kind = EventKind::EndQuote});
    case MD_BLOCK_UL:
    case MD_BLOCK_OL: return put({.kind = EventKind::EndList, .ordered = type == MD_BLOCK_OL});
    case MD_BLOCK_LI: return put({.kind = EventKind::EndItem});
    case MD_BLOCK_H: return endHeading(static_cast<int>(as<MD_BLOCK_H_DETAIL>(detail).level));
    case MD_BLOCK_CODE: return put({.kind = EventKind::EndCodeBlock});
    case MD_BLOCK_HTML: return flushMarkup(EventKind::MarkupBlock);
    case MD_BLOCK_P: return put({.kind = EventKind::EndParagraph});
    case MD_BLOCK_TABLE: return put({.kind = EventKind::EndTable});
    case MD_BLOCK_TR: return put({.kind = EventKind::EndRow, .header = header_});
    case MD_BLOCK_TH:
    case MD_BLOCK_TD: return put({.kind = EventKind::EndCell, .header = type == MD_BLOCK_TH});
    case MD_BLOCK_DOC:
    case MD_BLOCK_HR:
    case MD_BLOCK_THEAD:
    case MD_BLOCK_TBODY: return;
  }
}

void MarkdownListener::enterSpan(MD_SPANTYPE type, void* detail) {
  if (type == MD_SPAN_IMG) {
    return beginImage(as<MD_SPAN_IMG_DETAIL>(detail));
  }
  if (imageDepth_ > 0) {
    return;
  }
  if (type == MD_SPAN_A) {
    return beginLink(as<MD_SPAN_A_DETAIL>(detail));
  }
  if (const auto events = eventsOf(type)) {
    put({.kind = events->begin});
  }
}

void MarkdownListener::leaveSpan(MD_SPANTYPE type) {
  if (type == MD_SPAN_IMG) {
    return endImage();
  }
  if (imageDepth_ > 0) {
    return;
  }
  if (const auto events = eventsOf(type)) {
    put({.kind = events->end});
  }
}

void MarkdownListener::text(MD_TEXTTYPE type, std::string_view text) {
  if (type == MD_TEXT_HTML) {
    flushText();
    platform::appendWide(markup_, text);
    return;
  }
  flushMarkup(EventKind::Markup);
  if (type == MD_TEXT_ENTITY) {
    appendEntity(text_, text);
  } else if (type == MD_TEXT_SOFTBR || (type == MD_TEXT_BR && imageDepth_ > 0)) {
    text_ += L' ';
  } else if (type == MD_TEXT_BR) {
    put({.kind = EventKind::LineBreak});
    if (sink_ == &headingLog_) {
      headingText_ += L' ';
    }
  } else {
    platform::appendWide(text_, text);
  }
  if (text_.size() > kLongText) {
    flushText();
  }
}

void MarkdownListener::put(const Event& event) {
  flush();
  sink_->write(event);
}

void MarkdownListener::flush() {
  flushText();
  flushMarkup(EventKind::Markup);
}

void MarkdownListener::flushText() {
  if (text_.empty() || imageDepth_ > 0) {
    return;
  }
  if (sink_ == &headingLog_) {
    headingText_ += text_;
  }
  sink_->write({.kind = EventKind::Text, .text = text_});
  text_.clear();
}

void MarkdownListener::flushMarkup(EventKind kind) {
  if (markup_.empty()) {
    return;
  }
  if (imageDepth_ == 0) {
    sink_->write({.kind = kind, .text = markup_});
  }
  markup_.clear();
}

void MarkdownListener::beginCodeBlock(const MD_BLOCK_CODE_DETAIL& code) {
  assignAttribute(language_, code.lang);
  put({.kind = EventKind::BeginCodeBlock, .text = language_});
}

void MarkdownListener::beginHeading() {
  flush();
  headingLog_.clear();
  headingText_.clear();
  sink_ = &headingLog_;
}

void MarkdownListener::endHeading(int level) {
  flush();
  sink_ = &document_;
  const std::wstring& name = anchorNames_.next(headingText_);
  sink_->write({.kind = EventKind::BeginHeading, .number = level, .text = headingText_, .address = name});
  headingLog_.replay(*sink_);
  sink_->write({.kind = EventKind::EndHeading, .number = level});
}

void MarkdownListener::beginLink(const MD_SPAN_A_DETAIL& link) {
  assignAttribute(address_, link.href);
  assignAttribute(title_, link.title);
  put({.kind = EventKind::BeginLink, .address = address_, .title = title_});
}

void MarkdownListener::beginImage(const MD_SPAN_IMG_DETAIL& image) {
  if (imageDepth_ == 0) {
    flush();
    assignAttribute(address_, image.src);
    assignAttribute(title_, image.title);
  }
  ++imageDepth_;
}

void MarkdownListener::endImage() {
  if (--imageDepth_ > 0) {
    return;
  }
  markup_.clear();
  if (sink_ == &headingLog_) {
    headingText_ += text_;
  }
  sink_->write({.kind = EventKind::Image, .text = text_, .address = address_, .title = title_});
  text_.clear();
}

}  // namespace scrivalen::command

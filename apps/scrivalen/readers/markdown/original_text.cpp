#include "readers/markdown/original_text.h"

#include "readers/markdown/code_indentation.h"

#include <utility>

namespace scrivalen::command {
namespace {

/// Collects all texts that belong to a block or span itself.
class AttributeCollector final : public MarkdownHandler {
 public:
  void enterBlock(MD_BLOCKTYPE type, void* detail) override {
    if (type == MD_BLOCK_CODE) {
      const auto& code = *static_cast<const MD_BLOCK_CODE_DETAIL*>(detail);
      add(code.info);
      add(code.lang);
    }
  }
  void enterSpan(MD_SPANTYPE type, void* detail) override {
    if (type == MD_SPAN_A) {
      const auto& link = *static_cast<const MD_SPAN_A_DETAIL*>(detail);
      add(link.href);
      add(link.title);
    } else if (type == MD_SPAN_IMG) {
      const auto& image = *static_cast<const MD_SPAN_IMG_DETAIL*>(detail);
      add(image.src);
      add(image.title);
    }
  }
  void text(MD_TEXTTYPE, std::string_view) override {}

  std::vector<std::string>& all() { return all_; }

 private:
  void add(const MD_ATTRIBUTE& attribute) {
    if (attribute.size > 0) {
      all_.emplace_back(attribute.text, attribute.size);
    }
  }

  std::vector<std::string> all_;
};

}  // namespace

void OriginalText::enterBlock(MD_BLOCKTYPE type, void* detail) {
  isInCode_ = type == MD_BLOCK_CODE;
  if (isInCode_ && tildes_.isMasked()) {
    auto code = restored(detail, &MD_BLOCK_CODE_DETAIL::info, &MD_BLOCK_CODE_DETAIL::lang);
    return handler_.enterBlock(type, &code);
  }
  handler_.enterBlock(type, detail);
}

void OriginalText::leaveBlock(MD_BLOCKTYPE type, void* detail) {
  flushIndentation();
  isInCode_ = false;
  handler_.leaveBlock(type, detail);
}

void OriginalText::enterSpan(MD_SPANTYPE type, void* detail) {
  if (tildes_.isMasked() && type == MD_SPAN_A) {
    auto link = restored(detail, &MD_SPAN_A_DETAIL::href, &MD_SPAN_A_DETAIL::title);
    handler_.enterSpan(type, &link);
  } else if (tildes_.isMasked() && type == MD_SPAN_IMG) {
    auto image = restored(detail, &MD_SPAN_IMG_DETAIL::src, &MD_SPAN_IMG_DETAIL::title);
    handler_.enterSpan(type, &image);
  } else {
    handler_.enterSpan(type, detail);
  }
}

template <class Detail>
Detail OriginalText::restored(const void* detail, MD_ATTRIBUTE Detail::*first, MD_ATTRIBUTE Detail::*second) {
  Detail result = *static_cast<const Detail*>(detail);
  result.*first = restored(result.*first, made_[0]);
  result.*second = restored(result.*second, made_[1]);
  return result;
}

// The parser makes a new text where a part has escapes or references, is on several lines, or has no scheme.
MD_ATTRIBUTE OriginalText::restored(MD_ATTRIBUTE attribute, std::string& made) {
  const std::string_view text(attribute.text, attribute.size);
  if (text.empty()) {
    return attribute;
  }
  const std::size_t number = attributes_++;
  if (tildes_.holds(text)) {
    attribute.text = tildes_.original(text).data();
    return attribute;
  }
  made = text;
  if (tildes_.isAmbiguous(made)) {
    MaskedTildes::restore(made, twinOf(number));
  } else {
    tildes_.restore(made);
  }
  attribute.text = made.data();
  return attribute;
}

// The twin is parsed alike, as its mask means nothing either; empty where it is not: a mask may make two labels equal.
std::string_view OriginalText::twinOf(std::size_t attribute) {
  if (!twins_) {
    const std::string twin = tildes_.twin();
    AttributeCollector collector;
    parseUnchanged(twin, collector);
    twins_ = std::move(collector.all());
  }
  return attribute < twins_->size() ? std::string_view((*twins_)[attribute]) : std::string_view();
}

void OriginalText::text(MD_TEXTTYPE type, std::string_view text) {
  if (isInCode_) {
    return codeText(text);
  }
  handler_.text(type, tildes_.original(text));
}

// The parser passes the indentation of a line of code as blanks of its own, and then the line.
void OriginalText::codeText(std::string_view text) {
  if (tildes_.holds(text)) {
    if (indentation_ > 0) {
      const auto at = static_cast<std::size_t>(text.data() - tildes_.text().data());
      handler_.text(MD_TEXT_CODE, codeIndentation(original_, at, std::exchange(indentation_, 0)));
    }
    return handler_.text(MD_TEXT_CODE, tildes_.original(text));
  }
  if (text.find_first_not_of(' ') == text.npos) {
    indentation_ += text.size();
  } else {
    flushIndentation();
    handler_.text(MD_TEXT_CODE, text);
  }
}

void OriginalText::flushIndentation() {
  if (indentation_ > 0) {
    handler_.text(MD_TEXT_CODE, std::string(std::exchange(indentation_, 0), ' '));
  }
}

}  // namespace scrivalen::command

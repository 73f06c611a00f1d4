#include "formats/xlsx/document/cells/rich_text.h"

#include "document/plain/link_text.h"
#include "text/address.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace scrivalen::xlsx {
namespace {

using document::Event;
using document::EventKind;
using document::Span;

std::uint8_t flagOf(Span span) {
  switch (span) {
    case Span::Strong: return Font::Bold;
    case Span::Emphasis: return Font::Italic;
    case Span::Deleted: return Font::Deleted;
    case Span::Underlined: return Font::Underlined;
    case Span::Superscript: return Font::Superscript;
    case Span::Subscript: return Font::Subscript;
    case Span::Code:
    case Span::None: break;
  }
  return 0;
}

std::uint16_t sizeOf(double points) {
  constexpr double kSmallest = 1;
  constexpr double kLargest = 409;
  return static_cast<std::uint16_t>(std::lround(std::clamp(points, kSmallest, kLargest) * 100));
}

}  // namespace

std::string_view partOf(const RichText& text, std::size_t run) {
  const std::size_t begin = text.runs[run].begin;
  const std::size_t end = run + 1 < text.runs.size() ? text.runs[run + 1].begin : text.text.size();
  return std::string_view(text.text).substr(begin, end - begin);
}

void RichTextCollector::begin(const Font& font) { fonts_.assign(1, font); }

RichText RichTextCollector::take() {
  if (!colored_.empty()) {
    settleBackgrounds();
  }
  if (!links_.empty()) {
    settleLinks();
  }
  return std::exchange(text_, {});
}

void RichTextCollector::add(std::string_view utf8) {
  if (utf8.empty()) {
    return;
  }
  const std::size_t at = text_.text.size();
  const bool isAtLink = !links_.empty() && (links_.back().begin == at || links_.back().end == at);
  if (text_.runs.empty() || isAtLink || !(text_.runs.back().font == fonts_.back())) {
    text_.runs.push_back({text_.text.size(), fonts_.back()});
  }
  text_.text.append(utf8);
}

void RichTextCollector::write(const Event& event) {
  Font font = fonts_.back();
  switch (event.kind) {
    case EventKind::Text: return add(event.text);
    case EventKind::Image: return addPicture(event);
    case EventKind::Anchor: text_.anchors.emplace_back(event.id); return;
    case EventKind::BeginSpan: return beginSpan(event.span);
    case EventKind::BeginColored: return beginColored(event);
    case EventKind::EndColored: return endColored();
    case EventKind::BeginSized: font.size = sizeOf(event.points); return fonts_.push_back(font);
    case EventKind::BeginLink: return beginLink(event);
    case EventKind::EndLink: return endLink();
    case EventKind::BeginLanguage: return fonts_.push_back(font);
    case EventKind::EndSpan:
    case EventKind::EndSized:
    case EventKind::EndLanguage: return fonts_.pop_back();
    default: return;
  }
}

void RichTextCollector::beginSpan(Span span) {
  Font font = fonts_.back();
  font.flags |= flagOf(span);
  font.family = span == Span::Code ? Family::Code : font.family;
  fonts_.push_back(font);
}

void RichTextCollector::beginColored(const Event& event) {
  Font font = fonts_.back();
  const std::uint32_t outerColor = font.color;
  font.color = event.color.value_or(font.color);
  const std::size_t at = text_.text.size();
  colored_.push_back({at, at, event.background.value_or(kNoColor), font.color, outerColor});
  fonts_.push_back(font);
}

void RichTextCollector::endColored() {
  fonts_.pop_back();
  const auto part =
      std::find_if(colored_.rbegin(), colored_.rend(), [](const ColoredPart& known) { return known.isOpen; });
  if (part != colored_.rend()) {
    part->isOpen = false;
    part->end = text_.text.size();
  }
}

// Of parts that have the whole text the innermost counts.
void RichTextCollector::settleBackgrounds() {
  const std::size_t size = text_.text.size();
  for (const ColoredPart& part : std::exchange(colored_, {})) {
    const std::size_t end = part.isOpen ? size : part.end;
    if (part.background == kNoColor || part.begin == end) {
      continue;
    }
    if (part.begin == 0 && end == size) {
      text_.fill = part.background;
      continue;
    }
    ++text_.plainParts;
    for (TextRun& run : text_.runs) {
      const bool isInPart = run.begin >= part.begin && run.begin < end;
      run.font.color = isInPart && run.font.color == part.color ? part.outerColor : run.font.color;
    }
  }
}

void RichTextCollector::beginLink(const Event& link) {
  constexpr std::string_view kNowhere = "#";
  if (link.address.empty() || link.address == kNowhere || runsProgram(link.address, AddressUse::Link)) {
    return;
  }
  const std::size_t at = text_.text.size();
  links_.push_back({{std::string(link.address), std::string(link.title)}, at, at});
  isInLink_ = true;
}

// A link without a text shows its address.
void RichTextCollector::endLink() {
  if (!std::exchange(isInLink_, false)) {
    return;
  }
  LinkedPart& part = links_.back();
  if (part.begin == text_.text.size() && text_.pictures.empty()) {
    add(part.link.address);
  }
  part.end = text_.text.size();
}

// A link is that of the whole cell if it is the only one and the text is short, or has nothing else.
void RichTextCollector::settleLinks() {
  constexpr std::size_t kShort = 80;
  std::vector<LinkedPart> links = std::exchange(links_, {});
  const std::size_t size = text_.text.size();
  if (links.size() == 1 && (size <= kShort || (links[0].begin == 0 && links[0].end == size))) {
    const LinkedPart& part = links.front();
    for (TextRun& run : text_.runs) {
      if (run.begin >= part.begin && run.begin < part.end) {
        run.font.color = kLinkColor;
        run.font.flags |= Font::Underlined;
      }
    }
    text_.links.push_back(part.link);
    return;
  }
  text_.plainLinks = links.size();
  for (auto part = links.rbegin(); part != links.rend(); ++part) {
    const std::string shown = text_.text.substr(part->begin, part->end - part->begin);
    addAddress(part->end, std::string_view(document::withAddress(shown, part->link.address)).substr(shown.size()));
  }
  const auto isSame = [](const TextRun& a, const TextRun& b) { return a.font == b.font; };
  text_.runs.erase(std::unique(text_.runs.begin(), text_.runs.end(), isSame), text_.runs.end());
}

// Inserts a text that has the font of what is before it.
void RichTextCollector::addAddress(std::size_t at, std::string_view address) {
  text_.text.insert(at, address);
  for (TextRun& run : text_.runs) {
    run.begin += run.begin >= at && run.begin > 0 ? address.size() : 0;
  }
}

void RichTextCollector::addPicture(const Event& event) {
  if (event.picture == nullptr) {
    return add(event.text);
  }
  const auto [width, height] = event.picture->shownSize(event.points);
  text_.pictures.push_back({event.picture->shared_from_this(), width, height, std::string(event.text)});
}

}  // namespace scrivalen::xlsx

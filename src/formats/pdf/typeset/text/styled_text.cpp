#include "formats/pdf/typeset/text/styled_text.h"

#include <algorithm>

namespace scrivalen::typeset {
namespace {

// Each line of a link has the description, which is short so that a link of many lines takes no more than its text.
constexpr std::size_t kMostOfDescription = 256;

bool continuesCharacter(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

}  // namespace

std::string StyledText::descriptionOf(int link) const {
  const TextLink& described = links[static_cast<std::size_t>(link)];
  auto picture = std::partition_point(pictures.begin(), pictures.end(),
                                      [&](const TextPicture& before) { return before.at < described.begin; });
  auto span = std::partition_point(spans.begin(), spans.end(),
                                   [&](const StyledSpan& before) { return before.begin < described.begin; });
  std::size_t end = described.begin;
  while (span != spans.end() && span->style.link == link && end - described.begin < kMostOfDescription) {
    ++span;
    end = span == spans.end() ? text.size() : span->begin;
  }
  end = std::min(end, described.begin + kMostOfDescription);
  while (end < text.size() && continuesCharacter(text[end])) {
    --end;
  }
  std::string description;
  for (std::size_t at = described.begin; at < end; ++at) {
    if (picture != pictures.end() && picture->at == at) {
      description += picture->text;
      at += kPictureCharacter.size() - 1;
      ++picture;
    } else {
      description += text[at] == '\n' ? ' ' : text[at];
    }
  }
  return description.find_first_not_of(' ') == description.npos ? described.address : description;
}

}  // namespace scrivalen::typeset

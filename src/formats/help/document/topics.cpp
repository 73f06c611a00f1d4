#include "formats/help/document/topics.h"

#include "formats/help/document/open_links.h"
#include "formats/markup/html/html_links.h"
#include "formats/markup/html/html_writer.h"
#include "output/markup_text.h"
#include "text/utf.h"

namespace scrivalen::help {
namespace {

using document::DocumentWriter;
using document::HtmlPageFrame;
using document::Picture;
using document::WriterContext;

constexpr std::string_view kCannotRead = "its topics cannot be read";

// FNV-1a.
std::uint64_t sumOf(std::string_view bytes) {
  std::uint64_t sum = 0xCBF29CE484222325;
  for (const char c : bytes) {
    sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3;
  }
  return sum;
}

std::string fileName(const char* kind, std::size_t index, const char* extension) {
  return kind + std::to_string(index + 1) + extension;
}

std::string escapedValue(std::string_view text) {
  std::string result(MarkupText::spaceFor(text.size()), '\0');
  result.resize(static_cast<std::size_t>(MarkupText().value(result.data(), text) - result.data()));
  return result;
}

}  // namespace

Topics::Topics(const WriterContext& context, const CodePage& codePage, std::string_view charset)
    : context_(context), codePage_(codePage), frame_(std::make_unique<HtmlPageFrame>(context, charset)) {
  if (!folder_.createElsewhere()) {
    raiseSystemError("no folder can be created for its topics");
  }
}

Topics::~Topics() = default;

std::wstring Topics::pathOf(std::string_view file) const { return folder_.path() + kPathSeparator + toWide(file); }

void Topics::begin(std::string_view title) {
  end();
  pages_.push_back(fileName("topic", pages_.size(), ".htm"));
  page_ = std::make_unique<OpenPage>(pathOf(pages_.back()), codePage_);
  page_->writer = createHtmlPageWriter({page_->out, context_.settings, context_.warnings}, frame_->page(title), *this);
  page_->writer->begin();
}

void Topics::end() {
  if (!page_) {
    return;
  }
  page_->writer->finish();
  page_->out.flush();
  page_->file.close();
  if (page_->hasOpenLinks) {
    openLinkPages_.push_back(pages_.size() - 1);
  }
  page_.reset();
}

void Topics::addPlace(std::string_view id) {
  Place& place = places_[std::string(id)];
  if (place.page == kNowhere) {
    place.page = pages_.size() - 1;
  }
}

std::string Topics::knownAddress(std::string_view id, const Place& place, std::size_t fromPage) const {
  const bool isElsewhere = place.page != kNowhere && place.page != fromPage;
  return (isElsewhere ? pages_[place.page] : std::string()) + document::htmlPlace(id);
}

std::string Topics::addressOf(std::string_view id) {
  if (id.empty()) {
    return document::htmlPlace(id);
  }
  const auto place = places_.try_emplace(std::string(id)).first;
  if (place->second.page != kNowhere) {
    return knownAddress(id, place->second, pages_.size() - 1);
  }
  if (!place->second.isLinked) {
    place->second.number = linked_.size();
    linked_.push_back(place);
    place->second.isLinked = true;
  }
  page_->hasOpenLinks = true;
  return openLink(place->second.number);
}

std::string Topics::addressOf(const Picture& picture) {
  const std::uint64_t sum = sumOf(picture.bytes());
  const auto [begin, end] = pictureNumbers_.equal_range(sum);
  for (auto at = begin; at != end; ++at) {
    if (isPicture(pictures_[at->second], picture.bytes())) {
      return pictures_[at->second];
    }
  }
  const bool isPng = picture.format() == Picture::Format::Png;
  const std::string name = fileName("picture", pictures_.size(), isPng ? ".png" : ".jpg");
  ProjectFile file(pathOf(name));
  file.write(picture.bytes());
  file.close();
  pictures_.push_back(name);
  pictureNumbers_.emplace(sum, pictures_.size() - 1);
  return name;
}

bool Topics::isPicture(const std::string& file, std::string_view bytes) const {
  const File opened = openForReading(pathOf(file));
  const bool isStart = opened && readRest(opened, [&bytes](std::string_view piece) {
                         const bool isSame = bytes.starts_with(piece);
                         bytes.remove_prefix(isSame ? piece.size() : 0);
                         return isSame;
                       });
  return isStart && bytes.empty();
}

std::string Topics::markupOf(std::string_view markup) {
  addPlacesOf(markup);
  std::string result;
  while (const auto link = nextLinkInside(markup)) {
    result.append(withoutMarks(markup.substr(0, link->begin)));
    result.append(escapedValue(addressOf(link->id)));
    markup.remove_prefix(link->end);
  }
  return result.append(withoutMarks(markup));
}

void Topics::addPlacesOf(std::string_view markup) {
  for (const std::string_view attribute : {" id=\"", " name=\""}) {
    for (std::size_t at = markup.find(attribute); at != markup.npos; at = markup.find(attribute, at)) {
      at += attribute.size();
      addPlace(markup.substr(at, markup.find('"', at) - at));
    }
  }
}

void Topics::completeLinks() {
  for (const std::size_t page : openLinkPages_) {
    completeLinks(page);
  }
}

void Topics::completeLinks(std::size_t page) {
  constexpr const char* kUnfinished = "page";
  const std::wstring completed = pathOf(kUnfinished);
  copyWithLinks(page, completed);
  if (!moveReplacing(completed, pathOf(pages_[page]))) {
    raiseSystemError(kCannotWrite);
  }
}

void Topics::copyWithLinks(std::size_t page, const std::wstring& completed) const {
  OpenLinks links([&](std::size_t number) {
    std::string address;
    if (number < linked_.size()) {
      const auto& [id, place] = *linked_[number];
      appendWithReferences(address, escapedValue(knownAddress(id, place, page)), codePage_);
    }
    return address;
  });
  const File source = openForReading(pathOf(pages_[page]));
  if (!source) {
    raiseSystemError(kCannotRead);
  }
  ProjectFile target(completed);
  const bool isRead = readRest(source, [&](std::string_view piece) {
    target.write(links.completed(piece));
    return true;
  });
  if (!isRead) {
    raiseSystemError(kCannotRead);
  }
  target.close();
}

}  // namespace scrivalen::help

#include "writers/help_topics.h"

#include "system/files/files.h"
#include "text/ascii.h"
#include "texts.h"

namespace scrivalen::command {
namespace {

constexpr std::string_view kLinkStart = " href=\"";

bool readFile(const std::wstring& path, std::string& bytes) {
  const scrivalen::File file = scrivalen::openForReading(path);
  return file && scrivalen::readRest(file, [&bytes](std::string_view piece) {
           bytes += piece;
           return true;
         });
}

bool writeFile(const std::wstring& path, const std::string& bytes) {
  scrivalen::File file = scrivalen::openExclusive(path);
  return file && scrivalen::writeAll(file, bytes.data(), bytes.size()) && file.close();
}

// RFC 3986, 2.1.
std::string percentDecoded(std::string_view text) {
  std::string result;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int high = at + 2 < text.size() ? scrivalen::hexValue(text[at + 1]) : -1;
    const int low = high < 0 ? -1 : scrivalen::hexValue(text[at + 2]);
    if (text[at] == '%' && low >= 0) {
      result += static_cast<char>(high * 16 + low);
      at += 2;
    } else {
      result += text[at];
    }
  }
  return result;
}

}  // namespace

// An unfinished report is abandoned: its pages are about to be removed and need not be compiled.
HelpTopics::~HelpTopics() {
  end();
  report_.abandon();
}

bool HelpTopics::prepare(const std::wstring& file, const std::wstring& title) {
  file_ = file;
  title_ = title;
  if (!work_.createElsewhere()) {
    return fail("no folder can be created for its pages");
  }
  folder_ = work_.path() + scrivalen::kPathSeparator;
  return true;
}

void HelpTopics::beginFor(int level, std::wstring_view heading) {
  constexpr int kDeepestTopic = 2;
  if (level <= kDeepestTopic && !heading.empty()) {
    begin(std::wstring(heading));
  }
  beginIfNone();
}

// When it is closed, the report names a page that is incomplete.
void HelpTopics::begin(const std::wstring& title) {
  end();
  topics_.push_back({L"topic" + std::to_wstring(topics_.size() + 1) + L".htm"});
  report_->BeginSubDocument(folder_.c_str(), topics_.back().file.c_str(), title.c_str());
  isOpen_ = true;
}

void HelpTopics::beginIfNone() {
  if (topics_.empty()) {
    begin(title_);
  }
}

void HelpTopics::addAnchor(std::wstring_view name) { anchors_.emplace(toUtf8(name), topics_.size() - 1); }

void HelpTopics::addAnchorsOf(std::wstring_view markup) {
  for (const std::wstring_view attribute : {L" id=\"", L" name=\""}) {
    for (std::size_t at = markup.find(attribute); at != std::wstring_view::npos; at = markup.find(attribute, at)) {
      at += attribute.size();
      addAnchor(markup.substr(at, markup.find(L'"', at) - at));
    }
  }
}

void HelpTopics::end() {
  if (isOpen_) {
    report_->EndSubDocument();
    isOpen_ = false;
  }
}

bool HelpTopics::finish() {
  beginIfNone();
  end();
  for (std::size_t topic = 0; topic < topics_.size(); ++topic) {
    if (topics_[topic].mayLink && !completeLinks(topic)) {
      return fail("its pages cannot be linked");
    }
  }
  return true;
}

bool HelpTopics::fail(const char* reason) {
  const std::string why = lastErrorText();
  error_ = toWide(cannotWrite(toUtf8(file_), std::string(reason) + ": " + why));
  return false;
}

// A page is written before the targets of its links are known.
bool HelpTopics::completeLinks(std::size_t topic) {
  const std::wstring path = pathOf(topics_[topic]);
  std::string page;
  if (!readFile(path, page)) {
    return false;
  }
  std::string completed;
  std::size_t done = 0;
  for (std::size_t at = page.find(kLinkStart); at != std::string::npos; at = page.find(kLinkStart, at)) {
    at += kLinkStart.size();
    const std::string_view link = std::string_view(page).substr(at, page.find('"', at) - at);
    if (const Topic* const target = topicOf(link, topic)) {
      completed.append(page, done, at - done).append(toUtf8(target->file));
      done = at;
    }
  }
  return done == 0 || writeFile(path, completed.append(page, done));
}

// The other topic that a link leads to; null if it does not lead to one.
const HelpTopics::Topic* HelpTopics::topicOf(std::string_view link, std::size_t sourceTopic) const {
  if (!link.starts_with('#')) {
    return nullptr;
  }
  const auto anchor = anchors_.find(percentDecoded(link.substr(1)));
  return anchor == anchors_.end() || anchor->second == sourceTopic ? nullptr : &topics_[anchor->second];
}

}  // namespace scrivalen::command

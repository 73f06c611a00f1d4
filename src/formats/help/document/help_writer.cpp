#include "formats/help/document/help_writer.h"

#include "formats/help/document/compilation.h"
#include "formats/help/document/project.h"
#include "formats/help/document/topics.h"
#include "system/files/files.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace scrivalen::help {
namespace {

using document::DocumentWriter;
using document::Event;
using document::EventKind;
using document::WriterContext;

constexpr std::string_view kMarkupFormat = "html";  // of the markup that scrivalen_raw passes on
constexpr int kDeepestTopic = 2;

// A page, or an entry of the contents, has to be called something.
std::string nameOf(std::string_view text) { return text.find_first_not_of(' ') == text.npos ? "-" : std::string(text); }

class HelpWriter : public DocumentWriter {
 public:
  explicit HelpWriter(const WriterContext& context)
      : context_(context), language_(languageOf(context.settings.text("language"))), codePage_(language_.codePage) {}

  void begin() override { topics_.emplace(context_, codePage_, charsetOf(language_)); }
  void write(const Event& event) override;
  void beginTable(const document::Table& table) override;
  void row(const document::Row& row) override { topics_->page().row(row); }
  void endTable() override { topics_->page().endTable(); }
  void finish() override;

 private:
  struct Section {
    std::string name;
    std::string id;
  };

  void follow(const Event& event);
  bool isLeftOut(const Event& event) const;
  bool beginsTopic(const Event& event) const;
  void beginSection(const Event& section);
  void endSection();
  void beginTopic(std::string_view name, int level);
  void beginTopicOf(const Event& heading);
  void beginPendingSection(std::string_view name);
  void beginContent();
  void writePending();
  void addEntry(int level, std::string_view name);
  void writeProject();
  void copyHelpFile();

  WriterContext context_;
  const WindowsLanguage& language_;
  const CodePage codePage_;
  std::optional<Topics> topics_;
  std::vector<ContentsEntry> contents_;

  int containers_ = 0;                     // quotes and lists that are open; no page ends inside one
  bool isInText_ = false;                  // of a paragraph, heading or code
  std::optional<Section> pendingSection_;  // begun, but without content so far
  bool isSectionNamed_ = false;            // of the section that is open
  bool isSectionWritten_ = false;          // and has an element in the page that has not ended
  bool isTitleTopic_ = false;              // whether the topic has the document's title, and no heading so far

  // What belongs to the content that comes next.
  std::string title_;
  std::vector<std::string> anchors_;
};

void HelpWriter::write(const Event& event) {
  switch (event.kind) {
    case EventKind::Title: title_ = event.text; return;
    case EventKind::BeginSection: return beginSection(event);
    case EventKind::EndSection: return endSection();
    default: break;
  }
  if (isLeftOut(event)) {
    return;
  }
  if (event.kind == EventKind::Anchor && containers_ == 0 && !isInText_) {
    anchors_.emplace_back(event.id);
    return;
  }
  if (beginsTopic(event)) {
    beginTopicOf(event);
  } else if (containers_ == 0 && !isInText_) {
    beginContent();
  }
  follow(event);
  topics_->page().write(event);
}

// The help file has its own contents. A page need not be broken where it has not begun.
bool HelpWriter::isLeftOut(const Event& event) const {
  switch (event.kind) {
    case EventKind::BeginContents:
    case EventKind::ContentsItem:
    case EventKind::EndContents: return true;
    case EventKind::PageBreak: return topics_->isEmpty() || pendingSection_.has_value();
    case EventKind::Raw: return event.address != kMarkupFormat;
    default: return false;
  }
}

bool HelpWriter::beginsTopic(const Event& event) const {
  return event.kind == EventKind::BeginHeading && containers_ == 0 && event.number <= kDeepestTopic &&
         event.text.find_first_not_of(' ') != event.text.npos;
}

void HelpWriter::follow(const Event& event) {
  switch (event.kind) {
    case EventKind::BeginQuote:
    case EventKind::BeginList: ++containers_; return;
    case EventKind::EndQuote:
    case EventKind::EndList: --containers_; return;
    case EventKind::BeginHeading:
    case EventKind::BeginParagraph:
    case EventKind::BeginCode: isInText_ = true; return;
    case EventKind::EndHeading:
    case EventKind::EndParagraph:
    case EventKind::EndCode: isInText_ = false; return;
    default: return;
  }
}

void HelpWriter::beginTable(const document::Table& table) {
  if (containers_ == 0) {
    beginContent();
  }
  topics_->page().beginTable(table);
}

void HelpWriter::beginSection(const Event& section) {
  pendingSection_ = Section{std::string(section.text), std::string(section.id)};
  isSectionNamed_ = !section.text.empty();
}

void HelpWriter::endSection() {
  if (pendingSection_ && !(pendingSection_->name.empty() && pendingSection_->id.empty())) {
    beginContent();
  }
  pendingSection_.reset();
  if (std::exchange(isSectionWritten_, false)) {
    topics_->page().write({.kind = EventKind::EndSection});
  }
  isSectionNamed_ = false;
}

void HelpWriter::beginTopic(std::string_view name, int level) {
  if (std::exchange(isSectionWritten_, false)) {
    topics_->page().write({.kind = EventKind::EndSection});
  }
  topics_->begin(nameOf(name));
  addEntry(level, name);
  isTitleTopic_ = false;
}

// A heading that begins a section shares its page, and is named in the contents unless it has the section's name. So
// does one with the document's title, with what comes before it.
void HelpWriter::beginTopicOf(const Event& heading) {
  title_.clear();
  const int level = heading.number + (isSectionNamed_ ? 1 : 0);
  if (std::exchange(isTitleTopic_, false) && !pendingSection_ && heading.text == context_.settings.text("title")) {
    contents_.back().level = level;
  } else if (!pendingSection_) {
    beginTopic(heading.text, level);
  } else if (!isSectionNamed_) {
    beginPendingSection(heading.text);
    contents_.back().level = level;
  } else {
    const std::string name = pendingSection_->name;
    beginPendingSection(name);
    if (name != heading.text) {
      addEntry(level, heading.text);
    }
  }
  writePending();
}

void HelpWriter::beginPendingSection(std::string_view name) {
  const Section section = *std::exchange(pendingSection_, std::nullopt);
  beginTopic(name, 1);
  topics_->page().write({.kind = EventKind::BeginSection, .text = section.name, .id = section.id});
  isSectionWritten_ = true;
}

// Content other than a heading that begins a topic.
void HelpWriter::beginContent() {
  const std::string_view title = context_.settings.text("title");
  if (pendingSection_) {
    const std::string name = pendingSection_->name;
    beginPendingSection(name.empty() ? title : name);
  } else if (topics_->isEmpty()) {
    beginTopic(title, 1);
    isTitleTopic_ = true;
  }
  writePending();
}

void HelpWriter::writePending() {
  if (!title_.empty()) {
    topics_->page().write({.kind = EventKind::Title, .text = title_});
    title_.clear();
  }
  for (const std::string& id : anchors_) {
    topics_->page().write({.kind = EventKind::Anchor, .id = id});
  }
  anchors_.clear();
}

void HelpWriter::addEntry(int level, std::string_view name) {
  contents_.push_back({level, nameOf(name), topics_->pages().back()});
}

void HelpWriter::finish() {
  if (topics_->isEmpty() || !title_.empty() || !anchors_.empty()) {
    beginContent();
  }
  topics_->end();
  topics_->completeLinks();
  writeProject();
  if (compile(topics_->folder(), context_)) {
    copyHelpFile();
  }
}

void HelpWriter::writeProject() {
  ProjectFile project(topics_->pathOf(kProjectName));
  project.write(projectFile({context_.settings.text("title"), language_, topics_->pages(), topics_->pictures()},
                            codePage_, context_.warnings));
  project.close();
  ProjectFile contents(topics_->pathOf(kContentsName));
  contents.write(contentsFile(contents_, codePage_));
  contents.close();
}

void HelpWriter::copyHelpFile() {
  const File file = openForReading(topics_->pathOf(kCompiledName));
  const bool isRead = file && readRest(file, [this](std::string_view piece) {
                        context_.out.write(piece.data(), piece.size());
                        return !context_.out.hasLostBytes();
                      });
  if (!isRead && !context_.out.hasLostBytes()) {
    raiseSystemError("the help file cannot be read");
  }
}

}  // namespace

std::unique_ptr<DocumentWriter> createHelpDocumentWriter(const WriterContext& context) {
  return std::make_unique<HelpWriter>(context);
}

}  // namespace scrivalen::help

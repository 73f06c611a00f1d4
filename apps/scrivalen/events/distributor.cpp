#include "events/distributor.h"

#include "errors.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

constexpr std::size_t kEventsBetweenPolls = 64;
constexpr std::size_t kBlocksOfProgress = 256;

bool endsBlock(EventKind kind) {
  switch (kind) {
    case EventKind::EndHeading:
    case EventKind::EndParagraph:
    case EventKind::EndItem:
    case EventKind::EndCodeBlock:
    case EventKind::EndRow: return true;
    default: return false;
  }
}

// Inserts the table of contents into a document: after a heading that the document begins with, which is its title,
// otherwise at the very beginning.
class ContentsInserter : public EventSink {
 public:
  ContentsInserter(EventSink& target, const EventLog& contents) : target_(target), contents_(contents) {}

  void write(const Event& event) override {
    if (isFirst_ && event.kind != EventKind::BeginHeading) {
      insert();
    }
    isFirst_ = false;
    target_.write(event);
    if (event.kind == EventKind::EndHeading) {
      insert();
    }
  }

 private:
  void insert() {
    if (!isInserted_) {
      isInserted_ = true;
      contents_.replay(target_);
    }
  }

  EventSink& target_;
  const EventLog& contents_;
  bool isFirst_ = true;
  bool isInserted_ = false;
};

}  // namespace

Distributor::Distributor(const Outputs& outputs, Plan plan) : outputs_(outputs), plan_(std::move(plan)) {}

void Distributor::write(const Event& event) {
  if (++events_ % kEventsBetweenPolls == 0) {
    poll();
  }
  if (started_) {
    return forward(event);
  }
  if (isFirst_) {
    plan_.settings.beginsWithTable = event.kind == EventKind::BeginTable;
    isFirst_ = false;
  }
  if (plan_.titleFromHeading && event.kind == EventKind::BeginHeading && !event.text.empty()) {
    plan_.settings.title = event.text;
    plan_.titleFromHeading = false;
  }
  if (plan_.contents || plan_.titleFromHeading) {
    return holdBack(event);
  }
  start();
  forward(event);
}

void Distributor::finish() {
  if (!started_) {
    start();
  }
}

// A heading that the document begins with is its title, not an entry of its contents.
void Distributor::holdBack(const Event& event) {
  if (plan_.contents && event.kind == EventKind::BeginHeading && !held_.isEmpty() && !event.text.empty()) {
    addToContents(event);
  }
  held_.write(event);
}

void Distributor::addToContents(const Event& heading) {
  if (contents_.isEmpty()) {
    contents_.write({.kind = EventKind::BeginContents});
  }
  Event item = heading;
  item.kind = EventKind::ContentsItem;
  contents_.write(item);
}

void Distributor::start() {
  started_ = true;
  for (const auto& output : outputs_) {
    output->open(plan_.settings);
  }
  replayHeld();
}

void Distributor::replayHeld() {
  if (contents_.isEmpty()) {
    held_.replay(*this);
  } else {
    contents_.write({.kind = EventKind::EndContents});
    ContentsInserter inserter(*this, contents_);
    held_.replay(inserter);
  }
  held_ = EventLog();
}

void Distributor::poll() {
  plan_.poll();
  if (std::all_of(outputs_.begin(), outputs_.end(), [](const auto& output) { return output->failed(); })) {
    throw NoOutputLeft();
  }
}

void Distributor::forward(const Event& event) {
  for (const auto& output : outputs_) {
    output->write(event);
  }
  if (endsBlock(event.kind) && ++blocks_ % kBlocksOfProgress == 0) {
    plan_.progress(blocks_);
  }
}

}  // namespace scrivalen::command

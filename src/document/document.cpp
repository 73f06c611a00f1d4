#include "document/document.h"

#include <algorithm>
#include <new>
#include <utility>

namespace scrivalen::document {

Status Document::refuse(Status status, std::string_view text) {
  callText_ = text;
  return status;
}

Status Document::runOutOfMemory() noexcept {
  run_.runOutOfMemory();
  callText_.clear();
  for (const auto& output : outputs_) {
    output->abandon();
  }
  return Status::OutOfMemory;
}

Status Document::answer(Status status) {
  if (status != Status::Ok) {
    callText_.clear();
  }
  return status;
}

Status Document::setUpOnly(std::string_view call) {
  if (state_ == State::SetUp) {
    return Status::Ok;
  }
  return misuse(std::string(call) + " comes before the first content");
}

Status Document::addFile(const Format& format, std::string path) {
  if (const Status status = readyForOutput(); status != Status::Ok) {
    return status;
  }
  outputs_.push_back(std::make_unique<Output>(format, std::move(path), outputs_.size(), settings_, warnings_, run_));
  return Status::Ok;
}

Status Document::addStream(const Format& format, StreamWrite stream, void* user) {
  if (const Status status = readyForOutput(); status != Status::Ok) {
    return status;
  }
  outputs_.push_back(std::make_unique<Output>(format, stream, user, outputs_.size(), settings_, warnings_, run_));
  return Status::Ok;
}

Status Document::set(std::string_view name, std::string_view value) {
  if (const Status status = setUpOnly("a setting"); status != Status::Ok) {
    return status;
  }
  Replaced replaced;
  if (!Settings::isPath(name)) {
    text_.clear();
    appendClean(text_, value, Settings::keepsTabs(name) ? TextKind::Code : TextKind::Line, replaced);
    value = text_;
  }
  std::string reason;
  if (!settings_.set(name, value, reason)) {
    return refuse(Status::UnknownSetting, reason);
  }
  replaced_.badBytes += replaced.badBytes;
  replaced_.controls += replaced.controls;
  return Status::Ok;
}

Status Document::setProgress(Progress progress, void* user) {
  if (const Status status = setUpOnly("progress"); status != Status::Ok) {
    return status;
  }
  run_.setProgress(progress, user);
  return Status::Ok;
}

Status Document::open() {
  if (const Status status = setUpOnly("opening"); status != Status::Ok) {
    return status;
  }
  if (outputs_.empty()) {
    return misuse("the document has no outputs");
  }
  if (!run_.isOutOfMemory()) {
    openOutputs();
  }
  return answer(run_.result());
}

void Document::openOutputs() {
  state_ = State::Open;
  const FormatSettings settings(settings_, "");
  values_.emplace(NumberStyle::of(settings.text("numbers")).value_or(NumberStyle()),
                  DateStyle::of(settings.text("dates")).value_or(DateStyle()));
  for (auto output = outputs_.begin(); output != outputs_.end(); ++output) {
    const bool isTaken = std::any_of(outputs_.begin(), output,
                                     [&](const auto& earlier) { return (*output)->sharesTargetWith(*earlier); });
    if (isTaken) {
      (*output)->refuse("another output writes to it");
    } else {
      (*output)->open();
    }
  }
}

Status Document::ready() {
  if (state_ == State::Closed) {
    return misuse("the document is closed");
  }
  if (outputs_.empty()) {
    return misuse("the document has no outputs");
  }
  const bool isStill = state_ == State::SetUp && !run_.isOutOfMemory();
  return isStill || run_.isGoing() ? Status::Ok : answer(run_.result());
}

Status Document::opened() {
  if (state_ == State::SetUp) {
    openOutputs();
    openStatus_ = run_.result();
  }
  return run_.isGoing() ? Status::Ok : answer(run_.result());
}

Status Document::readyFor(Part part) {
  if (const Status status = ready(); status != Status::Ok) {
    return status;
  }
  if (!nesting_.mayHold(part)) {
    return misplaced(part);
  }
  if (inCell_ && table_->hasValue()) {
    return misuse("a cell has one value, and no text");
  }
  return nesting_.isFull() ? misuse("the parts are nested deeper than 1,000") : opened();
}

Status Document::misplaced(Part part) {
  if (part == Part::Link && nesting_.innermost().inLink) {
    return misuse("a link cannot be in a link");
  }
  return misuse(std::string(nameOf(part)) + " cannot be in " + nameOf(nesting_.innermost().part));
}

Status Document::taken() {
  if (!run_.isGoing()) {
    return answer(run_.result());
  }
  return answer(std::exchange(openStatus_, Status::Ok));
}

Status Document::close() {
  if (state_ == State::Closed) {
    return answer(run_.result());
  }
  if (outputs_.empty()) {
    return misuse("the document has no outputs");
  }
  try {
    closeWithMemory();
  } catch (const std::bad_alloc&) {
    runOutOfMemory();
  }
  for (const auto& output : outputs_) {
    output->end();
  }
  state_ = State::Closed;
  return answer(run_.result());
}

void Document::closeWithMemory() {
  if (state_ == State::SetUp && !run_.isOutOfMemory()) {
    openOutputs();
  }
  while (run_.isGoing() && !nesting_.isEmpty()) {
    endInnermost();
  }
  warnOfMended();
  finishOutputs();
}

void Document::finishOutputs() {
  for (const auto& output : outputs_) {
    output->finish();
  }
  // Before the delivery, which memory that runs out must not follow.
  toReport_ = warnings_.all();
  if (run_.isGoing() && run_.report()) {
    for (const auto& output : outputs_) {
      output->deliver();
    }
  }
}

void Document::warnOfMended() {
  if (replaced_.badBytes > 0) {
    warn(WarningCode::CharactersReplaced, "bytes that are not UTF-8, replaced by U+FFFD", replaced_.badBytes);
  }
  if (replaced_.controls > 0) {
    warn(WarningCode::CharactersReplaced, "control characters, replaced by U+FFFD", replaced_.controls);
  }
  for (const std::string& target : targets_) {
    if (!names_.isUsed(target)) {
      warn(WarningCode::InputMended, "a link leads to '#" + target + "', which is nowhere in the document");
    }
  }
}

const Warning* Document::nextWarning() { return reported_ < toReport_.size() ? &toReport_[reported_++] : nullptr; }

void Document::beginTable(const Table& table) {
  for (const auto& output : outputs_) {
    output->beginTable(table);
  }
}

void Document::row(const Row& row) {
  run_.countRow();
  for (const auto& output : outputs_) {
    output->row(row);
  }
}

void Document::endTable() {
  for (const auto& output : outputs_) {
    output->endTable();
  }
}

bool Document::isWanted() const { return run_.isGoing(); }

}  // namespace scrivalen::document

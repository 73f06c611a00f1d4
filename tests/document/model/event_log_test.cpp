#include "document/model/event_log.h"

#include "document/model/table.h"

#include <gtest/gtest.h>

#include <list>

namespace scrivalen::document {
namespace {

// Keeps copies of events, whose texts last longer than the event.
class Recorder : public EventSink {
 public:
  void write(const Event& event) override {
    Event copy = event;
    for (std::string_view* text : {&copy.text, &copy.id, &copy.address, &copy.title}) {
      *text = texts_.emplace_back(*text);
    }
    events.push_back(copy);
  }

  std::string texts() const {
    std::string all;
    for (const Event& event : events) {
      all += event.text;
      all += '|';
    }
    return all;
  }

  std::vector<Event> events;

 private:
  std::list<std::string> texts_;
};

void expectSame(const Event& actual, const Event& expected) {
  EXPECT_EQ(actual.kind, expected.kind);
  EXPECT_EQ(actual.align, expected.align);
  EXPECT_EQ(actual.task, expected.task);
  EXPECT_EQ(actual.span, expected.span);
  EXPECT_EQ(actual.ordered, expected.ordered);
  EXPECT_EQ(actual.tight, expected.tight);
  EXPECT_EQ(actual.number, expected.number);
  EXPECT_EQ(actual.points, expected.points);
  EXPECT_EQ(actual.text, expected.text);
  EXPECT_EQ(actual.id, expected.id);
  EXPECT_EQ(actual.address, expected.address);
  EXPECT_EQ(actual.title, expected.title);
  EXPECT_EQ(actual.color, expected.color);
  EXPECT_EQ(actual.background, expected.background);
  EXPECT_EQ(actual.picture, expected.picture);
}

TEST(EventLog, ReplaysEveryFieldOfItsEvents) {
  const std::vector<Event> events = {
      {.kind = EventKind::BeginHeading, .align = Align::Center, .number = -2, .text = "Größe\n😀", .id = "größe"},
      {.kind = EventKind::BeginList, .ordered = true, .tight = true, .number = 7},
      {.kind = EventKind::BeginItem, .task = Task::Done},
      {.kind = EventKind::BeginSpan, .span = Span::Subscript},
      {.kind = EventKind::BeginColored, .color = 0x123456, .background = 0u},
      {.kind = EventKind::BeginColored, .background = 0xFFFFFF},
      {.kind = EventKind::BeginSized, .points = 10.5},
      {.kind = EventKind::BeginLink, .address = "http://a", .title = "A"},
      {.kind = EventKind::Image, .text = "no picture"},
      {.kind = EventKind::Rule}};
  EventLog log;
  for (const Event& event : events) {
    log.write(event);
  }
  Recorder recorder;
  log.replay(recorder);
  ASSERT_EQ(recorder.events.size(), events.size());
  for (std::size_t i = 0; i < events.size(); ++i) {
    SCOPED_TRACE(i);
    expectSame(recorder.events[i], events[i]);
  }
}

TEST(EventLog, KeepsATextWithANul) {
  EventLog log;
  log.write({.kind = EventKind::Raw, .text = std::string_view("a\0b", 3)});
  Recorder recorder;
  log.replay(recorder);
  EXPECT_EQ(recorder.texts(), std::string("a\0b|", 4));
}

TEST(EventLog, CanBeReplayedTwice) {
  EventLog log;
  log.write({.kind = EventKind::Text, .text = "a"});
  Recorder recorder;
  log.replay(recorder);
  log.replay(recorder);
  EXPECT_EQ(recorder.texts(), "a|a|");
}

TEST(EventLog, ReplaysAPart) {
  EventLog log;
  log.write({.kind = EventKind::Text, .text = "a"});
  const std::size_t begin = log.size();
  log.write({.kind = EventKind::Text, .text = "b"});
  log.write({.kind = EventKind::Text, .text = "c"});
  const std::size_t end = log.size();
  log.write({.kind = EventKind::Text, .text = "d"});
  Recorder recorder;
  log.replay(recorder, begin, end);
  log.replay(recorder, end, end);
  EXPECT_EQ(recorder.texts(), "b|c|");
}

TEST(EventLog, IsEmptyAtFirstAndAfterClear) {
  EventLog log;
  EXPECT_EQ(log.size(), 0u);
  log.write({.kind = EventKind::Rule});
  EXPECT_GT(log.size(), 0u);
  log.clear();
  EXPECT_EQ(log.size(), 0u);
  Recorder recorder;
  log.replay(recorder);
  EXPECT_TRUE(recorder.events.empty());
}

TEST(Cell, ReplaysItsTextWhereItHasNoOtherContent) {
  Cell cell;
  Recorder recorder;
  cell.replay(recorder);
  EXPECT_TRUE(recorder.events.empty());
  cell.text = "a\nb";
  cell.replay(recorder);
  ASSERT_EQ(recorder.events.size(), 1u);
  expectSame(recorder.events[0], {.kind = EventKind::Text, .text = "a\nb"});
}

TEST(Cell, ReplaysItsPartOfTheLog) {
  EventLog log;
  log.write({.kind = EventKind::Text, .text = "before"});
  Cell cell;
  cell.text = "plain";
  cell.content = &log;
  cell.contentBegin = log.size();
  log.write({.kind = EventKind::BeginSpan, .span = Span::Strong});
  log.write({.kind = EventKind::Text, .text = "plain"});
  log.write({.kind = EventKind::EndSpan, .span = Span::Strong});
  cell.contentEnd = log.size();
  log.write({.kind = EventKind::Text, .text = "after"});
  Recorder recorder;
  cell.replay(recorder);
  EXPECT_EQ(recorder.texts(), "|plain||");
}

}  // namespace
}  // namespace scrivalen::document

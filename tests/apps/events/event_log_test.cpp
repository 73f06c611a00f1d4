#include "events/event_log.h"

#include "recorded_events.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

Lines replayed(const EventLog& log) {
  RecordedEvents events;
  log.replay(events);
  return events.lines();
}

TEST(EventLog, ReplaysEveryFieldOfItsEvents) {
  EventLog log;
  log.write({.kind = EventKind::BeginHeading, .number = 2, .text = L"Größe 😀", .address = L"größe"});
  log.write({.kind = EventKind::BeginList, .ordered = true, .tight = true, .number = 7});
  log.write({.kind = EventKind::BeginItem, .task = Task::Done});
  log.write({.kind = EventKind::BeginCell, .align = Align::Right, .header = true});
  log.write({.kind = EventKind::BeginLink, .address = L"http://a", .title = L"A"});
  log.write({.kind = EventKind::Rule});
  EXPECT_EQ(replayed(log), (Lines{"BeginHeading 2 'Größe 😀' @größe", "BeginList ordered tight 7", "BeginItem done",
                                  "BeginCell header right", "BeginLink @http://a title 'A'", "Rule"}));
}

TEST(EventLog, CanBeReplayedTwice) {
  EventLog log;
  log.write({.kind = EventKind::Text, .text = L"a"});
  EXPECT_EQ(replayed(log), replayed(log));
}

TEST(EventLog, IsEmptyAtFirstAndAfterClear) {
  EventLog log;
  EXPECT_TRUE(log.isEmpty());
  log.write({.kind = EventKind::LineBreak});
  EXPECT_FALSE(log.isEmpty());
  log.clear();
  EXPECT_TRUE(log.isEmpty());
  EXPECT_EQ(replayed(log), Lines());
}

}  // namespace
}  // namespace scrivalen::command::test

#include "events/distributor.h"

#include "command_support.h"
#include "errors.h"
#include "formats.h"
#include "readers/markdown_reader.h"
#include "recorded_events.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

// What the writers receive is recorded here, because a writer is destroyed with its output.
struct Recorded {
  std::wstring title;
  RecordedEvents events;
};

Recorded* recorded = nullptr;
bool refuses = false;
bool throwsOnOpen = false;

class RecordingWriter : public DocumentWriter {
 public:
  bool open(const std::wstring&, const DocumentSettings& settings) override {
    recorded->title = settings.title;
    if (throwsOnOpen) {
      throw std::bad_alloc();
    }
    return !refuses;
  }
  void write(const Event& event) override { recorded->events.write(event); }
  bool close() override { return true; }
  std::wstring error() const override { return L"refused"; }
};

constexpr Format kRecording = {"recording", "rec",
                               []() -> std::unique_ptr<DocumentWriter> { return std::make_unique<RecordingWriter>(); }};

class DistributorTest : public testing::Test {
 protected:
  DistributorTest() {
    recorded = &recorded_;
    refuses = false;
    throwsOnOpen = false;
    outputs_.push_back(std::make_unique<Output>(kRecording, folder_.path("out.rec")));
    plan_.settings.title = L"File";
    plan_.titleFromHeading = true;
    plan_.poll = [] {};
    plan_.progress = [](std::size_t) {};
  }

  Lines distribute(std::string_view markdown) {
    Distributor distributor(outputs_, plan_);
    readMarkdown(markdown, Safety::Safe, distributor);
    distributor.finish();
    return recorded_.events.lines();
  }

  CommandRun folder_;
  Recorded recorded_;
  Outputs outputs_;
  Distributor::Plan plan_;
};

TEST_F(DistributorTest, TakesTheTitleFromTheFirstHeading) {
  EXPECT_EQ(distribute("text\n\n## One *two*\n\n# Three").size(), 12u);
  EXPECT_EQ(recorded_.title, L"One two");
}

TEST_F(DistributorTest, SkipsAnEmptyHeading) {
  distribute("#\n\n# Real");
  EXPECT_EQ(recorded_.title, L"Real");
}

TEST_F(DistributorTest, KeepsTheGivenTitle) {
  plan_.titleFromHeading = false;
  distribute("# Heading");
  EXPECT_EQ(recorded_.title, L"File");
}

TEST_F(DistributorTest, KeepsTheGivenTitleWhenThereIsNoHeading) {
  EXPECT_EQ(distribute("text"), (Lines{"BeginParagraph", "Text 'text'", "EndParagraph"}));
  EXPECT_EQ(recorded_.title, L"File");
}

TEST_F(DistributorTest, OpensItsOutputsEvenForAnEmptyDocument) {
  EXPECT_EQ(distribute(""), Lines());
  EXPECT_EQ(recorded_.title, L"File");
}

TEST_F(DistributorTest, PutsTheContentsAfterTheTitle) {
  plan_.contents = true;
  EXPECT_EQ(distribute("# T\n\n## A\n\n### B"),
            (Lines{"BeginHeading 1 'T' @t", "Text 'T'", "EndHeading 1", "BeginContents", "ContentsItem 2 'A' @a",
                   "ContentsItem 3 'B' @b", "EndContents", "BeginHeading 2 'A' @a", "Text 'A'", "EndHeading 2",
                   "BeginHeading 3 'B' @b", "Text 'B'", "EndHeading 3"}));
}

TEST_F(DistributorTest, PutsTheContentsFirstWhenTheDocumentBeginsWithoutATitle) {
  plan_.contents = true;
  EXPECT_EQ(distribute("x\n\n# A"),
            (Lines{"BeginContents", "ContentsItem 1 'A' @a", "EndContents", "BeginParagraph", "Text 'x'",
                   "EndParagraph", "BeginHeading 1 'A' @a", "Text 'A'", "EndHeading 1"}));
  EXPECT_EQ(recorded_.title, L"A");
}

TEST_F(DistributorTest, WritesNoEmptyContents) {
  plan_.contents = true;
  EXPECT_EQ(distribute("# T\n\nx"),
            (Lines{"BeginHeading 1 'T' @t", "Text 'T'", "EndHeading 1", "BeginParagraph", "Text 'x'", "EndParagraph"}));
}

// A text of @p count paragraphs, each of which emits three events.
std::string paragraphs(int count) {
  std::string markdown;
  for (int i = 0; i < count; ++i) {
    markdown += "text\n\n";
  }
  return markdown;
}

TEST_F(DistributorTest, StopsSoonAfterTheLastOutputFails) {
  refuses = true;
  EXPECT_THROW(distribute(paragraphs(30)), NoOutputLeft);
  EXPECT_EQ(outputs_[0]->error(), "refused");
  EXPECT_EQ(recorded_.events.lines(), Lines());
}

TEST_F(DistributorTest, WritesNothingAfterAnOutputThrowsWhileOpening) {
  throwsOnOpen = true;
  outputs_.push_back(std::make_unique<Output>(kRecording, folder_.path("never.rec")));
  Distributor distributor(outputs_, plan_);
  EXPECT_THROW(readMarkdown("# text\n\nmore", Safety::Safe, distributor), std::bad_alloc);
  for (const auto& output : outputs_) {
    output->write({.kind = EventKind::Rule});
  }
  EXPECT_EQ(recorded_.events.lines(), Lines());
}

TEST_F(DistributorTest, PollsEveryFewEventsAndPropagatesExceptions) {
  plan_.titleFromHeading = false;
  int polls = 0;
  plan_.poll = [&polls] {
    if (++polls == 2) {
      throw Interrupted();
    }
  };
  EXPECT_THROW(distribute(paragraphs(1000)), Interrupted);
  EXPECT_LT(recorded_.events.lines().size(), 200u);
}

TEST_F(DistributorTest, PollsWhileItHoldsEventsBack) {
  plan_.contents = true;
  plan_.poll = [] { throw Interrupted(); };
  EXPECT_THROW(distribute(paragraphs(30)), Interrupted);
}

}  // namespace
}  // namespace scrivalen::command::test

#include "document/distributor.h"

#include "command_support.h"
#include "errors.h"
#include "formats.h"
#include "readers/markdown_reader.h"
#include "recorded_events.h"

#include <gtest/gtest.h>

namespace scrivalen::command::test {
namespace {

// What a writer was told lands here, because the writer itself goes with its output.
struct Told {
  std::wstring title;
  RecordedEvents events;
};

Told* told = nullptr;
bool refuses = false;
bool raises = false;

class RecordingWriter : public DocumentWriter {
 public:
  bool open(const std::wstring&, const DocumentSettings& settings) override {
    told->title = settings.title;
    if (raises) {
      throw std::bad_alloc();
    }
    return !refuses;
  }
  void write(const Event& event) override { told->events.write(event); }
  bool close() override { return true; }
  std::wstring error() const override { return L"refused"; }
};

constexpr Format kRecording = {"recording", "rec",
                               []() -> std::unique_ptr<DocumentWriter> { return std::make_unique<RecordingWriter>(); }};

class DistributorTest : public testing::Test {
 protected:
  DistributorTest() {
    told = &told_;
    refuses = false;
    raises = false;
    outputs_.push_back(std::make_unique<Output>(kRecording, folder_.path("out.rec")));
    plan_.settings.title = L"File";
    plan_.titleFromHeading = true;
    plan_.look = [] {};
    plan_.progress = [](std::size_t) {};
  }

  Lines distribute(std::string_view markdown) {
    Distributor distributor(outputs_, plan_);
    readMarkdown(markdown, Safety::Safe, distributor);
    distributor.finish();
    return told_.events.lines();
  }

  CommandRun folder_;
  Told told_;
  Outputs outputs_;
  Distributor::Plan plan_;
};

TEST_F(DistributorTest, TakesTheTitleFromTheFirstHeading) {
  EXPECT_EQ(distribute("text\n\n## One *two*\n\n# Three").size(), 12u);
  EXPECT_EQ(told_.title, L"One two");
}

TEST_F(DistributorTest, PassesOverAHeadingWithoutAText) {
  distribute("#\n\n# Real");
  EXPECT_EQ(told_.title, L"Real");
}

TEST_F(DistributorTest, KeepsTheGivenTitle) {
  plan_.titleFromHeading = false;
  distribute("# Heading");
  EXPECT_EQ(told_.title, L"File");
}

TEST_F(DistributorTest, KeepsTheGivenTitleWhenThereIsNoHeading) {
  EXPECT_EQ(distribute("text"), (Lines{"BeginParagraph", "Text 'text'", "EndParagraph"}));
  EXPECT_EQ(told_.title, L"File");
}

TEST_F(DistributorTest, OpensItsOutputsForAnEmptyDocumentToo) {
  EXPECT_EQ(distribute(""), Lines());
  EXPECT_EQ(told_.title, L"File");
}

TEST_F(DistributorTest, PutsTheContentsBehindATitle) {
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
  EXPECT_EQ(told_.title, L"A");
}

TEST_F(DistributorTest, WritesNoContentsOfNothing) {
  plan_.contents = true;
  EXPECT_EQ(distribute("# T\n\nx"),
            (Lines{"BeginHeading 1 'T' @t", "Text 'T'", "EndHeading 1", "BeginParagraph", "Text 'x'", "EndParagraph"}));
}

// A text of so many paragraphs, each of which makes three events.
std::string paragraphs(int count) {
  std::string markdown;
  for (int i = 0; i < count; ++i) {
    markdown += "text\n\n";
  }
  return markdown;
}

TEST_F(DistributorTest, StopsSoonAfterTheLastOutputFailed) {
  refuses = true;
  EXPECT_THROW(distribute(paragraphs(30)), NoOutputLeft);
  EXPECT_EQ(outputs_[0]->error(), "refused");
  EXPECT_EQ(told_.events.lines(), Lines());
}

TEST_F(DistributorTest, WritesToNoOutputAfterOneRaisedInsteadOfOpening) {
  raises = true;
  outputs_.push_back(std::make_unique<Output>(kRecording, folder_.path("never.rec")));
  Distributor distributor(outputs_, plan_);
  EXPECT_THROW(readMarkdown("# text\n\nmore", Safety::Safe, distributor), std::bad_alloc);
  for (const auto& output : outputs_) {
    output->write({.kind = EventKind::Rule});
  }
  EXPECT_EQ(told_.events.lines(), Lines());
}

TEST_F(DistributorTest, LooksEveryFewEventsAndLetsThroughWhatThatRaises) {
  plan_.titleFromHeading = false;
  int looks = 0;
  plan_.look = [&looks] {
    if (++looks == 2) {
      throw Interrupted();
    }
  };
  EXPECT_THROW(distribute(paragraphs(1000)), Interrupted);
  EXPECT_LT(told_.events.lines().size(), 200u);
}

TEST_F(DistributorTest, LooksAtEventsThatAreHeldBackToo) {
  plan_.contents = true;
  plan_.look = [] { throw Interrupted(); };
  EXPECT_THROW(distribute(paragraphs(30)), Interrupted);
}

}  // namespace
}  // namespace scrivalen::command::test

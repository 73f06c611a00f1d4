#include "document/document.h"

#include "support/documents/recording_writer.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;
using scrivalen::test::kOtherRecordingFormat;
using scrivalen::test::kRecordingFormat;
using scrivalen::test::RecordedDocument;

namespace {

int cancelNever(void*, std::uint64_t, std::uint64_t) { return 0; }

}  // namespace

TEST(Document, PassesOnItsParts) {
  RecordedDocument document;
  document.beginParagraph(Align::Center);
  document.text("Read ");
  document.beginSpan(Span::Strong);
  document.text("this");
  document.end();
  document.beginLink("https://example.org/", "Example");
  document.text(" page");
  document.end();
  document.lineBreak();
  document.end();
  document.rule();
  EXPECT_EQ(document.content(),
            "paragraph align 2\ntext 'Read '\nspan kind 1\ntext 'this'\nend span kind 1\n"
            "link ->https://example.org/ title 'Example'\ntext ' page'\nend link\ntext '\\n'\n"
            "end paragraph align 2\nrule\n");
}

TEST(Document, PassesOnListsQuotesAndCode) {
  RecordedDocument document;
  document.beginList(true, 3, true);
  document.beginItem(Task::Done);
  document.text("done");
  document.beginQuote();
  document.beginCode("cpp");
  document.text("int\ti;\r\n");
  document.end();
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.content(),
            "list 3 ordered tight\nitem done\ntext 'done'\nquote\ncode 'cpp'\ntext 'int\\ti;'\ntext '\\n'\n"
            "end code\nend quote\nend item done\nend list 3 ordered tight\n");
}

TEST(Document, PassesOnContents) {
  RecordedDocument document;
  document.beginContents();
  document.contentsItem(1, "a", "A");
  document.end();
  document.rule();
  EXPECT_EQ(document.content(), "contents\nitem 1 'A' @a\nend contents\nrule\n");
}

TEST(Document, KnowsAHeadingsTextBeforeIt) {
  RecordedDocument document;
  document.beginHeading(2, {}, Align::Right);
  document.text("Prices ");
  document.beginSpan(Span::Emphasis);
  document.text("per\nyear");
  document.end();
  document.end();
  EXPECT_EQ(document.content(),
            "heading 2 align 3 'Prices per year' @prices-per-year\ntext 'Prices '\nspan kind 2\n"
            "text 'per\\nyear'\nend span kind 2\nend heading 2 align 3\n");
}

TEST(Document, KeepsTheIdThatAHostGaveAHeading) {
  RecordedDocument document;
  document.beginHeading(1, "top", Align::Auto);
  document.text("One");
  document.end();
  document.heading(1, "One");
  document.heading(1, "One");
  EXPECT_EQ(document.content(),
            "heading 1 'One' @top\ntext 'One'\nend heading 1\n"
            "heading 1 'One' @one\ntext 'One'\nend heading 1\n"
            "heading 1 'One' @one-1\ntext 'One'\nend heading 1\n");
}

TEST(Document, CountsTheFirstOfTwoEqualIds) {
  RecordedDocument document;
  document.beginParagraph(Align::Auto);
  document.anchor("here");
  document.anchor("here");
  document.end();
  EXPECT_EQ(document.content(), "paragraph\nanchor @here\nend paragraph\n");
  EXPECT_EQ(document.warnings(), "1 x the id 'here' is in use already; the first place counts\n");
}

TEST(Document, WarnsOfALinkToNowhere) {
  RecordedDocument document;
  document.beginParagraph(Align::Auto);
  for (const char* address : {"#later", "#nowhere", "#nowhere"}) {
    document.beginLink(address, {});
    document.text("x");
    document.end();
  }
  document.end();
  document.heading(1, "Later");
  EXPECT_EQ(document.warnings(), "1 x a link leads to '#nowhere', which is nowhere in the document\n");
}

TEST(Document, ShowsItsTitleWhereNoHeadingComesFirst) {
  RecordedDocument document;
  document.set("title", "Ledger");
  document.paragraph("text");
  EXPECT_EQ(document.content(), "title 'Ledger'\nparagraph\ntext 'text'\nend paragraph\n");
}

TEST(Document, ShowsNoTitleThatIsAPropertyOnly) {
  RecordedDocument document;
  document.set("title", "ledger-2024");
  document.set("show-title", "no");
  document.paragraph("text");
  EXPECT_EQ(document.content(), "paragraph\ntext 'text'\nend paragraph\n");
}

TEST(Document, ShowsNoTitleBeforeAHeading) {
  RecordedDocument document;
  document.set("title", "Ledger");
  document.heading(1, "Prices");
  document.paragraph("text");
  EXPECT_EQ(document.content(),
            "heading 1 'Prices' @prices\ntext 'Prices'\nend heading 1\n"
            "paragraph\ntext 'text'\nend paragraph\n");
}

TEST(Document, ShowsTheTitleThatItsFormatHas) {
  RecordedDocument document(2);
  document.set("title", "Ledger");
  document.set("text.title", "Plain ledger");
  document.paragraph("text");
  EXPECT_EQ(document.content(), "title 'Plain ledger'\nparagraph\ntext 'text'\nend paragraph\n");
}

TEST(Document, ShowsItsTitleAfterMarkupOfAnotherFormat) {
  RecordedDocument document;
  document.set("title", "Ledger");
  document.raw("html", "<hr>");
  document.paragraph("text");
  EXPECT_EQ(document.content(), "raw '<hr>' ->html\ntitle 'Ledger'\nparagraph\ntext 'text'\nend paragraph\n");
}

TEST(Document, GivesAHeadingItsIdBeforeTheAnchorsInIt) {
  RecordedDocument document;
  document.beginHeading(1, "a", Align::Auto);
  document.text("x");
  document.anchor("a");
  document.end();
  EXPECT_EQ(document.content(), "heading 1 'x' @a\ntext 'x'\nend heading 1\n");
}

TEST(Document, ForgetsTheBytesOfASettingThatIsRefused) {
  RecordedDocument document;
  document.set("nothing", "\xFF");
  EXPECT_EQ(document.warnings(), "");
}

TEST(Document, LooksIntoASectionForItsFirstBlock) {
  RecordedDocument document;
  document.set("title", "Ledger");
  document.beginSection("May", "may");
  document.rule();
  EXPECT_EQ(document.content(), "section 'May' @may\ntitle 'Ledger'\nrule\nend section\n");
}

TEST(Document, WithoutContentIsDeliveredEmpty) {
  RecordedDocument document;
  document.set("title", "Ledger");
  EXPECT_EQ(document.close(), Status::Ok);
  EXPECT_EQ(document.lines(), "begin\nfinish\n");
}

TEST(Document, MakesAPictureBetweenBlocksAParagraph) {
  RecordedDocument document;
  document.image(nullptr, "a map", 0, "there is no map");
  EXPECT_EQ(document.content(), "paragraph\nimage 'a map'\nend paragraph\n");
  EXPECT_EQ(document.warnings(), "1 x there is no map\n");
}

TEST(Document, JoinsALineEndThatWasCutInTwo) {
  RecordedDocument document;
  document.beginParagraph(Align::Auto);
  document.text("a\r");
  document.text("\nb\r");
  document.text("c");
  document.end();
  EXPECT_EQ(document.content(), "paragraph\ntext 'a'\ntext '\\n'\ntext 'b'\ntext '\\n'\ntext 'c'\nend paragraph\n");
}

TEST(Document, CutsAnUncleanTextBetweenCharacters) {
  RecordedDocument document;
  std::string text = "\x01";
  std::string expected = "\xEF\xBF\xBD";
  for (int i = 0; i < 5000; ++i) {
    text += "\xE4\xB8\xAD";
    expected += "\xE4\xB8\xAD";
  }
  document.beginParagraph(Align::Auto);
  document.text(text);
  document.end();
  std::string joined;
  std::string content = document.content();
  for (std::size_t at = content.find("text '"); at != content.npos; at = content.find("text '", at + 1)) {
    joined += content.substr(at + 6, content.find("'\n", at) - at - 6);
  }
  EXPECT_EQ(joined, expected);
  EXPECT_EQ(document.warnings(), "1 x control characters, replaced by U+FFFD\n");
}

TEST(Document, CountsTheBytesThatAreNotUtf8) {
  RecordedDocument document;
  document.paragraph("a\xFF\xFE");
  document.paragraph("b\xFF");
  EXPECT_EQ(document.warnings(), "3 x bytes that are not UTF-8, replaced by U+FFFD\n");
}

TEST(Document, KeepsTheBytesOfPaths) {
  RecordedDocument document;
  EXPECT_EQ(document.set("header-image", "a\xFF.png"), Status::Ok);
  EXPECT_EQ(document.warnings(), "");
}

TEST(Document, ClosesWhatIsOpen) {
  RecordedDocument document;
  document.beginList(false, 0, false);
  document.beginItem(Task::None);
  document.beginHeading(1, {}, Align::Auto);
  document.text("x");
  EXPECT_EQ(document.close(), Status::Ok);
  EXPECT_EQ(document.content(), "list\nitem\nheading 1 'x' @x\ntext 'x'\nend heading 1\nend item\nend list\n");
}

TEST(Document, ReturnsTheSameWhenClosedAgain) {
  RecordedDocument document;
  EXPECT_EQ(document.close(), Status::Ok);
  EXPECT_EQ(document.close(), Status::Ok);
  EXPECT_EQ(document.paragraph("late"), Status::Misuse);
  EXPECT_STREQ(document.error(), "the document is closed");
}

TEST(Document, NeedsAnOutput) {
  Document document;
  EXPECT_EQ(document.open(), Status::Misuse);
  EXPECT_STREQ(document.error(), "the document has no outputs");
  EXPECT_EQ(document.paragraph("x"), Status::Misuse);
  EXPECT_EQ(document.close(), Status::Misuse);
  EXPECT_EQ(document.result(), Status::Ok);
}

TEST(Document, TakesSettingsOnlyBeforeItsContent) {
  RecordedDocument document;
  document.paragraph("x");
  EXPECT_EQ(document.set("title", "late"), Status::Misuse);
  EXPECT_STREQ(document.error(), "a setting comes before the first content");
  EXPECT_EQ(document.setProgress(&cancelNever, nullptr), Status::Misuse);
  EXPECT_EQ(document.addFile(kRecordingFormat, "x"), Status::Misuse);
  EXPECT_EQ(document.open(), Status::Misuse);
}

TEST(Document, RefusesAnUnknownSetting) {
  RecordedDocument document;
  EXPECT_EQ(document.set("colour", "red"), Status::UnknownSetting);
  EXPECT_NE(std::string(document.error()).find("colour"), std::string::npos);
  EXPECT_EQ(document.result(), Status::Ok);
}

TEST(Document, KeepsTheReasonOfTheLastCallThatWasNotTaken) {
  RecordedDocument document;
  EXPECT_STREQ(document.error(), "");
  EXPECT_EQ(document.end(), Status::Misuse);
  EXPECT_EQ(document.paragraph("x"), Status::Ok);
  EXPECT_STREQ(document.error(), "nothing is open that could end");
  document.failAfter(0);
  EXPECT_EQ(document.close(), Status::FileError);
  EXPECT_STREQ(document.error(), "cannot write the stream of text: No space left on device");
}

TEST(Document, IsNotOpenedByACallThatIsRefused) {
  RecordedDocument document;
  EXPECT_EQ(document.end(), Status::Misuse);
  EXPECT_EQ(document.text("x"), Status::Misuse);
  EXPECT_EQ(document.beginItem(Task::None), Status::Misuse);
  EXPECT_EQ(document.beginHeading(7, {}, Align::Auto), Status::Misuse);
  EXPECT_EQ(document.cell("x"), Status::Misuse);
  EXPECT_EQ(document.set("title", "still possible"), Status::Ok);
}

// What may be in what: each part is begun in each place.
TEST(Nesting, LetsEachPartBeWhereItBelongs) {
  const auto beginPart = [](Document& document, int part) {
    switch (part) {
      case 0: return document.beginSection("s", {});
      case 1: return document.beginHeading(1, {}, Align::Auto);
      case 2: return document.beginParagraph(Align::Auto);
      case 3: return document.beginQuote();
      case 4: return document.beginList(false, 0, false);
      case 5: return document.beginItem(Task::None);
      case 6: return document.beginCode({});
      case 7: return document.beginContents();
      case 8: return document.beginTable({}, {});
      case 9: return document.beginRow(false);
      case 10: return document.beginCell({});
      case 11: return document.beginSpan(Span::Strong);
      case 12: return document.beginLink("x", {});
      default: return Status::Ok;
    }
  };
  const std::vector<int> places[] = {{},  {0}, {1}, {2},    {3},        {4},     {4, 5},
                                     {6}, {7}, {8}, {8, 9}, {8, 9, 10}, {2, 11}, {2, 12}};
  // A row for each place, a column for each part.
  const std::string expected[] = {"#hpql.cot....", ".hpql.cot....", "...........sa", "...........sa", ".hpql.cot....",
                                  ".....i.......", ".hpql.cot..sa", ".............", ".............", ".........r...",
                                  "..........e..", "...........sa", "...........sa", "...........s."};
  const std::string_view names = "#hpqlicotresa";
  for (std::size_t place = 0; place < std::size(places); ++place) {
    std::string found;
    for (int part = 0; part < 13; ++part) {
      RecordedDocument document;
      for (const int outer : places[place]) {
        EXPECT_EQ(beginPart(document, outer), Status::Ok);
      }
      const Status status = beginPart(document, part);
      found += status == Status::Ok ? names[static_cast<std::size_t>(part)] : '.';
      EXPECT_TRUE(status == Status::Ok || status == Status::Misuse);
    }
    EXPECT_EQ(found, expected[place]) << "place " << place;
  }
}

TEST(Nesting, SaysWhatCannotBeWhere) {
  RecordedDocument document;
  document.beginParagraph(Align::Auto);
  EXPECT_EQ(document.beginTable({}, {}), Status::Misuse);
  EXPECT_STREQ(document.error(), "a table cannot be in a paragraph");
  document.beginLink("x", {});
  document.beginSpan(Span::Code);
  EXPECT_EQ(document.beginLink("y", {}), Status::Misuse);
  EXPECT_STREQ(document.error(), "a link cannot be in a link");
  document.end();
  document.end();
  document.end();
  EXPECT_EQ(document.text("x"), Status::Misuse);
  EXPECT_STREQ(document.error(), "text cannot be in the document");
}

TEST(Nesting, LeavesAnOpenBlockAloneWhenAWholeOneIsRefused) {
  RecordedDocument document;
  document.beginHeading(1, {}, Align::Auto);
  EXPECT_EQ(document.heading(1, "no"), Status::Misuse);
  EXPECT_EQ(document.paragraph("no"), Status::Misuse);
  EXPECT_EQ(document.text("yes"), Status::Ok);
  EXPECT_EQ(document.end(), Status::Ok);
  EXPECT_EQ(document.content(), "heading 1 'yes' @yes\ntext 'yes'\nend heading 1\n");
}

TEST(Nesting, EndsAtAThousandParts) {
  RecordedDocument document;
  for (int i = 0; i < 1000; ++i) {
    ASSERT_EQ(document.beginQuote(), Status::Ok);
  }
  EXPECT_EQ(document.beginQuote(), Status::Misuse);
  EXPECT_STREQ(document.error(), "the parts are nested deeper than 1,000");
  EXPECT_EQ(document.close(), Status::Ok);
}

TEST(DocumentFailure, SilencesOneOutputAndLetsTheOthersGoOn) {
  RecordedDocument document(2);
  document.failAfter(0);
  for (int i = 0; i < 5000; ++i) {
    EXPECT_EQ(document.paragraph("a paragraph of some length"), Status::Ok);
  }
  EXPECT_EQ(document.close(), Status::FileError);
  EXPECT_STREQ(document.error(), "cannot write the stream of text: No space left on device");
  EXPECT_EQ(document.output(0)->result(), Status::FileError);
  EXPECT_EQ(document.output(1)->result(), Status::Ok);
  EXPECT_STREQ(document.output(1)->error(), "");
}

TEST(DocumentFailure, RefusesContentWhenNoOutputIsLeft) {
  RecordedDocument document;
  document.failAfter(0);
  Status status = Status::Ok;
  for (int i = 0; i < 5000 && status == Status::Ok; ++i) {
    status = document.paragraph("a paragraph of some length");
  }
  EXPECT_EQ(status, Status::FileError);
  EXPECT_EQ(document.paragraph("more"), Status::FileError);
  EXPECT_EQ(document.close(), Status::FileError);
}

TEST(DocumentProgress, HearsOfRowsAndBytes) {
  struct Heard {
    int calls = 0;
    std::uint64_t rows = 0;
    std::uint64_t bytes = 0;
  } heard;
  RecordedDocument document;
  document.setProgress(
      [](void* user, std::uint64_t rows, std::uint64_t bytes) {
        auto& all = *static_cast<Heard*>(user);
        ++all.calls;
        all.rows = rows;
        all.bytes = bytes;
        return 0;
      },
      &heard);
  document.beginTable({}, {});
  for (int i = 0; i < 20000; ++i) {
    document.beginRow(false);
    document.cell("0123456789");
    document.end();
  }
  const std::size_t size = document.lines().size();
  EXPECT_EQ(heard.rows, 20000u);
  EXPECT_EQ(heard.bytes, size);
  EXPECT_GE(heard.calls, static_cast<int>(size / 65536));
}

TEST(DocumentProgress, CancelsTheDocument) {
  RecordedDocument document;
  document.setProgress([](void*, std::uint64_t, std::uint64_t bytes) { return bytes >= 65536 ? 1 : 0; }, nullptr);
  Status status = Status::Ok;
  for (int i = 0; i < 5000 && status == Status::Ok; ++i) {
    status = document.paragraph("a paragraph of some length");
  }
  EXPECT_EQ(status, Status::Cancelled);
  EXPECT_EQ(document.close(), Status::Cancelled);
  EXPECT_STREQ(document.error(), "the document was cancelled");
  EXPECT_EQ(document.output(0)->result(), Status::Cancelled);
  EXPECT_EQ(document.lines().size(), 65536u);
}

#include "api/api_support.h"

#include <gtest/gtest.h>

using namespace scrivalen::test;

TEST(DocumentOrder, AVersionAndFormatsNeedNoDocument) {
  EXPECT_STREQ(scrivalen_version(), "1.1.0");
  EXPECT_STREQ(scrivalen_format(0), "text");
  EXPECT_NE(scrivalen_format(formats().size()), nullptr) << "compiled help";
  EXPECT_EQ(scrivalen_format(formats().size() + 1), nullptr);
  EXPECT_EQ(scrivalen_format(kNul), nullptr);
}

TEST(DocumentOrder, EveryFormatTakesEveryCall) {
  for (const std::string& format : formats()) {
    Written document(format.c_str());
    for (const Step& step : contentSteps()) {
      EXPECT_EQ(step.call(document), SCRIVALEN_OK) << format << ": " << step.name << ": " << document.error();
    }
    EXPECT_NE(document.closed(), "");
    EXPECT_EQ(document.result, SCRIVALEN_OK) << document.error();
  }
}

TEST(DocumentOrder, ADocumentNeedsAnOutput) {
  const Handle document(scrivalen_new());
  EXPECT_EQ(scrivalen_open(document.get()), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_paragraph(document.get(), "text", kNul), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_MISUSE);
  EXPECT_STREQ(scrivalen_error(document.get()), "the document has no outputs");
  MemoryStream stream;
  EXPECT_EQ(scrivalen_add_stream(document.get(), "text", MemoryStream::write, &stream), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_paragraph(document.get(), "text", kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_close(document.get()), SCRIVALEN_OK);
  EXPECT_EQ(stream.bytes, "text\n");
}

TEST(DocumentOrder, OutputsSettingsAndProgressComeBeforeTheContent) {
  Written document;
  EXPECT_EQ(scrivalen_paragraph(document, "text", kNul), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_add_file(document, "late.txt", nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "an output comes before the first content");
  EXPECT_EQ(scrivalen_add_file(document, "late", "word"), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_add_stream(document, "text", MemoryStream::write, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_add_stream(document, "word", MemoryStream::write, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_set(document, "title", "late"), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a setting comes before the first content");
  EXPECT_EQ(scrivalen_set_progress(document, nullptr, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_output_count(document), 1u);
  EXPECT_EQ(document.closed(), "text\n");
  EXPECT_EQ(document.result, SCRIVALEN_OK);
}

TEST(DocumentOrder, ClosingAgainReturnsTheSame) {
  Written document;
  EXPECT_EQ(scrivalen_open(document), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_close(document), SCRIVALEN_OK);

  Written failing;
  failing.stream.room = 0;
  scrivalen_paragraph(failing, "text", kNul);
  EXPECT_EQ(scrivalen_close(failing), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(scrivalen_close(failing), SCRIVALEN_FILE_ERROR);
  EXPECT_EQ(failing.stream.calls, 1);
}

TEST(DocumentOrder, NothingIsTakenAfterClosing) {
  Written document;
  scrivalen_paragraph(document, "text", kNul);
  scrivalen_close(document);
  for (const Step& step : contentSteps()) {
    EXPECT_EQ(step.call(document), SCRIVALEN_MISUSE) << step.name;
  }
  EXPECT_EQ(document.error(), "the document is closed");
  EXPECT_EQ(document.closed(), "text\n");
}

TEST(DocumentOrder, ClosingEndsWhatIsOpen) {
  Written document;
  scrivalen_begin_quote(document);
  scrivalen_begin_paragraph(document, nullptr);
  scrivalen_begin_span(document, SCRIVALEN_STRONG);
  scrivalen_text(document, "open", kNul);
  EXPECT_EQ(document.closed(), "> open\n");
  EXPECT_EQ(document.result, SCRIVALEN_OK);
}

TEST(DocumentOrder, WarningsComeAfterClosing) {
  Written document;
  scrivalen_paragraph(document, "bad \xFF byte", kNul);
  EXPECT_EQ(warningsOf(document), "");
  EXPECT_EQ(document.closed(), "bad \xEF\xBF\xBD byte\n");
  EXPECT_EQ(warningsOf(document), "input 1 1 bytes that are not UTF-8, replaced by U+FFFD\n");
  EXPECT_EQ(warningsOf(document), "");
}

TEST(DocumentOrder, AMisplacedPartIsRefusedAndTheDocumentGoesOn) {
  Written document;
  EXPECT_EQ(scrivalen_end(document), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "nothing is open that could end");
  EXPECT_EQ(scrivalen_begin_row(document, 0), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a row cannot be in the document");
  EXPECT_EQ(scrivalen_cell(document, "cell", kNul), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a cell cannot be in the document");
  EXPECT_EQ(scrivalen_rows(document, nullptr, 0, 0), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_text(document, "text", kNul), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "text cannot be in the document");
  EXPECT_EQ(scrivalen_contents_item(document, 1, "id", "text", kNul), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_begin_quote(document), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_section(document, "section", nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a section cannot be in a quote");
  EXPECT_EQ(scrivalen_begin_paragraph(document, nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_quote(document), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_begin_link(document, "#a", nullptr), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_begin_link(document, "#b", nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a link cannot be in a link");
  EXPECT_EQ(scrivalen_text(document, "text", kNul), SCRIVALEN_OK);
  EXPECT_EQ(document.closed(), "> text\n");
  EXPECT_EQ(document.result, SCRIVALEN_OK);
}

TEST(DocumentOrder, NestingEndsAtAThousand) {
  Written document;
  for (int depth = 0; depth < 1000; ++depth) {
    EXPECT_EQ(scrivalen_begin_quote(document), SCRIVALEN_OK) << depth;
  }
  EXPECT_EQ(scrivalen_begin_quote(document), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "the parts are nested deeper than 1,000");
  document.closed();
  EXPECT_EQ(document.result, SCRIVALEN_OK);
}

TEST(DocumentOrder, ACellHasOneValueAndNoText) {
  Written document;
  scrivalen_begin_table(document, nullptr, 1, nullptr);
  scrivalen_begin_row(document, 0);
  scrivalen_begin_cell(document, nullptr);
  EXPECT_EQ(scrivalen_cell_integer(document, 7), SCRIVALEN_OK);
  EXPECT_EQ(scrivalen_cell_integer(document, 8), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.error(), "a cell has one value, and no text");
  EXPECT_EQ(scrivalen_text(document, "text", kNul), SCRIVALEN_MISUSE);
  EXPECT_EQ(document.closed(), "7\n");
  EXPECT_EQ(document.result, SCRIVALEN_OK);
}

TEST(DocumentOrder, ANullDocumentIsAMisuse) {
  for (const Step& step : contentSteps()) {
    EXPECT_EQ(step.call(nullptr), SCRIVALEN_MISUSE) << step.name;
  }
  scrivalen_free(nullptr);
  EXPECT_EQ(scrivalen_add_file(nullptr, "a.txt", nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_add_stream(nullptr, "text", MemoryStream::write, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_set(nullptr, "title", "a"), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_set_progress(nullptr, nullptr, nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_open(nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_close(nullptr), SCRIVALEN_MISUSE);
  EXPECT_EQ(scrivalen_result(nullptr), SCRIVALEN_MISUSE);
  EXPECT_STREQ(scrivalen_error(nullptr), "");
  EXPECT_EQ(scrivalen_output_count(nullptr), 0u);
  EXPECT_EQ(scrivalen_output_result(nullptr, 0), SCRIVALEN_MISUSE);
  EXPECT_STREQ(scrivalen_output_error(nullptr, 0), "");
  EXPECT_EQ(scrivalen_next_warning(nullptr, nullptr), 0);
}

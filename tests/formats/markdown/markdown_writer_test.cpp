#include "formats/markdown/markdown_writer.h"

#include "document/pictures/picture.h"
#include "support/documents/made_document.h"
#include "support/documents/pictures.h"

#include <gtest/gtest.h>

using namespace scrivalen::document;
using scrivalen::test::MadeDocument;

namespace {

const Format kMarkdown{"markdown", &scrivalen::markdown::createMarkdownDocumentWriter};

class MarkdownDocument : public MadeDocument {
 public:
  MarkdownDocument() : MadeDocument(kMarkdown) {}
};

std::string paragraphOf(std::string_view text) {
  MarkdownDocument document;
  document.paragraph(text);
  return document.bytes();
}

std::string cellOf(std::string_view text) {
  MarkdownDocument document;
  document.beginTable({}, {});
  document.addRow({"h"}, true);
  document.addRow({text});
  const std::string& all = document.bytes();
  const std::size_t begin = all.find('\n', all.find('\n') + 1) + 1;
  return all.substr(begin);
}

}  // namespace

TEST(MarkdownDocumentWriter, WritesNothingForAnEmptyDocument) { EXPECT_EQ(MarkdownDocument().bytes(), ""); }

TEST(MarkdownDocumentWriter, SeparatesBlocksByBlankLines) {
  MarkdownDocument document;
  document.set("title", "Report");
  document.paragraph("One");
  document.heading(2, "Two");
  document.rule();
  document.beginQuote();
  document.paragraph("said");
  document.paragraph("again");
  document.end();
  EXPECT_EQ(document.bytes(), "# Report\n\nOne\n\n## Two\n\n***\n\n> said\n>\n> again\n");
}

TEST(MarkdownDocumentWriter, WritesSpans) {
  MarkdownDocument document;
  document.beginParagraph(Align::Auto);
  document.addSpan(Span::Strong, "strong");
  document.text(", ");
  document.addSpan(Span::Emphasis, "emphasis");
  document.text(", ");
  document.addSpan(Span::Deleted, "deleted");
  document.text(", ");
  document.addSpan(Span::Code, "a `b`");
  document.text(" and H");
  document.addSpan(Span::Emphasis, "2");
  document.text("O");
  document.end();
  EXPECT_EQ(document.bytes(), "**strong**, _emphasis_, ~~deleted~~, `` a `b` `` and H*2*O\n");
}

TEST(MarkdownDocumentWriter, MovesBlanksOutOfSpans) {
  MarkdownDocument document;
  document.beginParagraph(Align::Auto);
  document.text("a");
  document.addSpan(Span::Strong, " b ");
  document.text("c");
  document.end();
  EXPECT_EQ(document.bytes(), "a **b** c\n");
}

TEST(MarkdownDocumentWriter, WritesALetterAsAReferenceWhereItWouldPreventAMark) {
  MarkdownDocument document;
  document.beginParagraph(Align::Auto);
  document.addSpan(Span::Strong, "\"b\"");
  document.text("c d");
  document.addSpan(Span::Strong, "(e)");
  document.end();
  EXPECT_EQ(document.bytes(), "**\"b\"**&#99; &#100;**(e)**\n");
}

TEST(MarkdownDocumentWriter, KnowsTheLettersOfManyScripts) {
  for (const char* letter : {"\u00E9", "\u03C9", "\u0436", "\u0565", "\u05D0", "\u0648", "\u06A9", "\u0905", "\u0E01",
                             "\u10D0", "\u3042", "\u4E2D", "\uD55C"}) {
    MarkdownDocument document;
    document.beginParagraph(Align::Auto);
    document.text(letter);
    document.addSpan(Span::Strong, letter);
    document.text(letter);
    document.end();
    EXPECT_EQ(document.bytes(), std::string(letter) + "**" + letter + "**" + letter + "\n");
  }
}

TEST(MarkdownDocumentWriter, EscapesInAddressesOnlyWhatCouldBeACharacterReference) {
  const auto linkTo = [](std::string_view address) {
    MarkdownDocument document;
    document.beginParagraph(Align::Auto);
    document.beginLink(address, {});
    document.text("x");
    document.end();
    document.end();
    return document.bytes();
  };
  EXPECT_EQ(linkTo("https://example.org/a?b=c&d=e&"), "[x](https://example.org/a?b=c&d=e&)\n");
  EXPECT_EQ(linkTo("a?b&amp;c&#38;d&;e"), "[x](a?b\\&amp;c\\&#38;d\\&;e)\n");
}

TEST(MarkdownDocumentWriter, WritesALinkThatShowsItsAddressInAngleBrackets) {
  const auto link = [](std::string_view address, const std::vector<std::string>& texts) {
    MarkdownDocument document;
    document.beginParagraph(Align::Auto);
    document.text("a");
    document.beginLink(address, {});
    for (const std::string& text : texts) {
      document.text(text);
    }
    document.end();
    document.text("b");
    document.end();
    return document.bytes();
  };
  EXPECT_EQ(link("https://x.org/a_b?c=d&e=f", {"https://x.org", "/a_b?c=d&e=f"}), "a<https://x.org/a_b?c=d&e=f>b\n");
  EXPECT_EQ(link("mailto:a.b@x.org", {"a.b@x.org"}), "a<a.b@x.org>b\n");
  EXPECT_EQ(link("https://x.org/", {"https://x.org"}), "a[https\\://x.org](<https://x.org/>)b\n");
  EXPECT_EQ(link("https://x.org/&lt;", {"https://x.org/&lt;"}), "a[https\\://x.org/\\&lt;](<https://x.org/\\&lt;>)b\n");
  EXPECT_EQ(link("notes.md", {"notes.md"}), "a[notes.md](<notes.md>)b\n");
  EXPECT_EQ(link("mailto:a", {"a"}), "a[a](<mailto:a>)b\n");
}

TEST(MarkdownDocumentWriter, JoinsSpansThatTouch) {
  MarkdownDocument document;
  document.beginParagraph(Align::Auto);
  document.addSpan(Span::Strong, "a");
  document.addSpan(Span::Strong, "b");
  document.addSpan(Span::Code, "c");
  document.addSpan(Span::Code, "d");
  document.end();
  EXPECT_EQ(document.bytes(), "**ab**`cd`\n");
}

TEST(MarkdownDocumentWriter, WritesLinksAndPictures) {
  MarkdownDocument document;
  std::string reason;
  document.beginParagraph(Align::Auto);
  document.beginLink("https://example.org/", "A \"title\"");
  document.text("plain");
  document.end();
  document.text(" ");
  document.beginLink("a file (1)", {});
  document.text("odd");
  document.end();
  document.text("!");
  document.beginLink("#two", {});
  document.text("inside");
  document.end();
  document.end();
  document.image(Picture::read(scrivalen::test::greyPng(1, 1), reason), "a [dot]", 0, {});
  document.image(nullptr, "a map", 0, "missing");
  const std::string& all = document.bytes();
  EXPECT_EQ(all.substr(0, all.find("iVBOR")),
            "[plain](https://example.org/ \"A \\\"title\\\"\") [odd](<a file (1)>)\\![inside](#two)\n\n"
            "![a \\[dot\\]](data:image/png;base64,");
  EXPECT_EQ(all.substr(all.size() - 10), "=)\n\na map\n");
}

TEST(MarkdownDocumentWriter, EscapesWhatWouldBeMarkup) {
  EXPECT_EQ(paragraphOf("*a* _b_ `c` [d] <e> ~f~ \\ &amp; AT&T a<1"),
            "\\*a\\* \\_b\\_ \\`c\\` \\[d\\] \\<e> \\~f\\~ \\\\ \\&amp; AT&T a<1\n");
  EXPECT_EQ(paragraphOf("https://a.example www.b.example c@d.example ratio 1:2"),
            "https\\://a.example www\\.b.example c\\@d.example ratio 1:2\n");
  EXPECT_EQ(paragraphOf("snake_case _x"), "snake_case \\_x\n");
}

TEST(MarkdownDocumentWriter, EscapesWhatWouldBeABlock) {
  EXPECT_EQ(paragraphOf("# a\n- b\n+ c\n12. d\n> e\n===\n--- f\n| g |\n1.5\n-5\n#tag"),
            "\\# a\\\n\\- b\\\n\\+ c\\\n12\\. d\\\n\\> e\\\n\\===\\\n\\--- f\\\n\\| g |\\\n1.5\\\n-5\\\n#tag\n");
  EXPECT_EQ(paragraphOf("    code"), "code\n");
}

TEST(MarkdownDocumentWriter, EscapesTheEndOfAHeading) {
  MarkdownDocument document;
  document.heading(1, "C# and #\nmore ##");
  EXPECT_EQ(document.bytes(), "# C# and \\#<br>more \\##\n");
}

TEST(MarkdownDocumentWriter, KeepsLineBreaks) { EXPECT_EQ(paragraphOf("a\nb\n\nc\n"), "a\\\nb\\\n\\\nc<br>\n"); }

TEST(MarkdownDocumentWriter, WritesTightAndLooseLists) {
  MarkdownDocument document;
  for (const bool isTight : {true, false}) {
    document.beginList(true, 9, isTight);
    for (const char* text : {"a", "b"}) {
      document.beginItem(Task::None);
      document.text(text);
      document.beginCode("sh");
      document.text("ls\n");
      document.end();
      document.end();
    }
    document.end();
  }
  EXPECT_EQ(document.bytes(),
            "9. a\n   ```sh\n   ls\n   ```\n10. b\n    ```sh\n    ls\n    ```\n\n"
            "9) a\n\n   ```sh\n   ls\n   ```\n\n10) b\n\n    ```sh\n    ls\n    ```\n");
}

TEST(MarkdownDocumentWriter, WritesTasksAndEmptyItems) {
  MarkdownDocument document;
  document.beginList(false, 0, true);
  document.beginItem(Task::Open);
  document.text("- open");
  document.end();
  document.beginItem(Task::Done);
  document.end();
  document.beginItem(Task::None);
  document.end();
  document.end();
  EXPECT_EQ(document.bytes(), "- [ ] - open\n- [x] \n-\n");
}

TEST(MarkdownDocumentWriter, KeepsBlocksApartInTightItems) {
  MarkdownDocument document;
  document.beginList(false, 0, true);
  document.beginItem(Task::None);
  document.text("a");
  document.beginList(true, 3, true);
  document.beginItem(Task::None);
  document.text("b");
  document.end();
  document.end();
  document.text("c");
  EXPECT_EQ(document.bytes(), "- a\n  <!-- -->\n  3. b\n  <!-- -->\n  c\n");
}

TEST(MarkdownDocumentWriter, ChoosesFencesThatTheCodeDoesNotEnd) {
  MarkdownDocument document;
  document.beginCode({});
  document.text("```\n\ta\n````");
  document.end();
  document.beginCode("a`b");
  document.text("~~~\n");
  document.end();
  EXPECT_EQ(document.bytes(), "`````\n```\n\ta\n````\n`````\n\n~~~~a`b\n~~~\n~~~~\n");
}

TEST(MarkdownDocumentWriter, DividesAVeryLongCodeThatWouldEndItsFence) {
  MarkdownDocument document;
  document.beginCode({});
  std::string lines;
  for (int i = 0; i < 20000; ++i) {
    lines += "line\n";
  }
  document.text(lines);
  document.text("```\nend\n");
  document.end();
  EXPECT_EQ(document.bytes(), "```\n" + lines + "```\n\n````\n```\nend\n````\n");
}

TEST(MarkdownDocumentWriter, WritesTheContentsAsLinks) {
  MarkdownDocument document;
  document.beginContents();
  document.contentsItem(1, "a", "A*");
  document.contentsItem(3, "b", "B");
  document.contentsItem(2, "c", "C");
  document.contentsItem(1, "d", "D");
  document.end();
  EXPECT_EQ(document.bytes(), "- [A\\*](#a)\n  - [B](#b)\n  - [C](#c)\n- [D](#d)\n");
}

TEST(MarkdownDocumentWriter, PassesOnMarkupOfItsOwn) {
  MarkdownDocument document;
  document.raw("markdown", "a **b**\n\nc");
  document.beginParagraph(Align::Auto);
  document.text("d ");
  document.raw("html", "<b>");
  document.raw("markdown", "**e**");
  document.end();
  EXPECT_EQ(document.bytes(), "a **b**\n\nc\n\nd **e**\n");
}

TEST(MarkdownDocumentWriter, WarnsOnceOfEachKindThatItCannotSay) {
  MarkdownDocument document;
  for (int i = 0; i < 2; ++i) {
    document.beginParagraph(Align::Center);
    document.addSpan(Span::Underlined, "u");
    document.addSpan(Span::Subscript, "s");
    document.end();
  }
  document.anchor("here");
  document.beginHeading(1, "mine", Align::Auto);
  document.text("Heading");
  document.end();
  EXPECT_EQ(document.bytes(), "us\n\nus\n\n# Heading\n");
  EXPECT_EQ(document.warnings(),
            "2 x underlining, which Markdown has no mark for\n2 x subscripts, which became plain text\n"
            "2 x alignments of paragraphs and headings\n1 x ids of headings that are not made from their texts are "
            "left out; links to them lead nowhere\n1 x anchors\n");
}

TEST(MarkdownDocumentTable, AlignsItsColumns) {
  MarkdownDocument document;
  std::vector<Column> columns(3);
  columns[2].align = Align::Center;
  document.beginTable(columns, {});
  document.addRow({"Item", "Price", "Note"}, true);
  document.addRow({"Bolt", "7.50", "a|b"});
  document.addRow({"Long nut", "12", ""});
  EXPECT_EQ(document.bytes(),
            "| Item     | Price | Note  |\n| -------- | ----: | :---: |\n| Bolt     |  7.50 | a\\|b  |\n"
            "| Long nut |    12 |       |\n");
}

TEST(MarkdownDocumentTable, HasAnEmptyHeaderWithoutOne) {
  MarkdownDocument document;
  document.beginTable({}, {});
  document.addRow({"a", "b"});
  EXPECT_EQ(document.bytes(), "|     |     |\n| --- | --- |\n| a   | b   |\n");
}

TEST(MarkdownDocumentTable, IsNotPaddedIfItIsWide) {
  MarkdownDocument document;
  document.beginTable({}, {});
  document.addRow({"a", std::string(120, 'b')}, true);
  document.addRow({"c", "d"});
  EXPECT_EQ(document.bytes(), "| a | " + std::string(120, 'b') + " |\n| --- | --- |\n| c | d |\n");
}

TEST(MarkdownDocumentTable, EscapesCells) {
  EXPECT_EQ(cellOf("a|b\nc"), "| a\\|b<br>c |\n");
  EXPECT_EQ(cellOf("- x_1 *"), "| - x_1 \\* |\n");
  EXPECT_EQ(cellOf("\\|"), "| \\\\\\| |\n");
}

TEST(MarkdownDocumentTable, EscapesBarsInCode) {
  MarkdownDocument document;
  document.beginTable({}, {});
  document.beginRow(true);
  document.beginCell({});
  document.addSpan(Span::Code, "a|b\\|c");
  document.end();
  document.end();
  EXPECT_EQ(document.bytes(), "| `a\\|b\\`<!-- -->`\\|c` |\n| ------ |\n");
}

TEST(MarkdownDocumentTable, ReportsWhatItCannotSay) {
  MarkdownDocument document;
  document.beginTable({}, {});
  document.addRow({"a", "b"}, true);
  document.addRow({"c", "d"}, true);
  document.beginRow(false);
  document.beginCell({.header = true, .align = Align::Right, .span = 2, .color = 0});
  document.text("e");
  document.end();
  document.end();
  EXPECT_EQ(document.bytes(), "| a   | b   |\n| --- | --- |\n| c   | d   |\n| e   |     |\n");
  EXPECT_EQ(document.warnings(),
            "1 x header rows after the first, which became rows of data\n"
            "1 x header cells outside header rows, which became plain cells\n"
            "1 x cells that span columns, which became one cell and empty ones\n1 x alignments of single cells\n"
            "1 x colours of cells\n");
}

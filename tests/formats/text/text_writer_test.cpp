#include "formats/text/text_writer.h"

#include "made_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

using scrivalen::document::Align;
using scrivalen::document::DocumentWriter;
using scrivalen::document::Event;
using scrivalen::document::EventKind;
using scrivalen::document::Task;
using scrivalen::document::WarningCode;
using scrivalen::test::bytes;
using scrivalen::test::madeText;
using scrivalen::test::put;
using scrivalen::test::putHeading;
using scrivalen::test::putLink;
using scrivalen::test::putList;
using scrivalen::test::putParagraph;
using scrivalen::test::writtenText;

namespace {

void beginOrdered(DocumentWriter& writer, int first) {
  Event event{EventKind::BeginList};
  event.ordered = true;
  event.tight = true;
  event.number = first;
  writer.write(event);
}

void putContentsItem(DocumentWriter& writer, int level, std::string_view text) {
  Event event{EventKind::ContentsItem};
  event.number = level;
  event.text = text;
  writer.write(event);
}

void putItem(DocumentWriter& writer, Task task, std::string_view text) {
  Event event{EventKind::BeginItem};
  event.task = task;
  writer.write(event);
  put(writer, EventKind::Text, text);
  put(writer, EventKind::EndItem);
}

}  // namespace

TEST(TextWriter, WritesNothingForAnEmptyDocument) {
  EXPECT_EQ(writtenText([](DocumentWriter&) {}), "");
}

TEST(TextWriter, SeparatesParagraphsByABlankLine) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              putParagraph(writer, "one");
              putParagraph(writer, "two");
            }),
            "one\n\ntwo\n");
}

TEST(TextWriter, WritesNothingForAnEmptyParagraph) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              putParagraph(writer, "one");
              put(writer, EventKind::BeginParagraph);
              put(writer, EventKind::EndParagraph);
              put(writer, EventKind::BeginQuote);
              put(writer, EventKind::EndQuote);
              putParagraph(writer, "two");
            }),
            "one\n\ntwo\n");
}

TEST(TextWriter, UnderlinesTheTitleAndHeadingsByTheirLevel) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              put(writer, EventKind::Title, "The title");
              putHeading(writer, 1, "First");
              putHeading(writer, 2, bytes(u8"漢字"));
              putHeading(writer, 3, "Third");
              putHeading(writer, 4, "Fourth");
              putHeading(writer, 6, "Sixth");
            }),
            bytes(u8"The title\n=========\n\nFirst\n=====\n\n漢字\n----\n\nThird\n~~~~~\n\nFourth\n......\n\n"
                  u8"Sixth\n.....\n"));
}

TEST(TextWriter, UnderlinesAHeadingOfSeveralLinesAsWideAsTheLongest) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) { putHeading(writer, 1, "a heading that is too long"); },
                        {{"width", "20"}}),
            "a heading that is\ntoo long\n=================\n");
}

TEST(TextWriter, WrapsParagraphsAtTheWidth) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) { putParagraph(writer, "These words are twenty and more."); },
                        {{"width", "22"}}),
            "These words are twenty\nand more.\n");
}

TEST(TextWriter, KeepsAWordThatIsLongerThanTheWidth) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) { putParagraph(writer, "a 012345678901234567890123456789 b"); },
                        {{"width", "20"}}),
            "a\n012345678901234567890123456789\nb\n");
}

TEST(TextWriter, BreaksLinesBetweenIdeographs) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) { putParagraph(writer, bytes(u8"一二三四五六七八九十、一二三")); },
                        {{"width", "20"}}),
            bytes(u8"一二三四五六七八九\n十、一二三\n"));
}

TEST(TextWriter, BreaksALineAtALineFeed) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) { putParagraph(writer, "one \n two\n\nthree\n"); }),
            "one\n two\n\nthree\n");
}

TEST(TextWriter, AlignsParagraphsWithinTheWidth) {
  EXPECT_EQ(writtenText(
                [](DocumentWriter& writer) {
                  putParagraph(writer, "center", Align::Center);
                  putParagraph(writer, "moved to the right side", Align::Right);
                  putParagraph(writer, "justified", Align::Justify);
                },
                {{"width", "20"}}),
            "       center\n\n  moved to the right\n                side\n\njustified\n");
}

TEST(TextWriter, QuotesLines) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              putParagraph(writer, "before");
              put(writer, EventKind::BeginQuote);
              putParagraph(writer, "one\ntwo");
              put(writer, EventKind::BeginQuote);
              putParagraph(writer, "three");
              put(writer, EventKind::EndQuote);
              put(writer, EventKind::EndQuote);
              putParagraph(writer, "after");
            }),
            "before\n\n> one\n> two\n>\n> > three\n\nafter\n");
}

TEST(TextWriter, SeparatesTheItemsOfALooseList) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              putParagraph(writer, "before");
              putList(writer, false, {"one\nmore", "two"});
              putList(writer, true, {"one\nmore", "two"});
              putParagraph(writer, "after");
            }),
            "before\n\n- one\n  more\n\n- two\n\n- one\n  more\n- two\n\nafter\n");
}

TEST(TextWriter, NumbersTheItemsOfAnOrderedList) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              beginOrdered(writer, 9);
              putItem(writer, Task::None, "nine\nmore");
              putItem(writer, Task::None, "ten\nmore");
              put(writer, EventKind::EndList);
            }),
            "9. nine\n   more\n10. ten\n    more\n");
}

TEST(TextWriter, MarksTasks) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              Event list{EventKind::BeginList};
              list.tight = true;
              writer.write(list);
              putItem(writer, Task::Open, "open");
              putItem(writer, Task::Done, "done\nlong ago");
              put(writer, EventKind::EndList);
            }),
            "- [ ] open\n- [x] done\n      long ago\n");
}

TEST(TextWriter, NestsATightListWithoutABlankLine) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              beginOrdered(writer, 1);
              put(writer, EventKind::BeginItem);
              put(writer, EventKind::Text, "one");
              putList(writer, true, {"inner", ""});
              put(writer, EventKind::EndItem);
              putItem(writer, Task::None, "two");
              put(writer, EventKind::EndList);
            }),
            "1. one\n   - inner\n   -\n2. two\n");
}

TEST(TextWriter, PutsTheMarkersOfNestedItemsInOneLine) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              beginOrdered(writer, 1);
              put(writer, EventKind::BeginItem);
              putList(writer, true, {"inner", "second"});
              put(writer, EventKind::EndItem);
              put(writer, EventKind::EndList);
            }),
            "1. - inner\n   - second\n");
}

TEST(TextWriter, IndentsCodeAndKeepsItsBlanks) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              putParagraph(writer, "before");
              put(writer, EventKind::BeginCode, "c");
              put(writer, EventKind::Text, "int f()\n{  \n\n");
              put(writer, EventKind::Text, "\treturn 0;\n}\n");
              put(writer, EventKind::EndCode);
              putParagraph(writer, "after");
            }),
            "before\n\n    int f()\n    {  \n\n    \treturn 0;\n    }\n\nafter\n");
}

std::string writtenCode(std::initializer_list<std::string_view> texts) {
  return writtenText([&](DocumentWriter& writer) {
    put(writer, EventKind::BeginCode);
    for (const std::string_view text : texts) {
      put(writer, EventKind::Text, text);
    }
    put(writer, EventKind::EndCode);
    putParagraph(writer, "after");
  });
}

TEST(TextWriter, KeepsTheEmptyLinesOfCode) {
  EXPECT_EQ(writtenCode({"x"}), "    x\n\nafter\n");
  EXPECT_EQ(writtenCode({"x\n"}), "    x\n\nafter\n");
  EXPECT_EQ(writtenCode({"x\n\n"}), "    x\n\n\nafter\n");
  EXPECT_EQ(writtenCode({"x", "\n", "\n", "\ny \n"}), "    x\n\n\n    y \n\nafter\n");
  EXPECT_EQ(writtenCode({"\n"}), "\n\nafter\n");
  EXPECT_EQ(writtenCode({}), "after\n");
}

TEST(TextWriter, KeepsTheLineEndsOfLongCode) {
  const std::string longLine(70000, 'a');
  const std::string otherLine(70000, 'b');
  const std::string expected = "    " + longLine + "\n    " + otherLine + "\n\nafter\n";
  EXPECT_EQ(writtenCode({longLine, "\n" + otherLine}), expected);
  EXPECT_EQ(writtenCode({longLine + "\n" + otherLine}), expected);
  EXPECT_EQ(writtenCode({longLine.substr(0, 65535), "\n\nz"}),
            "    " + longLine.substr(0, 65535) + "\n\n    z\n\nafter\n");
}

TEST(TextWriter, DoesNotWrapCode) {
  const std::string line(100, 'x');
  EXPECT_EQ(writtenText([&](DocumentWriter& writer) {
              put(writer, EventKind::BeginCode);
              put(writer, EventKind::Text, line);
              put(writer, EventKind::EndCode);
            }),
            "    " + line + "\n");
}

TEST(TextWriter, DrawsARule) {
  EXPECT_EQ(writtenText(
                [](DocumentWriter& writer) {
                  putParagraph(writer, "one");
                  put(writer, EventKind::Rule);
                  putParagraph(writer, "two");
                },
                {{"width", "20"}}),
            "one\n\n--------------------\n\ntwo\n");
}

TEST(TextWriter, DrawsARuleBetweenSectionsAndPages) {
  EXPECT_EQ(writtenText(
                [](DocumentWriter& writer) {
                  put(writer, EventKind::BeginSection, "A");
                  putParagraph(writer, "one");
                  put(writer, EventKind::EndSection);
                  put(writer, EventKind::BeginSection, "B");
                  putParagraph(writer, "two");
                  put(writer, EventKind::PageBreak);
                  put(writer, EventKind::EndSection);
                },
                {{"width", "20"}}),
            "one\n\n--------------------\n\ntwo\n");
}

TEST(TextWriter, IndentsContentsByTheirLevels) {
  EXPECT_EQ(writtenText(
                [](DocumentWriter& writer) {
                  put(writer, EventKind::BeginContents);
                  putContentsItem(writer, 2, "One");
                  putContentsItem(writer, 3, "One and a little more of it");
                  putContentsItem(writer, 2, "Two");
                  put(writer, EventKind::EndContents);
                  putParagraph(writer, "after");
                },
                {{"width", "20"}}),
            "One\n  One and a little\n    more of it\nTwo\n\nafter\n");
}

TEST(TextWriter, WritesTheAddressOfALinkAfterItsText) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              put(writer, EventKind::BeginParagraph);
              put(writer, EventKind::Text, "See ");
              putLink(writer, "the site", "https://example.com/a");
              put(writer, EventKind::Text, ".");
              put(writer, EventKind::EndParagraph);
            }),
            "See the site (https://example.com/a).\n");
}

TEST(TextWriter, WritesTheBlankAtTheEndOfALinkAfterItsAddress) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              put(writer, EventKind::BeginParagraph);
              putLink(writer, "the site ", "https://example.com/a");
              putLink(writer, " ", "https://example.com/b");
              put(writer, EventKind::Text, "end");
              put(writer, EventKind::EndParagraph);
            }),
            "the site (https://example.com/a)  https://example.com/b end\n");
}

TEST(TextWriter, WritesNoAddressThatTheTextShowsOrThatLeadsInside) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              put(writer, EventKind::BeginParagraph);
              putLink(writer, "https://example.com", "https://example.com");
              put(writer, EventKind::Text, " ");
              putLink(writer, "ada@example.com", "mailto:ada@example.com");
              put(writer, EventKind::Text, " ");
              putLink(writer, "above", "#above");
              put(writer, EventKind::Text, " ");
              putLink(writer, "", "https://example.com/alone");
              put(writer, EventKind::EndParagraph);
            }),
            "https://example.com ada@example.com above https://example.com/alone\n");
}

TEST(TextWriter, WritesTheAlternativeTextOfAPicture) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              put(writer, EventKind::Image, "A map of Rome");
              putParagraph(writer, "after");
            }),
            "A map of Rome\n\nafter\n");
}

TEST(TextWriter, DropsWhatPlainTextCannotShow) {
  EXPECT_EQ(writtenText([](DocumentWriter& writer) {
              put(writer, EventKind::BeginParagraph);
              put(writer, EventKind::BeginSpan);
              put(writer, EventKind::Text, "bold");
              put(writer, EventKind::EndSpan);
              put(writer, EventKind::Anchor, "here");
              put(writer, EventKind::EndParagraph);
            }),
            "bold\n");
}

TEST(TextWriter, WritesUtf16OnRequest) {
  const std::string text =
      writtenText([](DocumentWriter& writer) { putParagraph(writer, bytes(u8"é€😀")); }, {{"encoding", "utf-16"}});
  EXPECT_EQ(text, std::string("\xFF\xFE\xE9\0\xAC\x20\x3D\xD8\0\xDE\n\0", 12));
}

TEST(TextWriter, WritesLatin1OnRequest) {
  const auto made =
      madeText([](DocumentWriter& writer) { putParagraph(writer, bytes(u8"é€ ÿ漢")); }, {{"encoding", "latin-1"}});
  EXPECT_EQ(made.bytes, "\xE9? \xFF?\n");
  ASSERT_EQ(made.warnings.size(), 1u);
  EXPECT_EQ(made.warnings[0].code, WarningCode::CharactersReplaced);
  EXPECT_EQ(made.warnings[0].count, 2u);
}

// A block of 64 KiB ends within a character.
TEST(TextWriter, EncodesCharactersAcrossBlocks) {
  for (std::size_t before = 65530; before < 65537; ++before) {
    const auto code = [&](DocumentWriter& writer) {
      put(writer, EventKind::BeginCode);
      put(writer, EventKind::Text, std::string(before - 4, 'x') + std::string(bytes(u8"é😀é")));
      put(writer, EventKind::EndCode);
    };
    EXPECT_EQ(madeText(code, {{"encoding", "latin-1"}}).bytes, "    " + std::string(before - 4, 'x') + "\xE9?\xE9\n");
  }
}

// What is held of a paragraph is bounded, so it is written in parts.
TEST(TextWriter, WrapsALongParagraphThatComesInParts) {
  const std::string text = writtenText([](DocumentWriter& writer) {
    put(writer, EventKind::BeginParagraph);
    for (int i = 0; i < 40000; ++i) {
      put(writer, EventKind::Text, "word ");
    }
    put(writer, EventKind::EndParagraph);
  });
  std::string line = "word";
  for (int i = 1; i < 16; ++i) {
    line += " word";
  }
  std::string expected;
  for (int i = 0; i < 2500; ++i) {
    expected += line + "\n";
  }
  EXPECT_EQ(text, expected);
}

TEST(TextWriter, KeepsAVeryLongWordAndALongLineOfCodeWhole) {
  const std::string word(50000, 'w');
  const auto text = [&](EventKind begin, EventKind end) {
    return writtenText([&](DocumentWriter& writer) {
      put(writer, begin);
      for (int i = 0; i < 4; ++i) {
        put(writer, EventKind::Text, word);
      }
      put(writer, end);
      putParagraph(writer, "after");
    });
  };
  const std::string words = word + word + word + word;
  EXPECT_EQ(text(EventKind::BeginParagraph, EventKind::EndParagraph), words + "\n\nafter\n");
  EXPECT_EQ(text(EventKind::BeginCode, EventKind::EndCode), "    " + words + "\n\nafter\n");
}

TEST(TextWriter, IndentsDeepNestingByHalfALine) {
  const std::string text = writtenText([](DocumentWriter& writer) {
    for (int i = 0; i < 1000; ++i) {
      put(writer, EventKind::BeginQuote);
    }
    putParagraph(writer, "deep");
    for (int i = 0; i < 1000; ++i) {
      put(writer, EventKind::EndQuote);
    }
    putParagraph(writer, "after");
  });
  std::string prefix;
  for (int i = 0; i < 20; ++i) {
    prefix += "> ";
  }
  EXPECT_EQ(text, prefix + "deep\n\nafter\n");
}

TEST(TextWriter, KeepsTheMarkersOfDeepLists) {
  const std::string text = writtenText([](DocumentWriter& writer) {
    for (int i = 0; i < 15; ++i) {
      writer.write({.kind = EventKind::BeginList, .ordered = true, .number = 1});
      put(writer, EventKind::BeginItem);
      putParagraph(writer, "a");
    }
  });
  EXPECT_TRUE(text.ends_with("\n" + std::string(39, ' ') + "1. a\n\n" + std::string(39, ' ') + "1. a\n")) << text;
}

TEST(TextWriter, HoldsNoMoreThanSoManyBlanks) {
  const std::string blanks(100000, ' ');
  const auto text = [&](EventKind begin, EventKind end) {
    return writtenText([&](DocumentWriter& writer) {
      put(writer, begin);
      put(writer, EventKind::Text, blanks);
      put(writer, EventKind::Text, "x");
      put(writer, end);
    });
  };
  EXPECT_EQ(text(EventKind::BeginParagraph, EventKind::EndParagraph), "x\n");
  EXPECT_EQ(text(EventKind::BeginCode, EventKind::EndCode), "    " + blanks + "x\n");
}

// The header for C++, as a host uses it.
#include "scrivalen/document.hpp"
#include "support/files.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <tuple>
#include <utility>
#include <variant>
#include <vector>

namespace {

using namespace scrivalen::cpp;

/// A document of one format, in memory.
struct Written {
  explicit Written(const char* format = "markdown") { document.addStream(format, stream); }

  std::string closed() {
    document.close();
    return stream.str();
  }

  std::ostringstream stream;
  Document document;
};

std::string writtenBy(const std::function<void(Document&)>& write, const char* format = "markdown") {
  Written written(format);
  write(written.document);
  return written.closed();
}

/// The row of a table without columns, in XML.
std::string rowOf(const std::function<void(const Table&)>& write) {
  const std::string xml = writtenBy([&](Document& document) { write(document.beginTable()); }, "xml");
  const std::size_t begin = xml.find("<row");
  return begin == std::string::npos ? xml : xml.substr(begin, xml.find("</table>") - begin);
}

/// The error of a call.
Error errorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& error) {
    return error;
  }
  return {Status::Ok, kAllOutputs, "no error"};
}

TEST(DocumentHpp, EndsAPartWithItsScope) {
  EXPECT_EQ(writtenBy([](Document& document) {
              {
                auto paragraph = document.beginParagraph();
                paragraph.text("one ");
                paragraph.span(Style::Strong, "two");
              }
              document.paragraph("three");
            }),
            "one **two**\n\nthree\n");
}

TEST(DocumentHpp, EndsPartsWhenAnExceptionPasses) {
  EXPECT_EQ(writtenBy([](Document& document) {
              try {
                auto quote = document.beginQuote();
                auto paragraph = quote.beginParagraph();
                paragraph.text("begun");
                throw std::runtime_error("in the middle");
              } catch (const std::runtime_error&) {
                document.paragraph("after");
              }
            }),
            "> begun\n\nafter\n");
}

TEST(DocumentHpp, EndsTheInnerPartsOfAPartThatEndsBeforeThem) {
  EXPECT_EQ(writtenBy([](Document& document) {
              std::optional<Quote> quote(document.beginQuote());
              std::optional<Paragraph> paragraph(quote->beginParagraph());
              paragraph->text("inside");
              quote.reset();
              Paragraph next = document.beginParagraph();
              paragraph.reset();  // its number was that of the new one
              next.text("still open");
            }),
            "> inside\n\nstill open\n");
}

TEST(DocumentHpp, RefusesAPartThatIsNotTheInnermost) {
  EXPECT_EQ(writtenBy([](Document& document) {
              auto paragraph = document.beginParagraph();
              auto span = paragraph.beginSpan(Style::Emphasis);
              EXPECT_EQ(errorOf([&] { paragraph.text("outer"); }).status(), Status::Misuse);
              EXPECT_EQ(errorOf([&] { document.paragraph("outermost"); }).status(), Status::Misuse);
              span.text("inner");
              span.end();
              EXPECT_EQ(errorOf([&] { span.text("ended"); }).status(), Status::Misuse);
              span.end();
              paragraph.text(" outer");
            }),
            "_inner_ outer\n");
}

TEST(DocumentHpp, LetsAPartOutliveItsDocument) {
  std::optional<Document> document(std::in_place);
  std::ostringstream stream;
  document->addStream("text", stream);
  Paragraph paragraph = document->beginParagraph();
  document.reset();
  EXPECT_EQ(errorOf([&] { paragraph.text("late"); }).status(), Status::Misuse);
  EXPECT_EQ(paragraph.handle(), nullptr);
}

TEST(DocumentHpp, LetsPartsAndDocumentsMove) {
  std::ostringstream stream;
  Document first;
  first.addStream("markdown", stream);
  Document second = std::move(first);
  Paragraph before = second.beginParagraph();
  Paragraph after = std::move(before);
  after.text("moved");
  EXPECT_EQ(errorOf([&] { before.text("gone"); }).status(), Status::Misuse);
  EXPECT_EQ(errorOf([&] { first.paragraph("gone"); }).status(), Status::Misuse);
  EXPECT_EQ(first.tryClose(), Status::Misuse);
  EXPECT_EQ(first.error(), "");
  second.close();
  EXPECT_EQ(stream.str(), "moved\n");
}

TEST(DocumentHpp, RefusesWhatComesAfterTheEnd) {
  Written written;
  Paragraph paragraph = written.document.beginParagraph();
  EXPECT_EQ(written.closed(), "");
  EXPECT_EQ(errorOf([&] { paragraph.text("late"); }).status(), Status::Misuse);
  EXPECT_EQ(errorOf([&] { written.document.paragraph("late"); }).status(), Status::Misuse);
  EXPECT_EQ(errorOf([&] { written.document.set("title", "late"); }).status(), Status::Misuse);
  written.document.close();
}

TEST(DocumentHpp, AbandonsADocumentThatIsNotClosed) {
  const scrivalen::test::TemporaryFolder folder;
  const std::wstring path = folder / L"kept.txt";
  scrivalen::test::writeBytes(path, "earlier");
  EXPECT_THROW(
      {
        Document document;
        document.addFile(scrivalen::test::asPath(path));
        document.paragraph("half");
        throw std::runtime_error("in the middle");
      },
      std::runtime_error);
  EXPECT_EQ(scrivalen::test::bytesOf(path), "earlier");
}

TEST(DocumentHpp, NamesTheOutputThatFailedAndWhy) {
  const scrivalen::test::TemporaryFolder folder;
  std::ostringstream stream;
  Document document;
  EXPECT_EQ(document.addStream("text", stream), 0U);
  EXPECT_EQ(document.addFile(scrivalen::test::asPath(folder / L"missing/report.txt")), 1U);
  const Error error = errorOf([&] { document.open(); });
  EXPECT_EQ(error.status(), Status::FileError);
  EXPECT_EQ(error.output(), 1U);
  document.paragraph("text");
  EXPECT_STREQ(errorOf([&] { document.close(); }).what(), error.what());
  EXPECT_NE(std::string(error.what()).find("report.txt"), std::string::npos) << error.what();
  EXPECT_EQ(document.outputResult(0), Status::Ok);
  EXPECT_EQ(document.outputError(1), error.what());
  EXPECT_EQ(document.tryClose(), Status::FileError);
  EXPECT_EQ(stream.str(), "text\n");
}

TEST(DocumentHpp, BeginsNothingWhereAnOutputCannotBeCreated) {
  const scrivalen::test::TemporaryFolder folder;
  Written written;
  written.document.addFile(scrivalen::test::asPath(folder / L"missing/report.txt"));
  EXPECT_EQ(errorOf([&] { written.document.beginQuote().paragraph("no"); }).output(), 1U);
  written.document.paragraph("text");
  EXPECT_EQ(written.document.tryClose(), Status::FileError);
  EXPECT_EQ(written.stream.str(), "text\n");
}

TEST(DocumentHpp, ThrowsWhatTheLibraryRefuses) {
  Document document;
  EXPECT_EQ(errorOf([&] { document.addFile("report.unknown"); }).status(), Status::UnknownFormat);
  EXPECT_EQ(errorOf([&] { document.set("no setting", ""); }).status(), Status::UnknownSetting);
  EXPECT_EQ(errorOf([&] { document.paragraph("no output"); }).status(), Status::Misuse);
  EXPECT_EQ(errorOf([&] { document.addStream("text", WriteFunction()); }).status(), Status::Misuse);
  EXPECT_EQ(errorOf([&] { document.addStream("unknown", [](std::string_view) {}); }).status(), Status::UnknownFormat);
  EXPECT_EQ(document.outputCount(), 0U);
}

TEST(DocumentHpp, ThrowsWhatAStreamThrew) {
  std::ostringstream other;
  Document document;
  document.addStream("text", [](std::string_view) { throw std::domain_error("no room"); });
  document.addStream("text", other);
  document.paragraph("text");
  EXPECT_THROW(document.close(), std::domain_error);
  const Error error = errorOf([&] { document.close(); });
  EXPECT_EQ(error.status(), Status::FileError);
  EXPECT_EQ(error.output(), 0U);
  EXPECT_EQ(other.str(), "text\n");
}

TEST(DocumentHpp, ThrowsWhatAStreamThrewAtTheEndOfAScopeFromTheNextCall) {
  Document document;
  document.addStream("text", [](std::string_view) { throw std::domain_error("no room"); });
  std::ostringstream other;
  document.addStream("text", other);
  {
    auto table = document.beginTable();
    for (int i = 0; i < 400; ++i) {
      table.row(std::string(400, 'x'));  // held back until the table ends
    }
  }
  EXPECT_THROW(document.paragraph("text"), std::domain_error);
  EXPECT_EQ(document.tryClose(), Status::FileError);
  EXPECT_NE(other.str().find("x\n\ntext\n"), std::string::npos);
}

TEST(DocumentHpp, ReportsAStreamThatCannotBeWritten) {
  struct Full : std::streambuf {};
  Full full;
  std::ostream stream(&full);
  Document document;
  document.addStream("text", stream);
  document.paragraph("text");
  EXPECT_THROW(document.close(), std::ios_base::failure);
  EXPECT_EQ(document.result(), Status::FileError);
}

TEST(DocumentHpp, IsCancelledByItsProgress) {
  Written written("html");
  std::uint64_t most = 0;
  written.document.setProgress([&](std::uint64_t, std::uint64_t bytes) {
    most = bytes;
    return bytes < 100000;
  });
  const Error error = errorOf([&] {
    for (int i = 0; i < 100; ++i) {
      written.document.paragraph(std::string(10000, 'x'));
    }
  });
  EXPECT_EQ(error.status(), Status::Cancelled);
  EXPECT_GE(most, 100000U);
  EXPECT_LT(written.stream.str().size(), 300000U);
}

TEST(DocumentHpp, ThrowsWhatItsProgressThrew) {
  Written written;
  written.document.setProgress([](std::uint64_t, std::uint64_t) -> bool { throw std::domain_error("stop"); });
  written.document.paragraph("text");
  EXPECT_THROW(written.document.close(), std::domain_error);
  EXPECT_EQ(written.document.result(), Status::Cancelled);
}

TEST(DocumentHpp, WritesValuesByTheirTypes) {
  EXPECT_EQ(rowOf([](const Table& table) {
              table.row("text", std::string("string"), 'c', 4.5, 1.5F, 42, -7L, 5U, true, Date(2024, 2, 29),
                        Time(Date(1970, 1, 2), 3, 4, 5));
            }),
            "<row><cell>text</cell><cell>string</cell><cell>c</cell><cell>4.5</cell><cell>1.5</cell><cell>42</cell>"
            "<cell>-7</cell><cell>5</cell><cell>true</cell><cell>2024-02-29</cell><cell>1970-01-02 03:04:05</cell>"
            "</row>\n");
}

TEST(DocumentHpp, WritesWhatIsNotThereAsAnEmptyCell) {
  const char* const none = nullptr;
  EXPECT_EQ(rowOf([&](const Table& table) {
              table.row(std::nullopt, nullptr, std::monostate(), none, std::optional<double>(), std::optional("there"));
            }),
            "<row><cell></cell><cell></cell><cell></cell><cell></cell><cell></cell><cell>there</cell></row>\n");
}

TEST(DocumentHpp, WritesTheElementsOfATupleAndTheHeldValueOfAVariant) {
  using Any = std::variant<std::monostate, double, std::string>;
  EXPECT_EQ(
      rowOf([](const Table& table) {
        table.row(std::tuple("a", 1));
        table.row(std::pair("b", true));
        table.row(std::array<Any, 3>{0.5, "text", std::monostate()});
      }),
      "<row><cell>a</cell><cell>1</cell><cell></cell></row>\n<row><cell>b</cell><cell>true</cell><cell></cell></row>\n"
      "<row><cell>0.5</cell><cell>text</cell><cell></cell></row>\n");
}

TEST(DocumentHpp, WritesAnIntegerOfMoreThan63BitsAsAText) {
  EXPECT_EQ(rowOf([](const Table& table) {
              table.row(std::numeric_limits<std::uint64_t>::max(), std::numeric_limits<std::int64_t>::min());
            }),
            "<row><cell>18446744073709551615</cell><cell>-9223372036854775808</cell></row>\n");
}

TEST(DocumentHpp, WritesTimesOfTheSystemClockWithoutTheirFractions) {
  const std::chrono::sys_days day = std::chrono::year(1969) / 12 / 31;
  EXPECT_EQ(rowOf([&](const Table& table) {
              table.row(day, std::chrono::year(2024) / 2 / 29, day + std::chrono::milliseconds(1999),
                        std::chrono::system_clock::time_point(std::chrono::seconds(-1)));
            }),
            "<row><cell>1969-12-31</cell><cell>2024-02-29</cell><cell>1969-12-31 00:00:01</cell>"
            "<cell>1969-12-31 23:59:59</cell></row>\n");
}

TEST(DocumentHpp, CountsDaysAsTheCalendarDoes) {
  for (int year = -801; year <= 2401; year += 7) {
    for (unsigned month = 1; month <= 12; ++month) {
      const auto last = std::chrono::year_month_day_last(std::chrono::year(year),
                                                         std::chrono::month_day_last(std::chrono::month(month)));
      const std::chrono::sys_days day = last;
      const int lastDay = static_cast<int>(unsigned(last.day()));
      ASSERT_EQ(Date(year, static_cast<int>(month), lastDay).days, day.time_since_epoch().count());
      ASSERT_THROW(Date(year, static_cast<int>(month), lastDay + 1), std::invalid_argument);
    }
  }
  EXPECT_THROW(Date(2024, 13, 1), std::invalid_argument);
  EXPECT_THROW(Date(2024, 1, 0), std::invalid_argument);
  EXPECT_THROW(Date(32768, 1, 1), std::invalid_argument);
}

TEST(DocumentHpp, EndsTheRowOfACellThatIsRefused) {
  EXPECT_EQ(rowOf([](const Table& table) {
              {
                Row row = table.beginRow();
                EXPECT_EQ(errorOf([&] { row.cell(1, CellStyle().color("no colour")); }).status(), Status::Misuse);
                row.cell(2, CellStyle().align(Align::Center));
              }
              table.row(3);
            }),
            "<row><cell align=\"center\">2</cell></row>\n<row><cell>3</cell></row>\n");
}

TEST(DocumentHpp, WritesColumns) {
  TextColumn names;
  names.add("skipped");
  names.add("tea");
  names.add("");
  const std::vector<double> prices = {0, 4.5, 2};
  const std::array<std::int64_t, 3> counts = {0, -1, 7};
  const std::vector<Date> days = {Date(), Date(2024, 2, 29), Date()};
  const std::vector<Time> times = {Time(), Time(1), Time(86400)};
  const std::uint8_t known = 2;
  EXPECT_EQ(rowOf([&](const Table& table) {
              std::vector<ColumnData> columns = {names, prices, counts,
                                                 days,  times,  ColumnData::booleans(&known, 3).validity(&known)};
              for (ColumnData& column : columns) {
                column.skip(1);
              }
              table.rows(columns);
            }),
            "<row><cell>tea</cell><cell>4.5</cell><cell>-1</cell><cell>2024-02-29</cell><cell>1970-01-01 00:00:01"
            "</cell><cell>true</cell></row>\n<row><cell></cell><cell>2</cell><cell>7</cell><cell>1970-01-01</cell>"
            "<cell>1970-01-02 00:00:00</cell><cell></cell></row>\n");
  EXPECT_THROW(ColumnData(prices).skip(4), std::out_of_range);
}

TEST(DocumentHpp, RefusesColumnsOfDifferentLengths) {
  const std::vector<double> two = {1, 2};
  const std::vector<double> three = {1, 2, 3};
  EXPECT_EQ(rowOf([&](const Table& table) {
              const Error error = errorOf([&] { table.rows({two, three}); });
              EXPECT_EQ(error.status(), Status::Misuse);
              EXPECT_STREQ(error.what(), "column 1 has 3 rows, not 2");
              table.rows({two});
            }),
            "<row><cell>1</cell></row>\n<row><cell>2</cell></row>\n");
}

TEST(DocumentHpp, ShowsColumnsAsTheyAreDescribed) {
  EXPECT_EQ(writtenBy(
                [](Document& document) {
                  const Table table = document.beginTable({Column("a", Type::Number).decimals(2), Column().decimals(0),
                                                           Column().format("0.0%").align(Align::Left)});
                  table.header("x", "y", "z");
                  table.row(1.0, 2.5, 0.125);
                },
                "markdown"),
            "|    x |    y | z     |\n| ---: | ---: | ----- |\n| 1.00 |    2 | 12.5% |\n");
}

TEST(DocumentHpp, GivesItsWarningsAsARange) {
  Written written;
  written.document.paragraph("bad \xFF byte");
  EXPECT_TRUE(written.document.warnings().empty());
  written.closed();
  ASSERT_EQ(written.document.warnings().size(), 1U);
  const Warning& warning = written.document.warnings().front();
  EXPECT_EQ(warning.code, 1);
  EXPECT_EQ(warning.count, 1U);
  EXPECT_EQ(warning.output, kAllOutputs);
  EXPECT_FALSE(warning.message.empty());
}

TEST(DocumentHpp, SharesItsDocumentWithC) {
  EXPECT_EQ(writtenBy([](Document& document) {
              auto paragraph = document.beginParagraph();
              scrivalen_text(paragraph.handle(), "from C", SCRIVALEN_NUL);
              paragraph.text(" and C++");
            }),
            "from C and C++\n");
}

TEST(DocumentHpp, WritesEveryPart) {
  const std::string xml = writtenBy(
      [](Document& document) {
        auto section = document.beginSection("first", "s");
        section.beginHeading(2, "h", Align::Center).text("Heading");
        section.anchor("here");
        section.rule();
        section.beginContents().item(1, "h", "Entry");
        section.code("int x;\n", "c");
        auto list = section.beginOrderedList(3, false);
        auto item = list.beginItem(Task::Open);
        item.text("text");
        item.lineBreak();
        item.link("#h", "there", "title");
        item.beginSized(14).text("large");
        item.beginColored("navy").text("blue");
        item.beginLanguage("de").text("gro\xC3\x9F");
        item.image("no picture", "alternative");
        item.anchor("inside");
        item.raw("xml", "<host/>");
        item.paragraph("block");
      },
      "xml");
  const std::size_t begin = xml.find("<section");
  EXPECT_EQ(xml.substr(begin, xml.find("</section>") - begin),
            "<section name=\"first\" id=\"s\">\n<heading level=\"2\" id=\"h\" align=\"center\">Heading</heading>\n"
            "<anchor id=\"here\"/>\n<rule/>\n<contents>\n<entry level=\"1\" id=\"h\">Entry</entry>\n</contents>\n"
            "<code language=\"c\">int x;\n</code>\n<list ordered=\"true\" first=\"3\">\n<item task=\"open\">text<br/>"
            "<link address=\"#h\" title=\"title\">there</link><sized points=\"14\">large</sized>"
            "<colored color=\"#000080\">blue</colored><lang tag=\"de\">gro\xC3\x9F</lang>"
            "<image alternative=\"alternative\"/><anchor id=\"inside\"/><host/><paragraph>block</paragraph>\n</item>\n"
            "</list>\n");
}

}  // namespace

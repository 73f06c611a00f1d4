// Tables of separated values, from the command line to the outputs.

#include "command_support.h"

#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <sstream>

namespace scrivalen::command::test {
namespace {

using Words = std::vector<std::string>;

// A text made of the characters of numbers and dates; every third one is a number or a date.
std::string randomText(std::mt19937& random) {
  const auto below = [&random](unsigned limit) { return static_cast<unsigned>(random()) % limit; };
  const unsigned kind = below(6);
  if (kind == 0) {
    return std::to_string(below(3000)) + "-" + std::to_string(10 + below(4)) + "-" + std::to_string(10 + below(25));
  }
  if (kind == 1) {
    return (below(2) == 0 ? "-" : "") + std::to_string(below(1000000)) + "." + std::to_string(below(1000)) +
           std::string(below(3), '0');
  }
  constexpr std::string_view kCharacters = "0011223456789.-+,e%=";
  std::string text;
  for (unsigned size = 1 + below(kind == 2 ? 18 : 4); text.size() < size;) {
    text += kCharacters[below(kCharacters.size())];
  }
  return text;
}

std::string randomTable(std::size_t rows) {
  std::mt19937 random(20240229);
  std::string table = "a,b,c\n";
  for (std::size_t row = 0; row < rows; ++row) {
    table += "\"" + randomText(random) + "\",\"" + randomText(random) + "\"," + std::to_string(row) + "\n";
  }
  return table;
}

// What a reader of the file sees: the text without the tags and control words that align it, and without the line that
// does so in Markdown.
Words wordsOf(const std::string& text) {
  std::string shown;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (text[at] == '<') {
      at = text.find('>', at);
      shown += ' ';
    } else if (text[at] == '\\') {
      at = text.find_first_of(" \\{}\n", at + 1) - 1;
      shown += ' ';
    } else {
      shown += text[at];
    }
  }
  std::istringstream stream(shown);
  Words words(std::istream_iterator<std::string>(stream), {});
  std::erase_if(words, [](const std::string& word) { return word.find_first_not_of(":-") == word.npos; });
  return words;
}

TEST(CsvTables, ShowEveryNumberAndDateExactlyAsItsText) {
  CommandRun run;
  run.with("in.csv", randomTable(1000));
  const auto convert = [&run](const std::string& name, const std::vector<std::string>& options) {
    std::vector<std::string> arguments = {"@/in.csv"};
    for (const char* const format : {"html", "xml", "text", "markdown", "rtf"}) {
      arguments.insert(arguments.end(), {"-o", format + (":@/" + name + ".") + format});
    }
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_EQ(run.run(arguments).error, "");
  };
  convert("typed", {});
  convert("texts", {"--text"});
  for (const std::string format : {"html", "xml", "text", "markdown", "rtf"}) {
    const Words typed = wordsOf(run.bytes("typed." + format));
    EXPECT_GE(typed.size(), 2 * 1000u) << format;
    EXPECT_TRUE(typed == wordsOf(run.bytes("texts." + format))) << format;
  }
  EXPECT_NE(run.bytes("typed.html"), run.bytes("texts.html"));
}

TEST(CsvTables, ShowValuesAsTheSettingsSay) {
  CommandRun run;
  run.with("in.csv", "item,price,from\nbox,1234.50,2024-02-29\n007,1e5,29.02.2024\n");
  const std::vector<std::string> german = {"@/in.csv", "--separator",    "|",  "--set", "numbers=1.234,5",
                                           "--set",    "dates=d.m.yyyy", "-o", "text:-"};
  EXPECT_EQ(run.run(german).output, "item|price|from\nbox|1.234,50|29.2.2024\n007|1e5|29.02.2024\n");
  std::vector<std::string> texts = german;
  texts.push_back("--text");
  EXPECT_EQ(run.run(texts).output, "item|price|from\nbox|1234.50|2024-02-29\n007|1e5|29.02.2024\n");
}

TEST(CsvTables, AlignColumnsOfNumbersToTheRight) {
  CommandRun run;
  run.with("in.csv", "item,price\nbox,12.50\npen,\nink,7\n");
  EXPECT_EQ(run.run({"@/in.csv", "-o", "text:-"}).output, "item  price\n----  -----\nbox   12.50\npen\nink       7\n");
  EXPECT_EQ(run.run({"@/in.csv", "--text", "-o", "text:-"}).output,
            "item  price\n----  -----\nbox   12.50\npen\nink   7\n");
}

TEST(CsvTables, ShowTheColumnsThatWereAskedFor) {
  CommandRun run;
  run.with("in.csv", "id,name,price\n1,box,12.50\n");
  run.run({"@/in.csv", "--columns", "price,name", "--align", "c", "--width", "75%", "-o", "@/a.html"});
  EXPECT_EQ(run.body("a.html"),
            "<table style=\"width:100%\">\n<colgroup><col style=\"width:75%\"><col style=\"width:25%\"></colgroup>\n"
            "<thead>\n<tr><th scope=\"col\" style=\"text-align:center\">price</th><th scope=\"col\">name</th></tr>\n"
            "</thead>\n<tbody>\n<tr><td style=\"text-align:center\">12.50</td><td>box</td></tr>\n</tbody>\n</table>");
}

TEST(CsvTables, KeepAnEarlierFileWhereAColumnIsUnknown) {
  CommandRun run;
  run.with("in.csv", "id,name\n1,box\n").with("a.html", "earlier");
  const Result result = run.run({"@/in.csv", "--columns", "nmae", "-o", "@/a.html"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.error, "scrivalen: --columns: there is no column 'nmae'; did you mean 'name'?\n");
  EXPECT_EQ(run.bytes("a.html"), "earlier");
}

TEST(CsvTables, AreReadFromFilesOfEveryKind) {
  using namespace std::string_literals;
  const auto textOf = [](std::string_view bytes) {
    CommandRun run;
    const Result result = run.with("in.csv", bytes).run({"@/in.csv", "--separator", "|", "-o", "text:-"});
    return result.output + result.error;
  };
  EXPECT_EQ(textOf(""), "");
  EXPECT_EQ(textOf("\n \n"), "");
  EXPECT_EQ(textOf("a,b\n"), "a|b\n");
  EXPECT_EQ(textOf("\xEF\xBB\xBF\"a\",b\r\n1,2\r\n"), "a|b\n1|2\n");
  EXPECT_EQ(textOf("\xFF\xFE"s + "a\0,\0\xFC\0\n\0"s + "1\0,\0\"\0;\0\"\0"s), "a|ü\n1|;\n");
  EXPECT_EQ(textOf("a,b\n\0,2\n"s),
            "a|b\n\uFFFD|2\nscrivalen: warning: '@/in.csv': replaced 1 invalid character with U+FFFD\n");
  EXPECT_EQ(textOf("a,b\n1,\"2\" 3\n"),
            "scrivalen: '@/in.csv', line 2: text after the closing quote of a cell; inside quotes, a quote is written "
            "twice\n");
}

TEST(CsvTables, LoseNoCellAndWarnOnceOfRowsThatAreUnlikeTheHeader) {
  CommandRun run;
  run.with("in.csv", "a,b\n1\n2,3,4\n5\n6,7\n");
  const Result result = run.run({"@/in.csv", "--separator", "|", "-o", "text:-"});
  EXPECT_EQ(result.output, "a|b|\n1||\n2|3|4\n5||\n6|7|\n");
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/in.csv': 1 row has more cells than the header, in line 3\n"
            "scrivalen: warning: '@/in.csv': 2 rows have fewer cells than the header, the first in line 2\n");
  EXPECT_EQ(result.status, 0);
}

TEST(CsvTables, WarnOfCellsThatAreJoinedToTheLastColumn) {
  CommandRun run;
  std::string table = "a,b\n";
  for (int row = 0; row < 600; ++row) {
    table += "1,2\n";
  }
  run.with("in.csv", table + "3,4,5,6\n");
  const Result result = run.run({"@/in.csv", "--separator", "|", "-o", "text:-"});
  EXPECT_TRUE(result.output.ends_with("\n1|2\n3|4 5 6\n")) << result.output;
  EXPECT_EQ(result.error,
            "scrivalen: warning: '@/in.csv': 1 row has more cells than the header, in line 602\n"
            "scrivalen: warning: '@/in.csv': cells past the last column of their table, joined to it (2)\n");
}

}  // namespace
}  // namespace scrivalen::command::test

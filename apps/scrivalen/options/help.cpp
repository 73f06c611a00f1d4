#include "options/help.h"

#include "options/option_group.h"
#include "texts.h"

#include <scrivalen/version.h>

#include <iterator>

namespace scrivalen::command {
namespace {

constexpr std::size_t kWidth = 80;
constexpr std::size_t kHelpColumn = 26;

constexpr std::string_view kUsage[] = {"scrivalen INPUT -o FILE [-o FILE ...] [OPTIONS]",
                                       "scrivalen INPUT ... --output-dir FOLDER --to FORMAT[,FORMAT...] [OPTIONS]"};

constexpr std::string_view kDescription =
    "Turns Markdown, CSV and TSV files into text, HTML, XML, Markdown, RTF, PDF, spreadsheets, Word documents and "
    "compiled help, several at once. An output replaces an existing file once it is complete; one that fails leaves "
    "the file as it was.";

constexpr Example kExamples[] = {
    {"scrivalen notes.md -o notes.html", "a web page"},
    {"scrivalen notes.md --toc -o notes.pdf -o notes.txt", "two formats"},
    {"scrivalen sales.csv --title \"Sales 2024\" -o sales.xlsx", "a spreadsheet"},
    {"scrivalen *.md prices.csv --output-dir site --to html,pdf", "several inputs"},
    {"scrivalen notes.md --set paper=Letter -o notes.rtf", "a setting"},
    {"sort rows.tsv | scrivalen - --from tsv -o text:- | less", "in a pipe"},
};

constexpr std::string_view kStatus =
    "0 if all succeeded, 1 if an input or an output failed, or after a warning with --strict, and 2 for wrong usage.";

constexpr std::string_view kSettings =
    "The settings that --set takes, and their values, are described in docs/settings.md of the documentation.";

// Appends a text in lines from a column on. The first line continues the one that has @p used columns.
void appendWrapped(std::string& out, std::string_view text, std::size_t column, std::size_t used) {
  bool isFirst = true;
  for (const std::string_view word : split(text, ' ')) {
    const bool isNewLine = !isFirst && used + 1 + word.size() > kWidth;
    if (isNewLine) {
      out.append("\n");
      used = 0;
    }
    if (isFirst || isNewLine) {
      out.append(column - used, ' ');
      used = column;
    } else {
      out.append(" ");
      ++used;
    }
    out.append(word);
    used += word.size();
    isFirst = false;
  }
  out.append("\n");
}

void appendOption(std::string& out, const Option& option) {
  std::string start = "  " + replacedAll<char>(option.names, ",", ", ");
  if (!option.isFlag() && !option.isArgument()) {
    start += " " + option.valueName;
  }
  std::size_t used = start.size();
  out += start;
  if (used + 2 > kHelpColumn) {
    out += "\n";
    used = 0;
  }
  const bool isRepeated = option.mayBeRepeated() && !option.isArgument();
  appendWrapped(out, option.help + (isRepeated ? ". May be repeated" : ""), kHelpColumn, used);
}

void appendExamples(std::string& out) {
  constexpr std::size_t kMeaningColumn = 61;
  out += "Examples:\n";
  for (const Example& example : kExamples) {
    const std::string line = "  " + std::string(example.line);
    out += line;
    appendWrapped(out, example.meaning, kMeaningColumn, line.size());
  }
}

}  // namespace

std::string helpText() {
  std::string text = "Usage: " + std::string(kUsage[0]) + "\n       " + std::string(kUsage[1]) + "\n\n";
  appendWrapped(text, kDescription, 0, 0);
  text += "\n";
  appendExamples(text);
  Options options;
  for (const auto& group : optionGroups(options)) {
    text.append("\n").append(group->title()).append(":\n");
    for (const Option& option : group->declare()) {
      appendOption(text, option);
    }
  }
  text += "\n";
  appendWrapped(text, "Exit status: " + std::string(kStatus), 0, 0);
  text += "\n";
  appendWrapped(text, kSettings, 0, 0);
  return text;
}

std::string shortHelp() {
  return "Usage: " + std::string(kUsage[0]) +
         "\n"
         "\n"
         "Turns a Markdown or CSV file into a document, in several formats at once:\n"
         "  scrivalen notes.md -o notes.pdf -o notes.html\n"
         "\n"
         "scrivalen --help lists the formats and the options.\n";
}

std::string versionText() { return "scrivalen " SCRIVALEN_VERSION "\n"; }

std::span<const std::string_view> usageLines() { return kUsage; }
std::string_view description() { return kDescription; }
std::span<const Example> examples() { return kExamples; }
std::string_view statusText() { return kStatus; }
std::string_view settingsText() { return kSettings; }

}  // namespace scrivalen::command

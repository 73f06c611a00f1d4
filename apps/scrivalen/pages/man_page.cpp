#include "pages/man_page.h"

#include "options/help.h"
#include "options/option_group.h"
#include "texts.h"

#include <scrivalen/version.h>

namespace scrivalen::command {
namespace {

// A hyphen would become a typographic one, and a point or an apostrophe at the beginning of a line is a request.
std::string escaped(std::string_view text) {
  std::string result;
  for (const char c : text) {
    switch (c) {
      case '\\': result += "\\e"; break;
      case '-': result += "\\-"; break;
      case '\'': result += "\\(aq"; break;
      case '^': result += "\\(ha"; break;
      case '~': result += "\\(ti"; break;
      case '`': result += "\\(ga"; break;
      default: result += c;
    }
  }
  return result.starts_with('.') ? "\\&" + result : result;
}

std::string bold(std::string_view text) { return "\\fB" + escaped(text) + "\\fR"; }
std::string italic(std::string_view text) { return "\\fI" + escaped(text) + "\\fR"; }

// A line of usage: words in capitals are for values.
std::string usage(std::string_view line) {
  std::string result;
  for (const std::string_view word : split(line, ' ')) {
    const bool isLiteral = word == "scrivalen" || word.starts_with('-');
    result.append(result.empty() ? "" : " ").append(isLiteral ? bold(word) : escaped(word));
  }
  return result;
}

void appendOption(std::string& page, const Option& option) {
  page += ".TP\n";
  std::string names;
  for (const std::string_view name : split(option.names, ',')) {
    names.append(names.empty() ? "" : ", ").append(option.isArgument() ? italic(name) : bold(name));
  }
  page += names;
  if (!option.isFlag() && !option.isArgument()) {
    page += " " + italic(option.valueName);
  }
  page += "\n" + escaped(option.help) + ".\n";
  if (option.mayBeRepeated()) {
    page += "May be given several times.\n";
  }
}

void appendOptions(std::string& page) {
  Options options;
  page += ".SH OPTIONS\n";
  for (const auto& group : optionGroups(options)) {
    page.append(".SS ").append(group->title()).append("\n");
    for (const Option& option : group->declare()) {
      appendOption(page, option);
    }
  }
}

void appendExamples(std::string& page) {
  page += ".SH EXAMPLES\n";
  for (const Example& example : examples()) {
    page.append(".TP\n").append(bold(example.line)).append("\n").append(escaped(example.meaning)).append("\n");
  }
}

}  // namespace

std::string manPage() {
  std::string page = ".TH SCRIVALEN 1 \"\" \"scrivalen " SCRIVALEN_VERSION "\" \"User Commands\"\n";
  page += ".nh\n.ad l\n.SH NAME\nscrivalen \\- turn Markdown and CSV into documents\n.SH SYNOPSIS\n";
  for (const std::string_view line : usageLines()) {
    page.append(usage(line)).append("\n.br\n");
  }
  page.append(".SH DESCRIPTION\n").append(escaped(description())).append("\n");
  appendOptions(page);
  appendExamples(page);
  page.append(".SH SETTINGS\n").append(escaped(settingsText())).append("\n");
  page.append(".SH EXIT STATUS\n").append(escaped(statusText())).append("\n");
  page +=
      ".SH ENVIRONMENT\n"
      ".TP\n\\fBSOURCE_DATE_EPOCH\\fR\nThe time that documents have, in seconds since 1970, so that equal inputs give "
      "equal files.\n"
      ".TP\n\\fBNO_COLOR\\fR\nIf it is not empty, messages have no colours.\n";
  return page;
}

}  // namespace scrivalen::command

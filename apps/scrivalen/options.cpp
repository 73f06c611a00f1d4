#include "options.h"

#include "errors.h"
#include "system/files/files.h"
#include "templates.h"
#include "text/ascii.h"
#include "texts.h"

#include <scrivalen/version.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <iterator>

namespace scrivalen::command {
namespace {

constexpr const char* kDescription = "Turns a Markdown or CSV file into a document, in several formats at once.\n";

constexpr const char* kExamples =
    "Examples:\n"
    "  scrivalen notes.md -o notes.html\n"
    "  scrivalen notes.md --toc -o notes.html -o notes.txt\n"
    "  scrivalen sales.csv --title \"Sales 2024\" -o sales.pdf -o sales.xlsx\n"
    "  scrivalen notes.md --set paper=Letter --set footer=\"||{page}\" -o notes.rtf\n"
    "  sort rows.tsv | scrivalen - --from tsv -o text:- | less\n"
    "\n"
    "An output replaces an existing file once it is complete; a failed output\n"
    "leaves the file unchanged.\n"
    "Exit status: 0 success, 1 an input or output failed, 2 wrong usage.";

constexpr const char* kShortHelp =
    "Usage: scrivalen INPUT -o FILE [-o FILE ...] [OPTIONS]\n"
    "\n"
    "Turns a Markdown or CSV file into a document, in several formats at once:\n"
    "  scrivalen notes.md -o notes.pdf -o notes.html\n"
    "\n"
    "scrivalen --help lists the formats and the options.\n";

// The options before they are interpreted.
struct RawOptions {
  Options options;
  std::vector<std::string> outputs;
  std::vector<std::string> properties;
  std::vector<std::string> settings;
  std::string from;
  std::string templateName;
  std::string separator;
  std::string delimiter;
  bool listTemplates = false;
};

void addOptions(CLI::App& app, RawOptions& raw) {
  Options& options = raw.options;
  app.add_option("INPUT", options.input, "The file to read; \"-\" is standard input")->type_name("");
  app.add_option("-o,--output", raw.outputs,
                 "A file to write, in the format of its extension\n(" + knownExtensions() +
                     ") or of a prefix,\nas in html:FILE; FORMAT:- is standard output.\nMay be given several times")
      ->type_name("FILE")
      ->allow_extra_args(false);
  app.add_option("--from", raw.from,
                 "The input format: markdown, csv or tsv\n(default: by its extension, otherwise markdown)")
      ->type_name("FORMAT");
  app.add_option("--delimiter", raw.delimiter,
                 "What separates the cells of CSV; \\t is a tab\n(default: found from the first rows)")
      ->type_name("CHARACTER");
  app.add_option("--title", options.title, "The title (default: the first heading,\notherwise the input's name)")
      ->type_name("TEXT");
  app.add_option("--property", raw.properties,
                 "Fills the placeholder %NAME% of a template.\nMay be given several times")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  app.add_option("--set", raw.settings,
                 "A setting of the document, such as paper=Letter\nor text.width=100. May be given several times")
      ->type_name("NAME=VALUE")
      ->allow_extra_args(false);
  app.add_option("--template", raw.templateName, "A template for HTML pages")->type_name("NAME");
  app.add_flag("--list-templates", raw.listTemplates, "Print the names of the templates and exit");
  app.add_option("--styles", options.stylesFile, "A style sheet for spreadsheets")->type_name("FILE");
  app.add_flag("--landscape", options.landscape, "Use landscape pages");
  app.add_flag("--single-byte", options.singleByte, "Write text in Latin-1, not UTF-8");
  app.add_option("--separator", raw.separator,
                 "What is between the cells of tables in text,\ninstead of aligned columns; \\t is a tab")
      ->type_name("TEXT");
  app.add_flag("--toc", options.contents, "Begin with a table of contents");
  app.add_flag("--unsafe", options.unsafe,
               "Pass on the raw HTML of Markdown, and addresses\nthat run a program (javascript:)");
  app.add_flag("--strict", options.strict, "Exit with status 1 after a warning, too");
  app.add_flag("-q,--quiet", options.quiet, "Print errors only");
}

void rejectLeftovers(std::vector<std::string> leftovers) {
  std::erase(leftovers, "--");
  for (const std::string& argument : leftovers) {
    if (argument.starts_with('-')) {
      throw UsageError("unknown option '" + argument + "'; see scrivalen --help");
    }
  }
  if (!leftovers.empty()) {
    throw UsageError("more than one input: '" + leftovers.front() + "'");
  }
}

// "C:\x.html" is a file on a drive, "html:x" a format and its file, "a:b.html" a file with a colon in its name.
OutputRequest outputRequest(const std::string& argument) {
  OutputRequest request{nullptr, argument};
  const std::size_t colon = argument.find(':');
  if (colon != std::string::npos && colon > 1) {
    request.format = findFormat(std::string_view(argument).substr(0, colon));
  }
  if (request.format) {
    request.name = argument.substr(colon + 1);
  } else {
    const std::size_t dot = argument.find_last_of("./\\");
    const bool hasExtension = dot != std::string::npos && argument[dot] == '.';
    request.format = hasExtension ? findFormat(std::string_view(argument).substr(dot + 1)) : nullptr;
  }
  if (request.name.empty()) {
    throw UsageError("the output '" + argument + "' has no file name");
  }
  if (!request.format) {
    throw UsageError("the format of '" + argument + "' is unknown; use " + knownExtensions() + ", or FORMAT:FILE");
  }
  return request;
}

InputFormat inputFormat(const std::string& from, const std::string& input) {
  struct Name {
    std::string_view name;
    InputFormat format;
  };
  static constexpr Name kNames[] = {{"markdown", InputFormat::Markdown},
                                    {"md", InputFormat::Markdown},
                                    {"csv", InputFormat::Csv},
                                    {"tsv", InputFormat::Tsv},
                                    {"tab", InputFormat::Tsv}};
  const std::size_t dot = input.rfind('.');
  const std::string wanted = scrivalen::asciiLowered<char>(!from.empty()              ? from
                                                           : dot == std::string::npos ? ""
                                                                                      : input.substr(dot + 1));
  for (const Name& name : kNames) {
    if (name.name == wanted) {
      return name.format;
    }
  }
  if (!from.empty()) {
    throw UsageError("--from takes markdown, csv or tsv, not '" + from + "'");
  }
  return InputFormat::Markdown;
}

std::pair<std::string, std::string> nameAndValue(const char* option, const std::string& argument) {
  const std::size_t equals = argument.find('=');
  if (equals == 0 || equals == std::string::npos) {
    throw UsageError(std::string(option) + " takes NAME=VALUE, not '" + argument + "'");
  }
  return {argument.substr(0, equals), argument.substr(equals + 1)};
}

std::pair<std::string, std::string> property(const std::string& argument) {
  auto [name, value] = nameAndValue("--property", argument);
  if (name.size() > 2 && name.starts_with('%') && name.ends_with('%')) {
    name = name.substr(1, name.size() - 2);
  }
  if (name == "TITLE" || name == "BODY") {
    throw UsageError("--property cannot set %" + name + (name == "TITLE" ? "%; use --title" : "%"));
  }
  return {name, value};
}

// Quotes and line ends have a meaning of their own in CSV.
std::optional<char> delimiter(const std::string& argument, InputFormat format) {
  if (argument.empty()) {
    return format == InputFormat::Tsv ? std::optional('\t') : std::nullopt;
  }
  const std::string text = argument == "\\t" ? "\t" : argument;
  const auto c = static_cast<unsigned char>(text.front());
  if (text.size() != 1 || text == "\"" || (c < 0x20 && c != '\t') || c > 0x7E) {
    throw UsageError("--delimiter takes one ASCII character, not '" + argument + "'");
  }
  return text.front();
}

std::string chosenTemplate(const std::string& name) {
  const auto file = templateFile(scrivalen::widePath(name));
  if (!file) {
    throw UsageError("there is no template '" + name + "'; see scrivalen --list-templates");
  }
  return *file;
}

std::string templateList() {
  std::string list;
  for (const std::wstring& name : templateNames()) {
    list.append(scrivalen::narrowPath(name)).append("\n");
  }
  return list;
}

// Whether two names refer to the same file, which need not exist yet.
bool isSameTarget(const std::string& a, const std::string& b) {
  const std::wstring first = scrivalen::widePath(a);
  const std::wstring second = scrivalen::widePath(b);
  return scrivalen::isSameFile(first, second) || scrivalen::resolvedPath(first) == scrivalen::resolvedPath(second);
}

void requireDifferentFiles(const Options& options) {
  for (auto output = options.outputs.begin(); output != options.outputs.end(); ++output) {
    if (options.input != "-" && output->name != "-" && isSameTarget(options.input, output->name)) {
      throw UsageError("the output '" + output->name + "' is the input");
    }
    const auto same = [&](const OutputRequest& other) {
      return other.name == output->name || isSameTarget(other.name, output->name);
    };
    if (std::any_of(options.outputs.begin(), output, same)) {
      throw UsageError("two outputs have the name '" + output->name + "'");
    }
  }
}

Options interpret(RawOptions raw) {
  Options options = std::move(raw.options);
  if (options.input.empty()) {
    throw UsageError("no input given; see scrivalen --help");
  }
  if (raw.outputs.empty()) {
    throw UsageError("no output given (-o FILE); see scrivalen --help");
  }
  options.inputFormat = inputFormat(raw.from, options.input);
  std::transform(raw.outputs.begin(), raw.outputs.end(), std::back_inserter(options.outputs), outputRequest);
  std::transform(raw.properties.begin(), raw.properties.end(), std::back_inserter(options.properties), property);
  std::transform(raw.settings.begin(), raw.settings.end(), std::back_inserter(options.settings),
                 [](const std::string& argument) { return nameAndValue("--set", argument); });
  options.delimiter = delimiter(raw.delimiter, options.inputFormat);
  if (!raw.templateName.empty()) {
    options.templateFile = chosenTemplate(raw.templateName);
  }
  options.separator = replacedAll<char>(raw.separator, "\\t", "\t");
  requireDifferentFiles(options);
  return options;
}

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
  CLI::App app(kDescription, "scrivalen");
  app.footer(kExamples);
  app.allow_windows_style_options(false);
  app.allow_extras();
  app.get_formatter()->column_width(25);
  app.set_version_flag("-V,--version", "scrivalen " SCRIVALEN_VERSION);
  RawOptions raw;
  addOptions(app, raw);
  if (arguments.empty()) {
    return {{}, kShortHelp};
  }
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::CallForHelp&) {
    return {{}, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return {{}, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  rejectLeftovers(app.remaining());
  if (raw.listTemplates) {
    return {{}, templateList()};
  }
  return {interpret(std::move(raw)), std::nullopt};
}

}  // namespace scrivalen::command

#include "options/command_line.h"

#include "errors.h"
#include "options/option_group.h"
#include "options/suggestion.h"
#include "system/files/files.h"
#include "templates.h"

#include <scrivalen/version.h>

#include <CLI/CLI.hpp>

#include <algorithm>

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

using OptionGroups = std::vector<std::unique_ptr<OptionGroup>>;

OptionGroups optionGroups(Options& options) {
  OptionGroups groups;
  for (const auto make : {&inputOptions, &tableOptions, &outputOptions, &layoutOptions, &behaviourOptions}) {
    groups.push_back(make(options));
  }
  return groups;
}

CLI::Option* addOption(CLI::App& app, const Option& option, bool* flag) {
  return app.add_flag(option.names, *flag, option.help);
}

template <class Value>
CLI::Option* addOption(CLI::App& app, const Option& option, Value* value) {
  return app.add_option(option.names, *value, option.help)->type_name(option.valueName);
}

// An option takes one value each time, the arguments without an option all that are left.
CLI::Option* addOption(CLI::App& app, const Option& option, std::vector<std::string>* values) {
  CLI::Option* const added = app.add_option(option.names, *values, option.help)->type_name(option.valueName);
  return added->allow_extra_args(added->get_positional());
}

void addOptions(CLI::App& app, const OptionGroups& groups) {
  for (const auto& group : groups) {
    for (const Option& option : group->declare()) {
      CLI::Option* const added =
          std::visit([&](auto* target) { return addOption(app, option, target); }, option.target);
      if (option.names.starts_with('-')) {
        added->group(std::string(group->title()));
      }
    }
  }
}

std::vector<std::string> longNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) {
      names.push_back("--" + name);
    }
  }
  return names;
}

// "-titel" and "--titel=x" are "--titel".
std::string asLongName(std::string_view argument) {
  const std::string_view name = argument.substr(0, argument.find('='));
  return "--" + std::string(name.substr(std::min(name.find_first_not_of('-'), name.size())));
}

void rejectLeftovers(const CLI::App& app) {
  for (const std::string& argument : app.remaining()) {
    if (argument != "--") {
      const auto names = longNames(app);
      throw UsageError("unknown option '" + argument.substr(0, argument.find('=')) + "'" +
                       suggestion(asLongName(argument), {names.begin(), names.end()}, "; see scrivalen --help"));
    }
  }
}

std::string templateList() {
  std::string list;
  for (const std::wstring& name : templateNames()) {
    list.append(scrivalen::narrowPath(name)).append("\n");
  }
  return list;
}

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
  if (arguments.empty()) {
    return {{}, kShortHelp};
  }
  CLI::App app(kDescription, "scrivalen");
  app.footer(kExamples);
  app.allow_windows_style_options(false);
  app.allow_extras();
  app.get_formatter()->column_width(25);
  Options options;
  const OptionGroups groups = optionGroups(options);
  addOptions(app, groups);
  bool listTemplates = false;
  const std::string last(groups.back()->title());
  app.add_flag("--list-templates", listTemplates, "Print the names of the templates and exit")->group(last);
  app.set_help_flag("-h,--help", "Print this help and exit")->group(last);
  app.set_version_flag("-V,--version", "scrivalen " SCRIVALEN_VERSION, "Print the version and exit")->group(last);
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::CallForHelp&) {
    return {{}, app.help()};
  } catch (const CLI::CallForVersion& version) {
    return {{}, std::string(version.what()) + "\n"};
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  rejectLeftovers(app);
  if (listTemplates) {
    return {{}, templateList()};
  }
  for (const auto& group : groups) {
    group->interpret();
  }
  return {std::move(options), std::nullopt};
}

}  // namespace scrivalen::command

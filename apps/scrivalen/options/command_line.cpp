#include "options/command_line.h"

#include "errors.h"
#include "options/help.h"
#include "options/option_group.h"
#include "options/suggestion.h"
#include "system/files/files.h"
#include "templates.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace scrivalen::command {
namespace {

using OptionGroups = std::vector<std::unique_ptr<OptionGroup>>;

void addOption(CLI::App& app, const std::string& names, bool* flag) { app.add_flag(names, *flag); }

void addOption(CLI::App& app, const std::string& names, std::optional<std::string>* value) {
  app.add_option(names, *value);
}

// An option takes one value each time, the arguments without an option all that are left.
void addOption(CLI::App& app, const std::string& names, std::vector<std::string>* values) {
  CLI::Option* const added = app.add_option(names, *values);
  added->allow_extra_args(added->get_positional());
}

void addOptions(CLI::App& app, const OptionGroups& groups) {
  for (const auto& group : groups) {
    for (const Option& option : group->declare()) {
      std::visit([&](auto* target) { addOption(app, option.names, target); }, option.target);
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

// Help is given whatever else is on the command line, even if that is wrong.
bool wantsHelp(const std::vector<std::string>& arguments) {
  return std::any_of(arguments.begin(), arguments.end(),
                     [](const std::string& argument) { return argument == "-h" || argument == "--help"; });
}

std::optional<std::string> printoutOf(const Options& options) {
  if (options.help) {
    return helpText();
  }
  if (options.version) {
    return versionText();
  }
  return options.listTemplates ? std::optional(templateList()) : std::nullopt;
}

}  // namespace

CommandLine parseCommandLine(const std::vector<std::string>& arguments) {
  if (arguments.empty()) {
    return {{}, shortHelp()};
  }
  CLI::App app;
  app.set_help_flag();
  app.allow_windows_style_options(false);
  app.allow_extras();
  Options options;
  const OptionGroups groups = optionGroups(options);
  addOptions(app, groups);
  try {
    app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
  } catch (const CLI::ParseError& error) {
    if (!wantsHelp(arguments)) {
      throw UsageError(error.what());
    }
    options.help = true;
  }
  if (auto printout = printoutOf(options)) {
    return {{}, std::move(printout)};
  }
  rejectLeftovers(app);
  for (const auto& group : groups) {
    group->interpret();
  }
  return {std::move(options), std::nullopt};
}

}  // namespace scrivalen::command

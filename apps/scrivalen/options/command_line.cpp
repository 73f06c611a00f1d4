#include "options/command_line.h"

#include "errors.h"
#include "options/argument_parser.h"
#include "options/different_files.h"
#include "options/help.h"
#include "options/option_group.h"
#include "system/files/files.h"
#include "templates.h"
#include "texts.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

std::string templateList() {
  std::string list;
  for (const std::wstring& name : templateNames()) {
    list.append(scrivalen::narrowPath(name)).append("\n");
  }
  return list;
}

bool takesValue(const std::vector<Option>& options, const std::string& argument) {
  return std::any_of(options.begin(), options.end(), [&](const Option& option) {
    const auto names = split(option.names, ',');
    return !option.isFlag() && std::find(names.begin(), names.end(), argument) != names.end();
  });
}

// Help is given whatever else is on the command line, even if that is wrong. The value of an option is no request.
bool wantsHelp(const std::vector<Option>& options, const std::vector<std::string>& arguments) {
  for (std::size_t i = 0; i < arguments.size(); ++i) {
    const std::string& argument = arguments[i];
    if (argument == "-h" || argument == "--help") {
      return true;
    }
    if (argument.starts_with('-') && takesValue(options, argument)) {
      ++i;
    }
  }
  return false;
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
  Options options;
  const auto groups = optionGroups(options);
  const auto declarations = declarationsOf(groups);
  try {
    parseArguments(declarations, arguments);
  } catch (const UsageError&) {
    if (!wantsHelp(declarations, arguments)) {
      throw;
    }
    options.help = true;
  }
  if (auto printout = printoutOf(options)) {
    return {{}, std::move(printout)};
  }
  for (const auto& group : groups) {
    group->interpret();
  }
  requireDifferentFiles(options);
  return {std::move(options), std::nullopt};
}

}  // namespace scrivalen::command

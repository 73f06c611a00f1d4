#include "options/command_line.h"

#include "errors.h"
#include "options/argument_parser.h"
#include "options/different_files.h"
#include "options/help.h"
#include "options/option_group.h"
#include "system/files/files.h"
#include "templates.h"

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
  Options options;
  const auto groups = optionGroups(options);
  try {
    parseArguments(declarationsOf(groups), arguments);
  } catch (const UsageError&) {
    if (!wantsHelp(arguments)) {
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

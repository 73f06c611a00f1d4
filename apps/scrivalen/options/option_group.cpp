#include "options/option_group.h"

#include "errors.h"

namespace scrivalen::command {

std::vector<std::unique_ptr<OptionGroup>> optionGroups(Options& options) {
  std::vector<std::unique_ptr<OptionGroup>> groups;
  for (const auto make : {&inputOptions, &outputOptions, &layoutOptions, &tableOptions, &behaviourOptions}) {
    groups.push_back(make(options));
  }
  return groups;
}

std::vector<Option> declarationsOf(const std::vector<std::unique_ptr<OptionGroup>>& groups) {
  std::vector<Option> all;
  for (const auto& group : groups) {
    const auto some = group->declare();
    all.insert(all.end(), some.begin(), some.end());
  }
  return all;
}

void requireText(const char* option, const std::optional<std::string>& value, const char* remedy) {
  if (value && value->empty()) {
    throw UsageError(std::string(option) + " has an empty value; " + remedy);
  }
}

std::pair<std::string, std::string> nameAndValue(const char* option, const std::string& argument) {
  const std::size_t equals = argument.find('=');
  if (equals == 0 || equals == std::string::npos) {
    throw UsageError(std::string(option) + " takes NAME=VALUE, not '" + argument + "'");
  }
  return {argument.substr(0, equals), argument.substr(equals + 1)};
}

}  // namespace scrivalen::command

#include "options/argument_parser.h"

#include "errors.h"
#include "options/suggestion.h"
#include "texts.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

bool hasName(const Option& option, std::string_view wanted) {
  const auto names = split(option.names, ',');
  return std::find(names.begin(), names.end(), wanted) != names.end();
}

class ArgumentParser {
 public:
  ArgumentParser(const std::vector<Option>& options, const std::vector<std::string>& arguments)
      : options_(options), arguments_(arguments) {}

  void parse() {
    bool areInputs = false;
    while (at_ < arguments_.size()) {
      const std::string& argument = arguments_[at_++];
      if (areInputs || argument == "-" || !argument.starts_with('-')) {
        takeInput(argument);
      } else if (argument == "--") {
        areInputs = true;
      } else if (argument.starts_with("--")) {
        takeLong(argument);
      } else {
        takeShort(argument);
      }
    }
  }

 private:
  const Option* find(std::string_view name) const {
    const auto found =
        std::find_if(options_.begin(), options_.end(), [&](const Option& option) { return hasName(option, name); });
    return found == options_.end() ? nullptr : &*found;
  }

  void takeInput(const std::string& argument) {
    const auto inputs =
        std::find_if(options_.begin(), options_.end(), [](const Option& option) { return option.isArgument(); });
    setValue(*inputs, argument, argument);
  }

  void takeLong(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const Option* const option = find(name);
    if (!option) {
      failUnknown(name);
    }
    if (option->isFlag()) {
      if (equals != std::string::npos) {
        throw UsageError(name + " takes no value, not '" + argument.substr(equals + 1) + "'");
      }
      setFlag(*option);
    } else if (equals != std::string::npos) {
      setValue(*option, name, argument.substr(equals + 1));
    } else {
      setValue(*option, name, nextArgument(*option, name));
    }
  }

  // Several letters: flags, and at last perhaps an option with its value.
  void takeShort(const std::string& argument) {
    const std::string word = argument.substr(0, argument.find('='));
    if (find(std::string("-").append(word))) {
      failUnknown(word);
    }
    for (std::size_t i = 1; i < argument.size(); ++i) {
      const std::string name = {'-', argument[i]};
      const Option* const option = find(name);
      if (!option) {
        failUnknown(i == 1 ? argument : name);
      }
      if (!option->isFlag()) {
        const bool isAttached = i + 1 < argument.size();
        const std::size_t start = isAttached && argument[i + 1] == '=' ? i + 2 : i + 1;
        setValue(*option, name, isAttached ? argument.substr(start) : nextArgument(*option, name));
        return;
      }
      setFlag(*option);
    }
  }

  const std::string& nextArgument(const Option& option, const std::string& name) {
    if (at_ == arguments_.size()) {
      throw UsageError(name + " needs a value: " + name + " " + option.valueName);
    }
    return arguments_[at_++];
  }

  static void setFlag(const Option& option) { *std::get<bool*>(option.target) = true; }

  static void setValue(const Option& option, const std::string& name, const std::string& value) {
    if (option.mayBeRepeated()) {
      std::get<std::vector<std::string>*>(option.target)->push_back(value);
      return;
    }
    std::optional<std::string>& target = *std::get<std::optional<std::string>*>(option.target);
    if (target) {
      throw UsageError(name + " is given twice, with '" + *target + "' and '" + value + "'; give it once");
    }
    target = value;
  }

  // "-titel" and "--titel" are meant as "--title".
  [[noreturn]] void failUnknown(const std::string& name) const {
    std::vector<std::string_view> known;
    for (const Option& option : options_) {
      const std::string_view longName = split(option.names, ',').back();
      if (longName.starts_with("--")) {
        known.push_back(longName);
      }
    }
    std::string asLong = "--";
    asLong.append(name, std::min(name.find_first_not_of('-'), name.size()));
    throw UsageError("unknown option '" + name + "'" + suggestion(asLong, known, "; see scrivalen --help"));
  }

  const std::vector<Option>& options_;
  const std::vector<std::string>& arguments_;
  std::size_t at_ = 0;
};

}  // namespace

void parseArguments(const std::vector<Option>& options, const std::vector<std::string>& arguments) {
  ArgumentParser(options, arguments).parse();
}

}  // namespace scrivalen::command

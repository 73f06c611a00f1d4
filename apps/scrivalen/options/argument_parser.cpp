#include "options/argument_parser.h"

#include "errors.h"
#include "options/suggestion.h"
#include "texts.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace scrivalen::command {
namespace {

// CLI11 takes an empty value for none, "[a,b]" for two inputs, "-output" for "-o utput" and "-5" for an input. A NUL,
// which no argument contains, keeps it from doing so; it is removed from what CLI11 returns.
constexpr char kArgumentMark = '\0';

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

std::string unmarked(std::string text) {
  std::erase(text, kArgumentMark);
  return text;
}

bool hasName(const Option& option, std::string_view wanted) {
  const auto names = split(option.names, ',');
  return std::find(names.begin(), names.end(), wanted) != names.end();
}

// The name in "--name=value".
std::string nameIn(const std::string& argument) { return argument.substr(0, argument.find('=', 2)); }

class ArgumentParser {
 public:
  ArgumentParser(const std::vector<Option>& options, const std::vector<std::string>& arguments)
      : options_(options), arguments_(arguments) {
    app_.set_help_flag();
    app_.allow_windows_style_options(false);
    app_.allow_extras();
    for (const Option& option : options) {
      declared_.push_back(option.isFlag() ? declareFlag(option) : declareValue(option));
    }
    for (const std::string& argument : arguments) {
      marked_.push_back(marked(argument));
    }
  }

  void parse() {
    std::vector<std::string> left(marked_.rbegin(), marked_.rend());
    try {
      app_.parse(left);
    } catch (const CLI::ParseError& error) {
      rejectUnknown();
      failAt(arguments_[arguments_.size() - left.size() - 1], error);
    }
    rejectUnknown();
    for (std::size_t i = 0; i < options_.size(); ++i) {
      assign(options_[i], *declared_[i]);
    }
  }

 private:
  CLI::Option* declareFlag(const Option& option) { return app_.add_flag(option.names)->disable_flag_override(); }

  // An option takes one value each time, the inputs are all arguments that are left.
  CLI::Option* declareValue(const Option& option) {
    return app_.add_option(option.names)->expected(1, -1)->allow_extra_args(option.isArgument());
  }

  std::string marked(std::string argument) const {
    const std::size_t position = markPosition(argument);
    if (position != std::string::npos) {
      argument.insert(position, 1, kArgumentMark);
    }
    return argument;
  }

  std::size_t markPosition(const std::string& argument) const {
    if (!argument.starts_with('-') || argument == "-") {
      return 0;
    }
    if (argument == "--") {
      return std::string::npos;
    }
    return argument.starts_with("--") ? markOfLong(argument) : markOfShort(argument);
  }

  // In "--title=" the value is marked; "---title" is no input.
  static std::size_t markOfLong(const std::string& argument) {
    if (kLetters.find(argument[2]) == std::string_view::npos) {
      return 2;
    }
    const std::size_t equals = argument.find('=');
    return equals == std::string::npos ? equals : equals + 1;
  }

  // In "-q-title" and "-5" the first letter that cannot be an option is marked. An equals sign is not, so that
  // valueOf() finds it.
  std::size_t markOfShort(const std::string& argument) const {
    if (isLongName(argument)) {
      return 1;
    }
    const std::size_t end = argument.find_first_not_of(kLetters, 1);
    return end != std::string::npos && argument[end] == '=' ? std::string::npos : end;
  }

  // Whether one of the two dashes is missing.
  bool isLongName(const std::string& argument) const { return find(std::string("-").append(nameIn(argument))); }

  const Option* find(std::string_view name) const {
    const auto found =
        std::find_if(options_.begin(), options_.end(), [&](const Option& option) { return hasName(option, name); });
    return found == options_.end() ? nullptr : &*found;
  }

  static void assign(const Option& option, const CLI::Option& declared) {
    if (option.isFlag()) {
      *std::get<bool*>(option.target) = declared.count() > 0;
      return;
    }
    for (const std::string& result : declared.results()) {
      setValue(option, valueOf(result));
    }
  }

  // CLI11 takes the equals sign in "-o=page.html" for the beginning of the value.
  static std::string valueOf(const std::string& result) {
    return unmarked(result.starts_with('=') ? result.substr(1) : result);
  }

  static void setValue(const Option& option, const std::string& value) {
    if (option.mayBeRepeated()) {
      std::get<std::vector<std::string>*>(option.target)->push_back(value);
      return;
    }
    std::optional<std::string>& target = *std::get<std::optional<std::string>*>(option.target);
    if (target) {
      throw UsageError(option.names + " is given twice, with '" + *target + "' and '" + value + "'; give it once");
    }
    target = value;
  }

  // CLI11 fails at a flag with a value, and at an option without one, which is the last argument.
  [[noreturn]] void failAt(const std::string& argument, const CLI::ParseError& error) const {
    const bool isLong = argument.starts_with("--");
    if (const std::size_t equals = argument.find('='); isLong && equals != std::string::npos) {
      throw UsageError(argument.substr(0, equals) + " takes no value, not '" + argument.substr(equals + 1) + "'");
    }
    const std::string name = isLong ? argument : std::string{'-', argument.back()};
    const Option* const option = find(name);
    throw UsageError(option ? name + " needs a value: " + name + " " + option->valueName : error.what());
  }

  void rejectUnknown() const {
    for (const std::string& argument : app_.remaining()) {
      if (argument != "--") {
        failUnknown(unknownName(argument));
      }
    }
  }

  // Of several letters, CLI11 returns those from the first that is unknown.
  std::string unknownName(const std::string& argument) const {
    const std::string text = unmarked(argument);
    if (std::find(marked_.begin(), marked_.end(), argument) == marked_.end()) {
      return text.substr(0, 2);
    }
    return text.starts_with("--") || isLongName(text) ? nameIn(text) : text;
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
  std::vector<std::string> marked_;
  CLI::App app_;
  std::vector<const CLI::Option*> declared_;
};

}  // namespace

void parseArguments(const std::vector<Option>& options, const std::vector<std::string>& arguments) {
  ArgumentParser(options, arguments).parse();
}

}  // namespace scrivalen::command

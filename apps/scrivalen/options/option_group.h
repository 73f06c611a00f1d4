#pragma once

#include "options/options.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace scrivalen::command {

/// What a shell offers as the value of an option.
enum class Offer { Nothing, Files, Folders, Words, ListsOfWords, Templates };

/// An option as users see it, and where its value goes.
struct Option {
  /// A flag, a text, or an option that may be given several times. Not owned.
  std::variant<bool*, std::optional<std::string>*, std::vector<std::string>*> target;
  std::string names;      ///< "-o,--output"; an argument without an option has a name without dashes
  std::string valueName;  ///< "FILE"; empty for a flag
  std::string help;       ///< for the help and the manual; wrapped there
  Offer offer = Offer::Nothing;
  std::vector<std::string_view> words = {};  ///< for Offer::Words and Offer::ListsOfWords

  bool isArgument() const { return !names.starts_with('-'); }
  bool isFlag() const { return std::holds_alternative<bool*>(target); }
  bool mayBeRepeated() const { return std::holds_alternative<std::vector<std::string>*>(target); }
};

/// A group of options: their declaration, which the help shows, and their interpretation. To add an option, add its
/// declaration to a group, a member to Options, and to interpret() whatever a plain assignment cannot do.
class OptionGroup {
 public:
  OptionGroup() = default;
  OptionGroup(const OptionGroup&) = delete;
  OptionGroup& operator=(const OptionGroup&) = delete;
  virtual ~OptionGroup() = default;

  virtual std::string_view title() const = 0;

  /// The options, most used first. Their targets are valid as long as the group and its Options are.
  virtual std::vector<Option> declare() = 0;

  /// Completes the Options after parsing. Groups are interpreted in the order of their factories below. Raises
  /// UsageError.
  virtual void interpret() = 0;
};

/// @param options  not owned; must outlive the group
std::unique_ptr<OptionGroup> inputOptions(Options& options);
std::unique_ptr<OptionGroup> outputOptions(Options& options);
std::unique_ptr<OptionGroup> layoutOptions(Options& options);
std::unique_ptr<OptionGroup> tableOptions(Options& options);
std::unique_ptr<OptionGroup> behaviourOptions(Options& options);

/// All groups, in that order.
std::vector<std::unique_ptr<OptionGroup>> optionGroups(Options& options);

/// The options of all groups, in order.
std::vector<Option> declarationsOf(const std::vector<std::unique_ptr<OptionGroup>>& groups);

/// Raises UsageError if an option was given an empty value.
/// @param remedy  what to do: "give the path of a file"
void requireText(const char* option, const std::optional<std::string>& value, const char* remedy);

/// Divides NAME=VALUE. Raises UsageError.
/// @param option  for the message: "--set"
std::pair<std::string, std::string> nameAndValue(const char* option, const std::string& argument);

}  // namespace scrivalen::command

#include "pages/completions.h"

#include "options/option_group.h"
#include "text/replaced_all.h"
#include "texts.h"

#include <algorithm>

namespace scrivalen::command {
namespace {

// The beginning of the help, which shells show beside the option.
std::string summary(const Option& option) {
  std::string text = option.help;
  for (const std::string_view end : {" (", "; ", ": ", ". "}) {
    text = text.substr(0, text.find(end));
  }
  return text;
}

// Within single quotes.
std::string quoted(std::string_view text) { return "'" + replacedAll<char>(text, "'", "'\\''") + "'"; }

std::string bashValues(const Option& option) {
  const std::string words = quoted(joined(option.words, " "));
  switch (option.offer) {
    case Offer::Files: return "_scrivalen_files";
    case Offer::Folders: return "_scrivalen_folders";
    case Offer::Words: return "_scrivalen_words " + words;
    case Offer::ListsOfWords: return "_scrivalen_lists " + words;
    case Offer::Templates: return "_scrivalen_templates \"${COMP_WORDS[0]}\"";
    default: return ":";
  }
}

constexpr const char* kBashStart = R"bash(# bash completion for scrivalen

_scrivalen_add() {
  local word
  while IFS= read -r word; do
    COMPREPLY+=("$word")
  done
}

_scrivalen_files() {
  compopt -o filenames 2>/dev/null
  _scrivalen_add < <(compgen -f -- "$cur")
}

_scrivalen_folders() {
  compopt -o filenames 2>/dev/null
  _scrivalen_add < <(compgen -d -- "$cur")
}

_scrivalen_words() {
  _scrivalen_add < <(compgen -W "$1" -- "$cur")
}

# Words with commas between them.
_scrivalen_lists() {
  _scrivalen_add < <(compgen -P "${cur%"${cur##*,}"}" -W "$1" -- "${cur##*,}")
}

_scrivalen_templates() {
  local command=$1
  command=${command/#\~/$HOME}
  _scrivalen_words "$("$command" --list-templates 2>/dev/null)"
  _scrivalen_files
}

_scrivalen() {
  local cur=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD-1]} i
  COMPREPLY=()
  # The shell divides words at "=" and ":".
  if [[ $cur == = || $cur == : ]]; then
    cur=
  elif [[ $option == = ]]; then
    option=${COMP_WORDS[COMP_CWORD-2]}
  elif [[ $option == : ]]; then
    _scrivalen_files
    return
  fi
  for ((i = 1; i < COMP_CWORD; i++)); do
    if [[ ${COMP_WORDS[i]} == -- ]]; then
      _scrivalen_files
      return
    fi
  done
  case $option in
)bash";

constexpr const char* kBashEnd = R"bash(  esac
}

complete -F _scrivalen scrivalen
)bash";

std::string zshEscaped(std::string_view text) {
  std::string result = replacedAll<char>(text, "\\", "\\\\");
  for (const char* const special : {"[", "]", ":"}) {
    result = replacedAll<char>(result, special, std::string("\\") + special);
  }
  return result;
}

std::string zshValues(const Option& option) {
  switch (option.offer) {
    case Offer::Files: return "_files";
    case Offer::Folders: return "_files -/";
    case Offer::Words: return "(" + joined(option.words, " ") + ")";
    case Offer::ListsOfWords: return "_sequence compadd - " + joined(option.words, " ");
    case Offer::Templates: return "_scrivalen_templates";
    default: return " ";
  }
}

// A specification for _arguments: "'(-q --quiet)'{-q,--quiet}'[Print errors only]'".
std::string zshOption(const Option& option) {
  if (option.isArgument()) {
    return quoted("*:" + zshEscaped(option.names) + ":" + zshValues(option));
  }
  const std::string start = option.mayBeRepeated() ? "*" : "(" + replacedAll<char>(option.names, ",", " ") + ")";
  std::vector<std::string> names;
  for (const std::string_view name : split(option.names, ',')) {
    const char* const attached = option.isFlag() ? "" : name.starts_with("--") ? "=" : "+";
    names.push_back(std::string(name) + attached);
  }
  const std::string all = names.size() == 1 ? names.front() : "{" + joined({names.begin(), names.end()}, ",") + "}";
  std::string end = "[" + zshEscaped(summary(option)) + "]";
  if (!option.isFlag()) {
    end += ":" + zshEscaped(option.valueName) + ":" + zshValues(option);
  }
  return quoted(start) + all + quoted(end);
}

std::string fishValues(const Option& option) {
  switch (option.offer) {
    case Offer::Files: return " -r -F";
    case Offer::Folders: return " -x -a '(__fish_complete_directories (commandline -ct))'";
    case Offer::Words: return " -x -a " + quoted(joined(option.words, " "));
    case Offer::ListsOfWords:
      return " -x -a '(__fish_complete_list , \"printf \\\"%s\\\\n\\\" " + joined(option.words, " ") + "\")'";
    case Offer::Templates: return " -r -F -a '(scrivalen --list-templates 2>/dev/null)'";
    default: return option.isFlag() ? "" : " -x";
  }
}

}  // namespace

std::string bashCompletion() {
  Options options;
  std::string cases;
  std::vector<std::string> names;
  for (const Option& option : declarationsOf(optionGroups(options))) {
    if (option.isArgument()) {
      continue;
    }
    for (const std::string_view name : split(option.names, ',')) {
      names.emplace_back(name);
    }
    if (!option.isFlag()) {
      cases += "    " + replacedAll<char>(option.names, ",", " | ") + ") " + bashValues(option) + " ;;\n";
    }
  }
  return kBashStart + cases + "    *)\n      if [[ $cur == -* ]]; then\n        _scrivalen_words " +
         quoted(joined({names.begin(), names.end()}, " ")) +
         "\n      else\n        _scrivalen_files\n      fi\n      ;;\n" + kBashEnd;
}

std::string zshCompletion() {
  Options options;
  std::string script =
      "#compdef scrivalen\n"
      "\n"
      "_scrivalen_templates() {\n"
      "  local -a names\n"
      "  names=(${(f)\"$(_call_program templates ${(q)words[1]} --list-templates 2>/dev/null)\"})\n"
      "  _alternative 'templates:template:compadd -a names' 'files:file:_files'\n"
      "}\n"
      "\n"
      "_scrivalen() {\n"
      "  _arguments -s -S";
  for (const Option& option : declarationsOf(optionGroups(options))) {
    script += " \\\n    " + zshOption(option);
  }
  return script +
         "\n}\n\nif [[ $funcstack[1] == _scrivalen ]]; then\n  _scrivalen \"$@\"\nelse\n  compdef _scrivalen "
         "scrivalen\nfi\n";
}

std::string fishCompletion() {
  Options options;
  std::string script = "# fish completion for scrivalen\n";
  for (const Option& option : declarationsOf(optionGroups(options))) {
    if (option.isArgument()) {
      continue;
    }
    script += "complete -c scrivalen";
    for (const std::string_view name : split(option.names, ',')) {
      const bool isLong = name.starts_with("--");
      script.append(isLong ? " -l " : " -s ").append(name.substr(isLong ? 2 : 1));
    }
    script += fishValues(option) + " -d " + quoted(summary(option)) + "\n";
  }
  return script;
}

}  // namespace scrivalen::command

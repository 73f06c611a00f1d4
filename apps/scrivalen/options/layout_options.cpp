#include "options/option_group.h"

#include "errors.h"
#include "system/files/files.h"
#include "templates.h"
#include "texts.h"

#include <algorithm>
#include <iterator>

namespace scrivalen::command {
namespace {

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

std::string chosenTemplate(const std::string& name) {
  const auto file = templateFile(scrivalen::widePath(name));
  if (!file) {
    throw UsageError("there is no template '" + name + "'; see scrivalen --list-templates");
  }
  return *file;
}

class LayoutOptions : public OptionGroup {
 public:
  explicit LayoutOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Layout"; }

  std::vector<Option> declare() override {
    return {
        {&options_.title, "--title", "TEXT", "The title (default: the first heading,\notherwise the input's name)"},
        {&options_.contents, "--toc", "", "Begin with a table of contents"},
        {&settings_, "--set", "NAME=VALUE",
         "A setting of the document, such as paper=Letter\nor text.width=100. May be given several times"},
        {&options_.landscape, "--landscape", "", "Use landscape pages"},
        {&template_, "--template", "NAME", "A template for HTML pages"},
        {&properties_, "--property", "NAME=VALUE",
         "Fills the placeholder %NAME% of a template.\nMay be given several times"},
        {&options_.stylesFile, "--styles", "FILE", "A style sheet for spreadsheets"},
        {&separator_, "--separator", "TEXT",
         "What is between the cells of tables in text,\ninstead of aligned columns; \\t is a tab"},
    };
  }

  void interpret() override {
    std::transform(properties_.begin(), properties_.end(), std::back_inserter(options_.properties), property);
    std::transform(settings_.begin(), settings_.end(), std::back_inserter(options_.settings),
                   [](const std::string& argument) { return nameAndValue("--set", argument); });
    if (!template_.empty()) {
      options_.templateFile = chosenTemplate(template_);
    }
    options_.separator = replacedAll<char>(separator_, "\\t", "\t");
  }

 private:
  Options& options_;
  std::vector<std::string> properties_;
  std::vector<std::string> settings_;
  std::string template_;
  std::string separator_;
};

}  // namespace

std::unique_ptr<OptionGroup> layoutOptions(Options& options) { return std::make_unique<LayoutOptions>(options); }

}  // namespace scrivalen::command

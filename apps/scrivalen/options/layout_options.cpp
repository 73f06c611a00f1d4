#include "options/option_group.h"

#include "errors.h"
#include "options/effect.h"
#include "options/suggestion.h"
#include "system/files/files.h"
#include "templates.h"
#include "texts.h"

#include <scrivalen/document.h>

#include <algorithm>
#include <iterator>
#include <memory>

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

[[noreturn]] void failUnknownTemplate(const std::string& name) {
  std::vector<std::string> names;
  for (const std::wstring& known : templateNames()) {
    names.push_back(scrivalen::narrowPath(known));
  }
  throw UsageError(
      "there is no template '" + name + "'" +
      suggestion(name, {names.begin(), names.end()}, "; see scrivalen --list-templates, or give the path of a file"));
}

// The library's templates come first: a person's own of the same name has a path.
std::string chosenTemplate(const std::string& name) {
  const std::wstring path = scrivalen::widePath(name);
  if (const auto file = templateFile(path)) {
    return *file;
  }
  if (!scrivalen::pathExists(path)) {
    failUnknownTemplate(name);
  }
  if (scrivalen::isFolder(path)) {
    throw UsageError("the template '" + name + "' is a folder; give the path of a file");
  }
  if (!scrivalen::openForReading(path)) {
    throw InputError("cannot read the template '" + name + "': " + lastErrorText());
  }
  return name;
}

// Whether the library knows a setting and takes the value. What it does not take is an error later on.
bool isTaken(const std::string& name, const std::string& value) {
  struct Free {
    void operator()(scrivalen_document* document) const { scrivalen_free(document); }
  };
  const std::unique_ptr<scrivalen_document, Free> document(scrivalen_new());
  return document && scrivalen_set(document.get(), name.c_str(), value.c_str()) == SCRIVALEN_OK;
}

class LayoutOptions : public OptionGroup {
 public:
  explicit LayoutOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Layout"; }

  std::vector<Option> declare() override {
    return {
        {&options_.title, "--title", "TEXT",
         "The title (default: that of the front matter, else the first heading, else the input's name)"},
        {&options_.contents, "--toc", "", "Begin with a table of contents; Markdown only"},
        {&settings_, "--set", "NAME=VALUE",
         "A setting of the document, such as paper=Letter, or of one format, such as text.width=100; the documentation "
         "lists them"},
        {&options_.landscape, "--landscape", "", "Use landscape pages"},
        {&template_, "--template", "NAME|FILE",
         "A template for HTML pages: one of those that --list-templates prints, or a file of your own",
         Offer::Templates},
        {&properties_, "--property", "NAME=VALUE", "The text for the placeholder %NAME% of a template"},
        {&styles_, "--styles", "FILE", "A style sheet for spreadsheets", Offer::Files},
        {&reference_, "--reference", "FILE", "A Word document or template whose styles Word documents take over",
         Offer::Files},
        {&separator_, "--separator", "TEXT",
         "What is between the cells of tables in text, instead of aligned columns; \\t is a tab"},
    };
  }

  void interpret() override {
    std::transform(properties_.begin(), properties_.end(), std::back_inserter(options_.properties), property);
    std::transform(settings_.begin(), settings_.end(), std::back_inserter(options_.settings),
                   [](const std::string& argument) { return nameAndValue("--set", argument); });
    requireText("--template", template_, "see scrivalen --list-templates");
    requireText("--styles", styles_, "give the path of a style sheet");
    requireText("--reference", reference_, "give the path of a Word document");
    if (template_) {
      options_.templateFile = chosenTemplate(*template_);
    }
    options_.stylesFile = styles_.value_or("");
    options_.referenceFile = reference_.value_or("");
    options_.separator = replacedAll<char>(separator_.value_or(""), "\\t", "\t");
    warnWithoutEffect();
  }

 private:
  void warnWithoutEffect() {
    if (options_.contents) {
      warnWithoutMarkdown(options_, "--toc");
    }
    if (template_) {
      warnWithoutOutput(options_, "--template", "html chm");
    }
    if (styles_) {
      warnWithoutOutput(options_, "--styles", "xlsx");
    }
    if (reference_) {
      warnWithoutOutput(options_, "--reference", "docx");
    }
    if (separator_) {
      warnWithoutOutput(options_, "--separator", "text");
    }
    if (options_.landscape) {
      warnWithoutOutput(options_, "--landscape", "html rtf pdf xlsx docx");
    }
    if (!properties_.empty()) {
      warnWithoutOutput(options_, "--property", "html xml rtf chm pdf xlsx docx");
    }
    for (const auto& [name, value] : options_.settings) {
      const std::string format = name.substr(0, name.find('.'));
      const auto formats = formatNames();
      if (format.size() < name.size() && std::find(formats.begin(), formats.end(), format) != formats.end() &&
          isTaken(name, value)) {
        warnWithoutOutput(options_, "--set " + name, format);
      }
    }
  }

  Options& options_;
  std::vector<std::string> properties_;
  std::vector<std::string> settings_;
  std::optional<std::string> template_;
  std::optional<std::string> styles_;
  std::optional<std::string> reference_;
  std::optional<std::string> separator_;
};

}  // namespace

std::unique_ptr<OptionGroup> layoutOptions(Options& options) { return std::make_unique<LayoutOptions>(options); }

}  // namespace scrivalen::command

#include "options/option_group.h"

#include "errors.h"
#include "options/effect.h"

namespace scrivalen::command {
namespace {

class BehaviourOptions : public OptionGroup {
 public:
  explicit BehaviourOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Behaviour"; }

  std::vector<Option> declare() override {
    return {
        {&options_.quiet, "-q,--quiet", "", "Print errors only, neither warnings nor progress"},
        {&options_.verbose, "-v,--verbose", "",
         "Print what is read and written, with sizes and times, and the settings of the documents"},
        {&options_.strict, "--strict", "",
         "Exit with status 1 after a warning, too; the outputs are written all the same"},
        {&options_.unsafe, "--unsafe", "",
         "Pass on the raw HTML of Markdown, and addresses that run a program (javascript:); for input that you trust"},
        {&options_.listTemplates, "--list-templates", "", "Print the names of the templates and exit"},
        {&options_.help, "-h,--help", "", "Print this help and exit"},
        {&options_.version, "-V,--version", "", "Print the version and exit"},
    };
  }

  void interpret() override {
    if (options_.quiet && options_.verbose) {
      throw UsageError("-q and -v exclude each other; use one of them");
    }
    if (options_.unsafe) {
      warnWithoutMarkdown(options_, "--unsafe");
    }
  }

 private:
  Options& options_;
};

}  // namespace

std::unique_ptr<OptionGroup> behaviourOptions(Options& options) { return std::make_unique<BehaviourOptions>(options); }

}  // namespace scrivalen::command

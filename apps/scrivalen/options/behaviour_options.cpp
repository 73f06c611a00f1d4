#include "options/option_group.h"

#include "errors.h"

namespace scrivalen::command {
namespace {

class BehaviourOptions : public OptionGroup {
 public:
  explicit BehaviourOptions(Options& options) : options_(options) {}

  std::string_view title() const override { return "Behaviour"; }

  std::vector<Option> declare() override {
    return {
        {&options_.verbose, "-v,--verbose", "", "Print what is read and written, and the settings"},
        {&options_.strict, "--strict", "", "Exit with status 1 after a warning, too"},
        {&options_.quiet, "-q,--quiet", "", "Print errors only"},
    };
  }

  void interpret() override {
    if (options_.quiet && options_.verbose) {
      throw UsageError("-q and -v exclude each other; use one of them");
    }
  }

 private:
  Options& options_;
};

}  // namespace

std::unique_ptr<OptionGroup> behaviourOptions(Options& options) { return std::make_unique<BehaviourOptions>(options); }

}  // namespace scrivalen::command

#include "options/different_files.h"

#include "errors.h"
#include "system/files/files.h"
#include "text/letter_case.h"
#include "texts.h"

#include <algorithm>
#include <map>

namespace scrivalen::command {
namespace {

struct PathOrder {
  bool operator()(const std::wstring& a, const std::wstring& b) const { return scrivalen::comparePaths(a, b) < 0; }
};

// An output, or an input itself.
struct Use {
  const Job* job = nullptr;
  const std::string* name = nullptr;
};

// The files of a run, found by whatever path leads to them.
class Files {
 public:
  void add(const Use& use) {
    const std::wstring path = scrivalen::widePath(*use.name);
    byPath_.emplace(scrivalen::resolvedPath(path), use);
    if (const auto identity = scrivalen::identityOf(path)) {
      byIdentity_.emplace(*identity, use);
    }
  }

  const Use* find(const std::string& name) const {
    const std::wstring path = scrivalen::widePath(name);
    if (const auto identity = scrivalen::identityOf(path)) {
      const auto found = byIdentity_.find(*identity);
      if (found != byIdentity_.end()) {
        return &found->second;
      }
    }
    const auto found = byPath_.find(scrivalen::resolvedPath(path));
    return found == byPath_.end() ? nullptr : &found->second;
  }

 private:
  std::map<std::wstring, Use, PathOrder> byPath_;
  std::map<scrivalen::FileIdentity, Use> byIdentity_;
};

std::string quoted(const std::string& name) { return "'" + name + "'"; }

[[noreturn]] void failSameOutput(const Use& first, const Use& second) {
  const bool isSameName = *first.name == *second.name;
  if (first.job != second.job) {
    if (first.job->input == second.job->input) {
      throw UsageError("the input " + quoted(first.job->input) + " is given twice; give it once");
    }
    throw UsageError("the outputs of " + quoted(first.job->input) + " and " + quoted(second.job->input) +
                     " would be the same file, " + quoted(*second.name) + "; convert them into different folders");
  }
  throw UsageError(isSameName
                       ? "two outputs have the name " + quoted(*second.name)
                       : "the outputs " + quoted(*first.name) + " and " + quoted(*second.name) + " are the same file");
}

[[noreturn]] void failOverwritten(const Use& input, const Use& output) {
  const bool isSameName = *input.name == *output.name;
  throw UsageError("the output " + quoted(*output.name) + " is the input" +
                   (isSameName ? "" : " " + quoted(*input.name)) + "; it would be overwritten");
}

std::wstring lowered(std::wstring path) {
  std::transform(path.begin(), path.end(), path.begin(),
                 [](wchar_t c) { return static_cast<wchar_t>(scrivalen::toLowerCase(static_cast<char32_t>(c))); });
  return path;
}

// On systems that distinguish letters by case there are file systems that do not, some of which even give a file
// another identity for each spelling. They are asked only if two names differ in case alone.
class LoweredNames {
 public:
  void add(const Use& use) { names_.emplace(lowered(resolved(*use.name)), use); }

  // Returns the use that was added earlier of the same file by another spelling, or null.
  const Use* find(const std::string& name) const {
    const std::wstring path = resolved(name);
    const auto found = names_.find(lowered(path));
    return found != names_.end() && scrivalen::ignoresCase(path) ? &found->second : nullptr;
  }

 private:
  static std::wstring resolved(const std::string& name) { return scrivalen::resolvedPath(scrivalen::widePath(name)); }

  std::map<std::wstring, Use> names_;
};

bool isReplaceable(const std::string& name) {
  return name != "-" && !scrivalen::isSpecialFile(scrivalen::widePath(name));
}

// The files of a run that are used in one way, and must not be used in another.
class FileUses {
 public:
  // Returns the use that was added earlier of the same file, or null.
  const Use* find(const std::string& name) const {
    const Use* const found = files_.find(name);
    return found ? found : lowered_.find(name);
  }

  void add(const Use& use) {
    files_.add(use);
    lowered_.add(use);
  }

 private:
  Files files_;
  LoweredNames lowered_;
};

void requireOneOnStandardOutput(const std::vector<Job>& jobs) {
  std::ptrdiff_t count = 0;
  for (const Job& job : jobs) {
    count += std::count_if(job.outputs.begin(), job.outputs.end(),
                           [](const OutputRequest& output) { return output.name == "-"; });
  }
  if (count > 1) {
    throw UsageError("two outputs go to standard output; give one of them a file name");
  }
}

}  // namespace

void requireDifferentFiles(const std::vector<Job>& jobs) {
  requireOneOnStandardOutput(jobs);
  FileUses inputs;
  for (const Job& job : jobs) {
    if (isReplaceable(job.input)) {
      inputs.add({&job, &job.input});
    }
  }
  FileUses outputs;
  for (const Job& job : jobs) {
    for (const OutputRequest& output : job.outputs) {
      if (!isReplaceable(output.name)) {
        continue;
      }
      const Use use{&job, &output.name};
      if (const Use* const input = inputs.find(output.name)) {
        failOverwritten(*input, use);
      }
      if (const Use* const earlier = outputs.find(output.name)) {
        failSameOutput(*earlier, use);
      }
      outputs.add(use);
    }
  }
}

}  // namespace scrivalen::command

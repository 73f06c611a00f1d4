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
  // Returns the use that was added earlier of the same file, or else adds this one and returns null.
  const Use* findOrAdd(const Use& use) {
    const std::wstring path = scrivalen::widePath(*use.name);
    const auto identity = scrivalen::identityOf(path);
    const std::wstring resolved = scrivalen::resolvedPath(path);
    if (const Use* const found = find(identity, resolved)) {
      return found;
    }
    byPath_.emplace(resolved, use);
    if (identity) {
      byIdentity_.emplace(*identity, use);
    }
    return nullptr;
  }

  const Use* find(const std::string& name) const {
    const std::wstring path = scrivalen::widePath(name);
    return find(scrivalen::identityOf(path), scrivalen::resolvedPath(path));
  }

 private:
  const Use* find(const std::optional<scrivalen::FileIdentity>& identity, const std::wstring& resolved) const {
    if (identity) {
      const auto found = byIdentity_.find(*identity);
      return found == byIdentity_.end() ? nullptr : &found->second;
    }
    const auto found = byPath_.find(resolved);
    return found == byPath_.end() ? nullptr : &found->second;
  }

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

std::wstring lowered(std::wstring path) {
  std::transform(path.begin(), path.end(), path.begin(),
                 [](wchar_t c) { return static_cast<wchar_t>(scrivalen::toLowerCase(static_cast<char32_t>(c))); });
  return path;
}

// On systems that distinguish letters by case there are file systems that do not. They are asked only if it matters.
class NewNames {
 public:
  void add(const Use& use) {
    const std::wstring path = scrivalen::resolvedPath(scrivalen::widePath(*use.name));
    const auto [earlier, isNew] = names_.emplace(lowered(path), use);
    if (!isNew && scrivalen::ignoresCase(path)) {
      failSameOutput(earlier->second, use);
    }
  }

 private:
  std::map<std::wstring, Use> names_;
};

bool isReplaceable(const std::string& name) {
  return name != "-" && !scrivalen::isSpecialFile(scrivalen::widePath(name));
}

Files inputsOf(const std::vector<Job>& jobs) {
  Files inputs;
  for (const Job& job : jobs) {
    if (isReplaceable(job.input)) {
      inputs.findOrAdd({&job, &job.input});
    }
  }
  return inputs;
}

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
  const Files inputs = inputsOf(jobs);
  Files outputs;
  NewNames names;
  for (const Job& job : jobs) {
    for (const OutputRequest& output : job.outputs) {
      if (!isReplaceable(output.name)) {
        continue;
      }
      const Use use{&job, &output.name};
      if (const Use* const input = inputs.find(output.name)) {
        const bool isSameName = *input->name == output.name;
        throw UsageError("the output " + quoted(output.name) + " is the input" +
                         (isSameName ? "" : " " + quoted(*input->name)) + "; it would be overwritten");
      }
      if (const Use* const earlier = outputs.findOrAdd(use)) {
        failSameOutput(*earlier, use);
      }
      names.add(use);
    }
  }
}

}  // namespace scrivalen::command

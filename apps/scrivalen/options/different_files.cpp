#include "options/different_files.h"

#include "errors.h"
#include "system/files/files.h"
#include "text/letter_case.h"
#include "text/names/font_path.h"
#include "texts.h"

#include <algorithm>
#include <iterator>
#include <list>
#include <map>
#include <string_view>

namespace scrivalen::command {
namespace {

struct PathOrder {
  bool operator()(const std::wstring& a, const std::wstring& b) const { return scrivalen::comparePaths(a, b) < 0; }
};

// A file that the run reads or writes.
struct Use {
  const Job* job = nullptr;  // null for a file that all jobs read
  const std::string* name = nullptr;
  const char* what = "";  // of a file that is read: "input"
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

[[noreturn]] void failOverwritten(const Use& read, const Use& output) {
  const bool isSameName = *read.name == *output.name;
  throw UsageError("the output " + quoted(*output.name) + " is the " + read.what +
                   (isSameName ? "" : " " + quoted(*read.name)) + "; it would be overwritten");
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

constexpr const char* kFontFile = "font file";

// What a setting of the document, such as "template" or "html.template", has the library read; null for one without a
// file.
const char* fileOfSetting(std::string_view name) {
  struct Setting {
    std::string_view name;
    const char* what;
  };
  static constexpr Setting kSettings[] = {{"template", "template"},
                                          {"styles", "style sheet"},
                                          {"reference", "reference"},
                                          {"header-image", "header image"},
                                          {"font-file", kFontFile}};
  const std::string_view plain = name.substr(name.find('.') + 1);
  const auto* const found =
      std::find_if(std::begin(kSettings), std::end(kSettings), [&](const Setting& s) { return s.name == plain; });
  return found == std::end(kSettings) ? nullptr : found->what;
}

void addRead(FileUses& files, const Use& use) {
  if (use.what && !use.name->empty() && isReplaceable(*use.name)) {
    files.add(use);
  }
}

// @param fontFiles  gets the paths of fonts without their numbers in collections; must outlive the result
FileUses filesRead(const Options& options, std::list<std::string>& fontFiles) {
  FileUses files;
  for (const Job& job : options.jobs) {
    addRead(files, {&job, &job.input, "input"});
  }
  addRead(files, {nullptr, &options.templateFile, "template"});
  addRead(files, {nullptr, &options.stylesFile, "style sheet"});
  addRead(files, {nullptr, &options.referenceFile, "reference"});
  for (const auto& [name, value] : options.settings) {
    const char* const what = fileOfSetting(name);
    const auto font = fontPathOf(value);
    if (what == kFontFile && font.file.size() < value.size()) {
      addRead(files, {nullptr, &fontFiles.emplace_back(font.file), what});
    } else {
      addRead(files, {nullptr, &value, what});
    }
  }
  return files;
}

}  // namespace

void requireDifferentFiles(const Options& options) {
  requireOneOnStandardOutput(options.jobs);
  std::list<std::string> fontFiles;
  const FileUses reads = filesRead(options, fontFiles);
  FileUses outputs;
  for (const Job& job : options.jobs) {
    for (const OutputRequest& output : job.outputs) {
      if (!isReplaceable(output.name)) {
        continue;
      }
      const Use use{&job, &output.name};
      if (const Use* const read = reads.find(output.name)) {
        failOverwritten(*read, use);
      }
      if (const Use* const earlier = outputs.find(output.name)) {
        failSameOutput(*earlier, use);
      }
      outputs.add(use);
    }
  }
}

}  // namespace scrivalen::command

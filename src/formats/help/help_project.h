#pragma once

#include "system/process/process.h"
#include "text/loss_counter.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::formats {

/// The help compiler of a module: "hhc.exe" in the folder "hhc" beside the module's file if it exists, otherwise the
/// bare name, which the system looks up.
std::wstring helpCompiler(std::wstring_view module);

}  // namespace scrivalen::formats

/// A help project: the topics of one compiled help file. It writes the project and the contents file, runs the help
/// compiler on them and removes its working files. Texts in those files are in the ANSI code page.
class CCHM {
 public:
  struct ContentsEntry {
    std::int32_t kind = 0;  ///< 0: a topic with a file; any other value: a heading without one
    std::wstring name;
    std::wstring local;      ///< the topic's file
    std::int32_t level = 1;  ///< 1 at the top
  };

  CCHM() = default;
  CCHM(const CCHM& other) = default;
  CCHM& operator=(const CCHM& other) = default;
  virtual ~CCHM();

  /// Appends a topic to the contents, its title without double quotes. To compile its file, add it to `files` too.
  void addTopic(std::wstring_view title, const std::wstring& file);
  /// Writes the project file. When it cannot be opened, nothing is written and `projectPath` is unchanged.
  void writeProject(const std::wstring& path, std::wstring_view defaultTopic);
  /// Writes the contents file. When it cannot be opened, nothing is written and `contentsPath` is unchanged.
  void writeContents(const std::wstring& path);
  /// Runs the compiler and then deletes the working files.
  /// @return 1
  int compile(const std::wstring& project);
  /// Runs the compiler and waits for it to exit. Except on Windows, its variable SOURCE_DATE_EPOCH has the current
  /// time. A compiler that cannot be started is reported in an error box and in the log. It is not run when the project
  /// file is another report's or incomplete.
  void runCompiler(const std::wstring& project);
  /// Deletes the topics' files other than foreignFiles, the project and the contents file.
  void deleteWorkingFiles() noexcept;
  /// Clears the files, the topics, the failure, the losses and the compiler's result.
  void reset();

  std::wstring title;
  std::wstring projectPath;   ///< the last one written; empty when it is deleted
  std::wstring contentsPath;  ///< the last one written; empty when it is deleted
  std::vector<std::wstring> files;
  std::vector<ContentsEntry> topics;

  /// Those of the files that somebody else created, which are not deleted.
  std::vector<std::wstring> foreignFiles;
  /// The first failure; empty if there was none.
  std::wstring failure;
  /// Whether the failure is already logged.
  bool isFailureLogged = false;
  /// The compiler's exit status and messages.
  scrivalen::ProcessResult run;
  /// The characters of the title and the topics' names that are missing from the code page.
  scrivalen::LossCounter loss;

 private:
  bool writeFile(const std::wstring& path, std::string_view bytes);
  void noteFailure(const std::wstring& reason, bool isLogged);
  void reportNotStarted();
};

#pragma once

#include "system/process/process.h"
#include "text/loss_counter.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::formats {

/// The help compiler of a module: "hhc.exe" in the folder "hhc" beside its file when it is there, else the bare name,
/// which the system looks for.
std::wstring helpCompiler(std::wstring_view module);

}  // namespace scrivalen::formats

/// A help project: the topics of one compiled help file. It writes the project and the contents file, runs the help
/// compiler on them and removes its working files. Texts in those files are of the ANSI code page.
class CCHM {
 public:
  struct ContentsEntry {
    std::int32_t kind = 0;  ///< 0: a topic that has a file; else a heading without one
    std::wstring name;
    std::wstring local;      ///< the topic's file
    std::int32_t level = 1;  ///< 1 at the top
  };

  CCHM() = default;
  CCHM(const CCHM& other) = default;
  CCHM& operator=(const CCHM& other) = default;
  virtual ~CCHM();

  /// Appends a topic to the contents, its title without double quotes. Whoever adds it to `files` too has it compiled.
  void addTopic(std::wstring_view title, const std::wstring& file);
  /// Writes the project file; nothing, and `projectPath` stays as it is, when it cannot be opened.
  void writeProject(const std::wstring& path, std::wstring_view defaultTopic);
  /// Writes the contents file; nothing, and `contentsPath` stays as it is, when it cannot be opened.
  void writeContents(const std::wstring& path);
  /// Runs the compiler and then deletes the working files.
  /// @return 1
  int compile(const std::wstring& project);
  /// Runs the compiler and waits for its end. It gets the time in the variable SOURCE_DATE_EPOCH, not on Windows. A
  /// compiler that cannot be started is reported in an error box and in the log. It is not run when the project is
  /// another report's or incomplete.
  void runCompiler(const std::wstring& project);
  /// Deletes the topics' files, the project and the contents file.
  void deleteWorkingFiles() noexcept;
  /// Forgets the files, the topics, what went wrong with them and how the compiler ended.
  void reset();

  std::wstring title;
  std::wstring projectPath;   ///< written last, and not yet deleted
  std::wstring contentsPath;  ///< written last, and not yet deleted
  std::vector<std::wstring> files;
  std::vector<ContentsEntry> topics;

  /// Those of the files that somebody else wrote, which are not deleted.
  std::vector<std::wstring> foreignFiles;
  /// What went wrong first; empty when nothing did.
  std::wstring failure;
  /// Whether the log has that already.
  bool isFailureLogged = false;
  /// How the compiler ended and what it said.
  scrivalen::ProcessResult run;
  /// What the code page lacks of the title and of the topics' names.
  scrivalen::LossCounter loss;

 private:
  bool writeFile(const std::wstring& path, std::string_view bytes);
  void noteFailure(const std::wstring& reason, bool isLogged);
  void reportNotStarted();
};

#pragma once

#include "scrivalen/multi_report.h"
#include "support/files.h"

#include <gtest/gtest.h>

#include <iosfwd>
#include <span>
#include <string>

namespace scrivalen::test {

/// A format of a MultiReport's children, for tests of their common behaviour. Compiled help needs a program with the
/// stand-in compiler beside it.
struct ChildFormat {
  int number;                                ///< its REPORT_FORMAT value
  const char* name;                          ///< also the extension of its files
  std::string (*read)(const std::wstring&);  ///< the content of a file, without the frame common to the format
  const char* oneTwo;                        ///< the content after writeOneTwo

  REPORT_FORMAT format() const { return static_cast<REPORT_FORMAT>(number); }
  bool isHelp() const { return format() == FORMAT_CHM; }
};

void PrintTo(const ChildFormat& format, std::ostream* out);
std::string nameOf(const testing::TestParamInfo<ChildFormat>& test);

/// All of them, compiled help last.
std::span<const ChildFormat> childFormats();
/// Those whose Open creates their file: all but compiled help.
std::span<const ChildFormat> fileFormats();

/// The files of a MultiReport's children and, in a folder of their own, the pages of its help topics.
class ChildFiles {
 public:
  ChildFiles();

  /// A child's file: @p start, then the format's extension.
  std::wstring path(const ChildFormat& format, const std::wstring& start = L"a") const;
  std::wstring topic() const { return topicFolder_ + L"topic.htm"; }
  /// The folder of the topics in the form that BeginSubDocument takes.
  const std::wstring& topicFolder() const { return topicFolder_; }
  /// The file that an open child of this format holds: for help, the page of its topic.
  std::wstring heldPath(const ChildFormat& format) const { return format.isHelp() ? topic() : path(format); }

  void add(MultiReport& report, const ChildFormat& format, const std::wstring& start = L"a") const;
  /// Adds a child of each format.
  void addAll(MultiReport& report, const std::wstring& start) const;
  /// Begins the only topic.
  REPORT_ERRORS beginTopic(AReport& report) const;
  /// Expects the file of each format's child to hold what writeOneTwo writes.
  void expectAllHaveOneTwo(const std::wstring& start) const;
  /// Expects no file of any format's child to exist.
  void expectNone(const std::wstring& start) const;

  TemporaryFolder folder;
  TemporaryFolder topics;

 private:
  std::wstring topicFolder_;
};

/// Writes the paragraphs "one" and "two" in the topic.
void writeOneTwo(AReport& report, const ChildFiles& files);

/// Whether a report holds a file, so that it cannot be opened again. Truncates a file that is not held.
bool isHeld(const std::wstring& path);

}  // namespace scrivalen::test

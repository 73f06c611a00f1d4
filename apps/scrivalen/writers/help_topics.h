#pragma once

#include "system/files/work_folder.h"
#include "writers/single_report.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// The topics of a help file: a page for each heading of level 1 or 2, and one for the content before the first of
/// them. They are written to a private folder, which is removed with this object.
class HelpTopics {
 public:
  /// @param report  of the help format; not owned
  explicit HelpTopics(SingleReport& report) : report_(report) {}
  HelpTopics(const HelpTopics&) = delete;
  HelpTopics& operator=(const HelpTopics&) = delete;
  ~HelpTopics();

  /// @param file   of the help, for messages
  /// @param title  of the page for the content before the first heading
  /// @return false on failure, with the reason in error()
  bool prepare(const std::wstring& file, const std::wstring& title);
  /// The folder of the pages, without a trailing separator.
  const std::wstring& folder() const { return work_.path(); }

  /// Begins a page if the heading's level requires one.
  void beginFor(int level, std::wstring_view heading);
  /// Begins the page for the content before the first heading, unless there is a page already.
  void beginIfNone();
  /// Adds an anchor of the current page, so that links from other pages can reach it.
  void addAnchor(std::wstring_view name);
  /// Adds the anchors in raw HTML.
  void addAnchorsOf(std::wstring_view markup);
  /// Notes that the current page may link to another one.
  void expectLinks() { topics_.back().mayLink = true; }

  /// Ends the last page and completes the links between pages.
  /// @return false on failure, with the reason in error()
  bool finish();
  const std::wstring& error() const { return error_; }

 private:
  struct Topic {
    std::wstring file;
    bool mayLink = false;
  };

  void begin(const std::wstring& title);
  void end();
  bool fail(const char* reason);
  bool completeLinks(std::size_t topic);
  const Topic* topicOf(std::string_view link, std::size_t sourceTopic) const;
  std::wstring pathOf(const Topic& topic) const { return folder_ + topic.file; }

  SingleReport& report_;
  scrivalen::WorkFolder work_;
  std::wstring folder_;  // its path with a trailing separator
  std::wstring file_;
  std::wstring title_;
  std::vector<Topic> topics_;
  std::map<std::string, std::size_t, std::less<>> anchors_;  // UTF-8 names and the topics that contain them
  std::wstring error_;
  bool isOpen_ = false;
};

}  // namespace scrivalen::command

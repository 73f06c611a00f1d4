#pragma once

#include "system/files/work_folder.h"
#include "writers/single_report.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// The topics of a help file: a page for each heading of level 1 or 2, and one for what stands before the first of
/// them. They are written into a private folder, which goes with this object.
class HelpTopics {
 public:
  /// @param report  of the help format; not owned
  explicit HelpTopics(SingleReport& report) : report_(report) {}
  HelpTopics(const HelpTopics&) = delete;
  HelpTopics& operator=(const HelpTopics&) = delete;
  ~HelpTopics();

  /// @param file   of the help, for messages
  /// @param title  of the page for what stands before the first heading
  /// @return false with the reason in error()
  bool prepare(const std::wstring& file, const std::wstring& title);
  /// Where the pages are; without a separator at its end.
  const std::wstring& folder() const { return work_.path(); }

  /// Begins the page that a heading asks for, if it does.
  void beginFor(int level, std::wstring_view heading);
  /// Begins the page for what stands before the first heading, unless there is one already.
  void beginIfNone();
  /// A place of the page that is being written, to which links may lead from others.
  void addAnchor(std::wstring_view name);
  /// The same for the places that HTML names, as it was typed.
  void addAnchorsOf(std::wstring_view markup);
  /// The page that is being written may link to another one.
  void expectLinks() { topics_.back().mayLink = true; }

  /// Ends the last page and makes the links between pages whole.
  /// @return false with the reason in error()
  bool finish();
  const std::wstring& error() const { return error_; }

 private:
  struct Topic {
    std::wstring file;
    bool mayLink = false;
  };

  void begin(const std::wstring& title);
  void end();
  bool fail(const wchar_t* reason);
  bool completeLinks(std::size_t topic);
  const Topic* topicOf(std::string_view link, std::size_t linksTopic) const;
  std::wstring pathOf(const Topic& topic) const { return folder_ + topic.file; }

  SingleReport& report_;
  scrivalen::WorkFolder work_;
  std::wstring folder_;  // its path with a separator at its end
  std::wstring file_;
  std::wstring title_;
  std::vector<Topic> topics_;
  std::map<std::string, std::size_t, std::less<>> anchors_;  // their names in UTF-8, and the topics that have them
  std::wstring error_;
  bool isOpen_ = false;
};

}  // namespace scrivalen::command

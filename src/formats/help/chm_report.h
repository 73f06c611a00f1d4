#pragma once

#include "formats/help/help_project.h"
#include "scrivalen/html_report.h"
#include "scrivalen/report.h"

#include <string>
#include <unordered_set>
#include <utility>

/// Writes a report as compiled HTML Help. Every sub-document is a topic: an HTML page, written to the path given to
/// BeginSubDocument. Close has the help compiler make one file of the pages, deletes them and moves that file to its
/// target. Content outside a sub-document is lost. The table of contents lists the sub-documents; BeginToc, TocItem and
/// EndToc do nothing.
class CHMReport final : public AReport {
 public:
  REPORT_ERRORS Open() override { return Open(GetOutputFileName()); }
  /// Creates no file yet. Line breaks in the help file's title become spaces. A report that is already open is not
  /// opened again.
  REPORT_ERRORS Open(const wchar_t* file) override;
  /// Deletes the pages, including that of a topic that was not ended. An incomplete help file does not replace an
  /// existing file.
  /// @return REPORT_FILE_ERROR, with the reason in GetError and the log, when the compiler could not be started or left
  ///         no help file, when that file could not be moved, or when a page is missing or incomplete
  REPORT_ERRORS Close() override;
  std::wstring Quoting(const std::wstring& text) override { return page_.Quoting(text); }
  /// Quotes every text, even markup, unless the report is conforming.
  void Text(const wchar_t* text, PARAGRAPH_TYPE type, const wchar_t* style, int raw) override;
  /// Refuses a topic whose path has a line break or whose file has the name of one of the compiler's own: report.hhp,
  /// report.hhc and report.chm. A refused topic is left out of the help file.
  /// @return the result of opening the topic's page; REPORT_FILE_ERROR when the topic was refused or the report is not
  ///         open
  REPORT_ERRORS BeginSubDocument(const wchar_t* folder, const wchar_t* file, const wchar_t* title) override;
  void EndSubDocument() override;
  void BeginAncor(const wchar_t* name) override { page_.BeginAncor(name); }
  void EndAncor() override { page_.EndAncor(); }
  void Ancor(const wchar_t* name) override { page_.Ancor(name); }
  void EndOfLine() override { page_.EndOfLine(); }
  void BeginStyle(REPORT_STYLE style, int value) override { page_.BeginStyle(style, value); }
  void EndStyle(REPORT_STYLE style, int value) override { page_.EndStyle(style, value); }
  void Space() override { page_.Space(); }
  void BeginParagraph(PARAGRAPH_TYPE type, const wchar_t* attributes) override {
    page_.BeginParagraph(type, attributes);
  }
  void EndParagraph(PARAGRAPH_TYPE type) override { page_.EndParagraph(type); }
  void BeginToc() override {}
  void TocItem(const wchar_t*, const wchar_t*, int) override {}
  void EndToc() override {}
  void BeginTable(const wchar_t* name, const wchar_t* attributes) override { page_.BeginTable(name, attributes); }
  void EndTable(const wchar_t* name) override { page_.EndTable(name); }
  void BeginRow(const wchar_t* name, const wchar_t* attributes, int) override { page_.BeginRow(name, attributes, 0); }
  void EndRow(const wchar_t* name) override { page_.EndRow(name); }
  void BeginCell(const wchar_t* text, int header, const wchar_t* attributes) override {
    page_.BeginCell(text, header, attributes);
  }
  void EndCell(const wchar_t* text, int header) override { page_.EndCell(text, header); }
  void Cell(const wchar_t* text, int header, const wchar_t* attributes) override {
    page_.Cell(text, header, attributes);
  }
  void Link(const wchar_t* text, const wchar_t* target) override { page_.Link(text, target); }
  /// Supports OPTION_CONFORMING: from the next Open, pages have their topic's title as "%TITLE%", templates are read as
  /// UTF-8, Text honours its raw flag, and pages quote the texts of cells, links and anchors as conforming HTML does.
  void SetReportOption(REPORT_OPTION option, int value) override;

 private:
  /// The page of the current topic.
  class Page final : public HtmlReport {
   public:
    /// Makes the title the only property of the next page; null gives it none.
    void setTitle(const wchar_t* title);
    using HtmlReport::Open;
    REPORT_ERRORS Open(const wchar_t* file) override;
    /// Whether a file was created since the last call.
    bool takeIsCreated() { return std::exchange(isCreated_, false); }
    /// Forgets the losses of an earlier report's pages.
    void forgetLoss();

   private:
    bool isCreated_ = false;
  };

  class Compiled;

  REPORT_ERRORS beginTopic(const wchar_t* folder, const wchar_t* file, const wchar_t* title);
  void addTopic(const std::wstring& path, const wchar_t* title);
  void disownPage(const std::wstring& path);
  void claimPage(const std::wstring& path);
  REPORT_ERRORS closePage();
  REPORT_ERRORS openPage(const std::wstring& path);
  void preparePage(const std::wstring& path, const wchar_t* title);
  void compile(Compiled& compiled);
  void finish(Compiled& compiled);
  void reportProjectFailure();
  void reportNoHelpFile(const std::wstring& path);
  bool shouldDeliver() const;
  void deliver(Compiled& compiled);
  void deliverInPlace(Compiled& compiled);
  void moveToTarget(const std::wstring& path);
  void keepFailure(const std::wstring& reason);
  void reportFailure(const std::wstring& reason);

  std::wstring target_;
  std::wstring defaultTopic_;
  std::unordered_set<std::wstring> topicPaths_;
  std::wstring folder_;  // of the latest topic; file names are appended to it as is
  Page page_;
  CCHM project_;
  bool firstTopicPending_ = false;
  std::wstring openTopic_;       // the page that is open; empty when none is
  bool conforming_ = false;      // the option, for the next Open
  bool openConforming_ = false;  // of the open report
  bool hadTarget_ = false;       // whether the target existed when the compiler was started
  std::wstring failure_;         // the first failure
};

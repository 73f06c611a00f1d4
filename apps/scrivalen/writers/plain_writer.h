#pragma once

#include "events/document.h"
#include "writers/list_markers.h"
#include "writers/single_report.h"
#include "writers/visible_content.h"

#include <string>

namespace scrivalen::command {

/// The base of writers for formats without styles and links. Each block becomes one plain text. A link is written as
/// its text followed by the address in parentheses, an image as its alternative text, HTML as the text it contains.
class PlainWriter : public DocumentWriter {
 public:
  explicit PlainWriter(REPORT_FORMAT format) : report_(format) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override;
  bool close() override { return report_.close(); }
  std::wstring error() const override { return report_.error(); }
  void write(const Event& event) final;

 protected:
  // Texts contain a '\n' for each line break, but none at the end.
  virtual void heading(int level, const std::wstring& text) = 0;
  virtual void paragraph(const std::wstring& text) = 0;
  virtual void codeBlock(const std::wstring& text) = 0;
  virtual void rule() = 0;
  virtual void beginQuote() {}
  virtual void endQuote() {}
  virtual void beginList(bool /*tight*/) {}
  virtual void endList() {}
  /// @param marker  the item's marker, with a trailing blank
  virtual void beginItem(const std::wstring& /*marker*/) {}
  virtual void endItem() {}
  virtual void beginTable() = 0;
  virtual void endTable() = 0;
  virtual void beginRow(bool header, int columns) = 0;
  virtual void endRow(bool header) = 0;
  virtual void cell(const std::wstring& text) = 0;

  SingleReport report_;

 private:
  void writeBlock(const Event& event);
  void writeTable(const Event& event);
  void writeInline(const Event& event);
  void endHeading(int level);
  void endParagraph();
  void enterList(const Event& event);
  void leaveList();
  void endLink();

  std::wstring text_;  // of the current block
  VisibleContent content_;
  ListMarkers markers_;
  std::size_t linkStart_ = 0;
  std::wstring linkAddress_;
};

}  // namespace scrivalen::command

#pragma once

#include "document/document.h"
#include "writers/list_markers.h"
#include "writers/single_report.h"

#include <string>

namespace scrivalen::command {

/// The base of writers for formats that know neither styles nor links: it makes one text of what is within a block. A
/// link is its text with the address behind it in parentheses, an image what stands for it, HTML the text in it.
class PlainWriter : public DocumentWriter {
 public:
  explicit PlainWriter(REPORT_FORMAT format) : report_(format) {}

  bool open(const std::wstring& file, const DocumentSettings& settings) override;
  bool close() override { return report_.close(); }
  std::wstring error() const override { return report_.error(); }
  void write(const Event& event) final;

 protected:
  // Texts hold a '\n' where a line breaks, and at no end.
  virtual void heading(int level, const std::wstring& text) = 0;
  virtual void paragraph(const std::wstring& text) = 0;
  virtual void codeBlock(const std::wstring& text) = 0;
  virtual void rule() = 0;
  virtual void beginQuote() {}
  virtual void endQuote() {}
  virtual void beginList(bool /*tight*/) {}
  virtual void endList() {}
  /// @param marker  what stands before the item, a blank at its end
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

  std::wstring text_;  // of the block that is being read
  ListMarkers markers_;
  std::size_t linkStart_ = 0;
  std::wstring linkAddress_;
};

}  // namespace scrivalen::command

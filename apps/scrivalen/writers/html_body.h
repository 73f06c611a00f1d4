#pragma once

#include "events/document.h"

#include <scrivalen/report.h>

#include <string>

namespace scrivalen::command {

/// Writes a document through an HTML report, which accepts raw text. Elements without a report operation (lists,
/// quotes, code, rules, images) are written as markup. So are links, because Link takes plain text and a Markdown link
/// may contain styles.
class HtmlBody : public EventSink {
 public:
  /// @param report   not owned
  /// @param quoting  escapes text for HTML and counts replaced characters; may be the same report; not owned
  HtmlBody(AReport& report, AReport& quoting) : report_(report), quoting_(quoting) {}

  void write(const Event& event) override;

 private:
  void breakLineBefore(EventKind kind);
  void writeBlock(const Event& event);
  void writeTable(const Event& event);
  void writeInline(const Event& event);
  void writeContents(const Event& event);
  void beginHeading(const Event& heading);
  void beginList(const Event& list);
  void beginItem(const Event& item);
  void beginCodeBlock(const Event& code);
  void beginTable();
  void beginRow(const Event& row);
  void endRow(const Event& row);
  void endTable();
  void beginLink(const Event& link);
  void image(const Event& image);

  void text(std::wstring_view text) { report_.Text(text.data(), PARAGRAPH_NONE, L"", 0); }
  void markup(const wchar_t* text) { report_.Text(text, PARAGRAPH_NONE, L"", 1); }
  std::wstring quoted(std::wstring_view text) { return quoting_.Quoting(std::wstring(text)); }
  void appendAttribute(const wchar_t* start, std::wstring_view value);

  AReport& report_;
  AReport& quoting_;
  std::wstring markup_;
  bool isLineOpen_ = false;  // text was written whose block has not ended
  bool hasTableBody_ = false;
};

}  // namespace scrivalen::command

#pragma once

#include "output/output_buffer.h"
#include "scrivalen/output_file.h"
#include "text/loss_counter.h"

#include <memory>
#include <string>
#include <string_view>
#include <utility>

/// Writes tags, texts and page frames of HTML and XML in UTF-8. It adds no line breaks in the body. Null texts are
/// empty. A writer that is not bound to a file writes nothing.
///
/// A copy writes to the same file as its source.
class HTML {
 public:
  /// Binds the writer to an open file, which is not owned and must stay open as long as it is written to. Characters
  /// lost by quoting since Unbind count for this file.
  void Open(ReportFile& file);
  /// An exception from the file is kept: Flush returns false, and Error returns the reason.
  void Open(OutputFile& file);
  void Unbind();

  /// Writes a page's head: doctype, character set, title and a style sheet that makes bare tables readable.
  /// @param title  null: no title; the other two arguments are ignored
  void Head(const wchar_t* title, const wchar_t* text, int kind);
  /// Writes the XML declaration.
  void HeadXML();
  /// Writes a text unescaped.
  void Text(std::wstring_view text);
  void Text(const wchar_t* text) { Text(text ? std::wstring_view(text) : std::wstring_view()); }
  void Literal(std::string_view ascii) {
    if (out_) {
      out_->write(ascii.data(), ascii.size());
    }
  }
  void Number(int number);
  /// Writes a text with the special characters of HTML escaped.
  void QuotedText(const wchar_t* text);
  /// The same for a text that may already be escaped.
  void QuotedOnce(const wchar_t* text);
  /// Writes element content; text that is already escaped is kept.
  void Content(const wchar_t* text);
  /// Writes a start tag, with one attribute when @p attribute is not null.
  void OpenTag(const wchar_t* name, const wchar_t* attribute, const wchar_t* value);
  void CloseTag(const wchar_t* name);
  /// Writes an element with the given content, as Content does. The last two arguments are ignored.
  void Tag(const wchar_t* name, const wchar_t* content, const wchar_t* attribute, const wchar_t* value);
  /// Writes the start tag of a table (1, -1, attributes) or its end tag (0, 1, null).
  void Table(short open, short close, const wchar_t* attributes);
  static std::wstring Quoting(const std::wstring& text, int kind);
  /// The same, but counts replaced characters as lost by this writer.
  std::wstring CountedQuoting(const std::wstring& text);
  /// Counts a character that could not be represented.
  void NoteLoss(char32_t character) { loss_.note(character); }
  /// Flushes the buffer. @return false when bytes were lost
  bool Flush();
  /// Ends the page and flushes.
  bool Close(int kind);

  const scrivalen::LossCounter& Loss() const { return loss_; }
  scrivalen::LossCounter TakeLoss() { return std::exchange(loss_, {}); }
  /// Why the host's file failed; empty if it did not.
  std::wstring_view Error() const;

 private:
  struct HostOutput;

  void writeName(const wchar_t* name);

  scrivalen::OutputBuffer* out_ = nullptr;
  std::shared_ptr<HostOutput> host_;
  scrivalen::LossCounter loss_;
};

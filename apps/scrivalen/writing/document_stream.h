#pragma once

#include "readers/markdown/headings.h"
#include "readers/table_sink.h"

#include <scrivalen/document.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::command {

/// Writes what a reader finds to a document of the library. Raises Interrupted, NoOutputLeft or std::bad_alloc within a
/// few calls after the document took no more.
class DocumentStream final : public TableSink {
 public:
  struct Plan {
    std::string input = {};              ///< its name, for warnings
    std::wstring folder = {};            ///< of the input, where its pictures are, with its last separator
    std::vector<Heading> headings = {};  ///< all of them, if there is to be a table of contents
    bool beginsWithTitle = false;        ///< the first of these is the title, not an entry of the contents
    std::function<void()> poll;          ///< called every few calls; an exception it raises ends the run
    std::function<void(std::size_t blocks)> progress;  ///< called every few hundred blocks
  };

  /// @param document  not owned; must outlive this object
  DocumentStream(scrivalen_document* document, Plan plan);

  void beginHeading(int level, const std::string& id) override;
  void beginParagraph() override;
  void beginQuote() override;
  void beginList(bool ordered, int first, bool tight) override;
  void beginItem(Task task) override;
  void beginCode(const std::string& language) override;
  void beginTable() override;
  void beginRow(bool header) override;
  void beginCell(Align align) override;
  void beginSpan(Span span) override;
  void beginLink(const std::string& address, const std::string& title) override;
  void end() override;

  void text(std::string_view text) override;
  void cell(std::string_view text) override;
  void rule() override;
  void image(const std::string& address, const std::string& alternative) override;
  void markup(std::string_view html) override;

  void describeColumn(std::size_t index, const TableColumn& column) override;
  void numberCell(std::int64_t digits, int decimals) override;
  void dateCell(std::int32_t days) override;
  void warn(const std::string& text) override { ++warnings_[text]; }

  /// What was not written as the input has it, one line each.
  std::vector<std::string> warnings() const;

 private:
  enum class Part : std::uint8_t { Heading, Block, Container, Item, Row, Cell, Span, Link };
  enum class Form : std::uint8_t {
    Written,
    Omitted,      // nested too deeply
    Provided,     // a paragraph that holds the text of an item that is omitted
    MarkupOfLink  // raw HTML, because no format writes such an address
  };
  struct OpenPart {
    Part part;
    Form form;
  };

  void check(scrivalen_status status);
  void countCall();
  void beginBlock();
  void beginInline();
  void endProvided();
  void open(Part part, scrivalen_status status);
  bool omits(Part part);
  bool isIn(Part part) const;
  void writeContents();
  void warnOfInput(const std::string& what) { warn("'" + plan_.input + "': " + what); }
  void leaveOut(const std::string& reason, const std::string& alternative);
  void link(const std::string& address, std::string_view text);
  void raw(const std::string& html);

  scrivalen_document* document_;
  Plan plan_;
  std::vector<OpenPart> parts_;
  std::map<std::string, std::size_t> warnings_;
  std::size_t written_ = 0;  // parts that are open in the document
  std::size_t heading_ = 0;  // the next one
  std::size_t calls_ = 0;
  std::size_t blocks_ = 0;
  bool isContentsDue_ = false;
};

}  // namespace scrivalen::command

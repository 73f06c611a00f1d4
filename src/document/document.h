#pragma once

#include "document/anchor_names.h"
#include "document/clean_text.h"
#include "document/model/event.h"
#include "document/model/event_log.h"
#include "document/model/warnings.h"
#include "document/nesting.h"
#include "document/output.h"
#include "document/run.h"
#include "document/settings/settings.h"
#include "document/tables/table_builder.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// A document that is streamed once into any number of outputs. It checks the order and the nesting of the calls,
/// cleans the texts, and passes on events, which each output's writer puts into its format.
///
/// Every call may raise std::bad_alloc; the caller then calls runOutOfMemory. Texts are UTF-8, in any condition; null
/// pointers are no longer among them.
class Document : private TableTarget, private EventSink {
 public:
  static constexpr std::size_t kMostColumns = document::kMostColumns;
  static constexpr std::string_view kTooManyColumns = "a table has at most 1,000,000 columns";

  Document() = default;
  ~Document() override = default;

  // What comes before the content.
  /// Whether an output may be added now; if not, says so as a misuse.
  Status readyForOutput() { return setUpOnly("an output"); }
  Status addFile(const Format& format, std::string path);
  Status addStream(const Format& format, StreamWrite stream, void* user);
  Status set(std::string_view name, std::string_view value);
  Status setProgress(Progress progress, void* user);
  Status open();

  /// Whether content may come now, whatever it is, for a host that has yet to check its arguments.
  /// @return what each of the calls below would return first
  Status ready();

  // Parts that begin and end.
  Status beginSection(std::string_view name, std::string_view id);
  Status beginHeading(int level, std::string_view id, Align align);
  Status beginParagraph(Align align);
  Status beginQuote();
  Status beginList(bool ordered, int first, bool tight);
  Status beginItem(Task task);
  Status beginCode(std::string_view language);
  Status beginContents();
  /// @param columns  none: as many as the widest row of the sample has
  Status beginTable(std::vector<Column> columns, std::string_view name);
  Status beginRow(bool header);
  /// Says of the row that is open whether it is a header row, for a host that knows it only at the row's end.
  Status markRow(bool header);
  /// Sets of a column of the table that is open what the description has, for a host that knows it only from the cells,
  /// or does not know how many columns there will be. All stays once the columns are known, after the sample.
  Status describeColumn(std::size_t column, const Column& description);
  Status beginCell(const CellStyle& style);
  Status beginSpan(Span span);
  Status beginColored(std::optional<Rgb> color, std::optional<Rgb> background);
  Status beginSized(double points);
  Status beginLink(std::string_view address, std::string_view title);
  Status beginLanguage(std::string_view tag);
  Status end();

  Status text(std::string_view text);
  Status lineBreak();
  Status pageBreak();
  Status rule();
  Status anchor(std::string_view id);
  Status contentsItem(int level, std::string_view id, std::string_view text);
  /// Whether a picture may come now, for a host that has yet to read it.
  /// @return what image() would return first
  Status readyForImage(double width);
  /// @param picture  null: only the alternative text is written, and @p reason becomes a warning
  Status image(const std::shared_ptr<const Picture>& picture, std::string_view alternative, double width,
               std::string_view reason);
  /// @param format  the name of the format whose markup this is
  Status raw(std::string_view format, std::string_view markup);

  // Wholes.
  Status heading(int level, std::string_view text);
  Status paragraph(std::string_view text);
  Status cell(std::string_view text);
  /// @param decimals  1 to 15: of a Number that is integer / 10^decimals; else 0
  Status value(ValueType type, double number, std::int64_t integer, int decimals = 0);
  Status rows(const ColumnData* columns, std::size_t count, std::size_t rows);
  /// Whether rows may come now; if not, says so as a misuse.
  Status readyForRows();

  Status close();

  Status result() const { return run_.result(); }
  const char* error() const { return callText_.empty() ? run_.text() : callText_.c_str(); }
  std::size_t outputCount() const { return outputs_.size(); }
  /// Null when there is no such output.
  const Output* output(std::size_t index) const { return index < outputs_.size() ? outputs_[index].get() : nullptr; }
  bool isInCallback() const { return run_.isInCallback(); }
  /// Marks, for the result's lifetime, that a function of the host is running.
  Run::Callback callback() { return Run::Callback(run_); }
  /// The next warning of a closed document; null after the last.
  const Warning* nextWarning();
  /// A warning about the input.
  void warn(WarningCode code, std::string_view message, std::uint64_t count = 1) {
    warnings_.add(kAllOutputs, code, message, count);
  }

  /// Refuses a call: it does nothing.
  Status refuse(Status status, std::string_view text);
  Status misuse(std::string_view text) { return refuse(Status::Misuse, text); }
  /// Nothing more is written or delivered.
  Status runOutOfMemory() noexcept;

 private:
  enum class State { SetUp, Open, Closed };

  /// What a call returns when it was not refused: the reason of an earlier refusal is then no longer the last one.
  Status answer(Status status);
  Status setUpOnly(std::string_view call);
  /// Opens the document if that has not happened. @return the result if no output is left
  Status opened();
  /// The same for a part that begins.
  Status readyFor(Part part);
  Status readyForContent(const char* what);
  Status readyForCell();
  /// Writes the text of a block and ends it, if its beginning was taken.
  /// @param depth  before the block
  Status wholeOf(Status begun, std::size_t depth, std::string_view text);
  Status misplaced(Part part);
  /// What a call returns that was taken.
  Status taken();
  void openOutputs();

  void begin(Part part, const Event& event);
  void endInnermost();
  void endPartOfTable(Part part);
  void endHeading(const Event& begun);
  void writeBlock(const Event& event);
  void writeInline(const Event& event);
  void forward(const Event& event);
  /// Shows the title in each output that has no content yet.
  /// @param isHeading  the content that begins is a heading, which takes its place
  void beginContent(bool isHeading);
  void writeClean(std::string_view text, TextKind kind);
  void writeText(std::string_view text);
  std::string_view cleanLine(std::string_view text, std::string& storage);
  std::string_view claimed(std::string_view id);
  void refer(std::string_view id);
  void warnOfMended();
  void finishOutputs();
  void closeWithMemory();

  /// The content of a heading, once its text is known.
  void write(const Event& event) override { forward(event); }
  void beginTable(const Table& table) override;
  void row(const Row& row) override;
  void endTable() override;
  bool isWanted() const override;

  State state_ = State::SetUp;
  Settings settings_;
  Warnings warnings_;
  Run run_;
  std::vector<std::unique_ptr<Output>> outputs_;
  std::string callText_;            // why the last call was refused; empty if it was not
  Status openStatus_ = Status::Ok;  // to be returned by the call that opened the document

  Nesting nesting_;
  bool inHeading_ = false;
  bool inCell_ = false;
  bool endedWithCarriageReturn_ = false;  // a line feed that follows is part of that line end
  Replaced replaced_;
  std::optional<Values> values_;
  std::optional<TableBuilder> table_;

  // The heading that is open. Its text comes before it.
  EventLog held_;
  std::string headingText_;
  std::string headingId_;

  AnchorNames names_;
  std::set<std::string, std::less<>> targets_;  // of links within the document

  std::string text_;
  std::string line_;
  std::string otherLine_;
  std::vector<Warning> toReport_;
  std::size_t reported_ = 0;
};

}  // namespace scrivalen::document

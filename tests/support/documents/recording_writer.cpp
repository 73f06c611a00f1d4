#include "support/documents/recording_writer.h"

#include "document/pictures/picture.h"

#include <cerrno>
#include <cstdio>

using namespace scrivalen::document;

namespace scrivalen::test {
namespace {

const char* nameOf(EventKind kind) {
  constexpr const char* kNames[] = {
      "title",    "section",   "end section",  "heading",     "end heading", "paragraph",    "end paragraph",
      "quote",    "end quote", "list",         "end list",    "item",        "end item",     "code",
      "end code", "rule",      "page break",   "contents",    "item",        "end contents", "text",
      "span",     "end span",  "colored",      "end colored", "sized",       "end sized",    "link",
      "end link", "language",  "end language", "anchor",      "image",       "raw"};
  return kNames[static_cast<int>(kind)];
}

std::string colorText(Rgb color) {
  char text[8];
  std::snprintf(text, sizeof text, "#%06X", static_cast<unsigned>(color));
  return text;
}

class RecordingWriter : public DocumentWriter {
 public:
  explicit RecordingWriter(const WriterContext& context) : out_(context.out) {}

  void begin() override { put("begin\n"); }
  void finish() override { put("finish\n"); }

  void write(const Event& event) override {
    line_ = nameOf(event.kind);
    addNumbers(event);
    addText(event.text);
    add(event.id, " @");
    add(event.address, " ->");
    if (!event.title.empty()) {
      line_ += " title";
      addText(event.title);
    }
    if (event.picture) {
      line_ += " " + std::to_string(event.picture->width()) + "x" + std::to_string(event.picture->height());
    }
    put(line_ + "\n");
  }

  void beginTable(const Table& table) override {
    line_ = "table";
    addText(table.name);
    for (const Column& column : table.columns) {
      constexpr const char* kAligns[] = {"auto", "left", "center", "right", "justify"};
      line_ += std::string(" ") + kAligns[static_cast<int>(column.align)] + " " + std::to_string(column.longestWord) +
               "/" + std::to_string(column.longestLine);
    }
    put(line_ + "\n");
  }

  void row(const Row& row) override {
    line_ = row.repeated ? "header" : row.header ? "late header" : "row";
    for (const Cell& cell : row.cells) {
      addCell(cell);
    }
    put(line_ + "\n");
    for (const Cell& cell : row.cells) {
      if (cell.content) {
        put("[\n");
        cell.replay(*this);
        put("]\n");
      }
    }
  }

  void endTable() override { put("end table\n"); }

 private:
  void addNumbers(const Event& event) {
    line_ += event.number != 0 ? " " + std::to_string(event.number) : "";
    line_ += event.ordered ? " ordered" : "";
    line_ += event.tight ? " tight" : "";
    line_ += event.align != Align::Auto ? " align " + std::to_string(static_cast<int>(event.align)) : "";
    line_ += event.task != Task::None ? (event.task == Task::Open ? " open" : " done") : "";
    line_ += event.span != Span::None ? " kind " + std::to_string(static_cast<int>(event.span)) : "";
    line_ += event.points != 0 ? " " + std::to_string(static_cast<int>(event.points)) + "pt" : "";
    line_ += event.color ? " " + colorText(*event.color) : "";
    line_ += event.background ? " on " + colorText(*event.background) : "";
  }

  void addCell(const Cell& cell) {
    constexpr const char* kTypes[] = {"", "text:", "number:", "integer:", "date:", "time:", "boolean:"};
    line_ += std::string(" ") + kTypes[static_cast<int>(cell.type)] + (cell.header ? "header:" : "");
    line_ += cell.span > 1 ? std::to_string(cell.span) + "x" : "";
    line_ += cell.align != Align::Auto ? "align" + std::to_string(static_cast<int>(cell.align)) + ":" : "";
    line_ += cell.color ? colorText(*cell.color) + ":" : "";
    line_ += "'" + escaped(cell.text) + "'";
  }

  void add(std::string_view text, const char* mark) {
    if (!text.empty()) {
      line_.append(mark).append(text);
    }
  }
  void addText(std::string_view text) {
    if (!text.empty()) {
      line_ += " '" + escaped(text) + "'";
    }
  }
  static std::string escaped(std::string_view text) {
    std::string result;
    for (const char c : text) {
      result += c == '\n' ? std::string("\\n") : c == '\t' ? std::string("\\t") : std::string(1, c);
    }
    return result;
  }

  void put(const std::string& text) { out_.write(text.data(), text.size()); }

  OutputBuffer& out_;
  std::string line_;
};

std::unique_ptr<DocumentWriter> create(const WriterContext& context) {
  return std::make_unique<RecordingWriter>(context);
}

}  // namespace

const Format kRecordingFormat{"text", &create};
const Format kOtherRecordingFormat{"html", &create};

RecordedDocument::RecordedDocument(int outputs) {
  addStream(kRecordingFormat, &append, this);
  const auto ignore = [](void*, const void*, std::size_t) { return 0; };
  for (int i = 1; i < outputs; ++i) {
    addStream(kOtherRecordingFormat, ignore, nullptr);
  }
}

int RecordedDocument::append(void* user, const void* data, std::size_t size) {
  auto& document = *static_cast<RecordedDocument*>(user);
  if (document.bytes_.size() + size > document.limit_) {
    return ENOSPC;
  }
  document.bytes_.append(static_cast<const char*>(data), size);
  return 0;
}

std::string RecordedDocument::lines() {
  close();
  return bytes_;
}

std::string RecordedDocument::content() {
  const std::string all = lines();
  constexpr std::string_view kBegin = "begin\n";
  constexpr std::string_view kFinish = "finish\n";
  return all.substr(kBegin.size(), all.size() - kBegin.size() - kFinish.size());
}

std::string RecordedDocument::warnings() {
  close();
  std::string result;
  while (const Warning* warning = nextWarning()) {
    result += std::to_string(warning->count) + " x " + warning->message + "\n";
  }
  return result;
}

}  // namespace scrivalen::test

#include "formats/markup/xml_tables.h"

#include "formats/markup/xml_name.h"
#include "text/utf.h"

#include <cstring>

namespace scrivalen::document {
namespace {

std::string_view nameOf(ValueType type) {
  constexpr std::string_view kNames[] = {"", "text", "number", "integer", "date", "time", "boolean"};
  return kNames[static_cast<int>(type)];
}

char* copy(char* out, std::string_view text) {
  std::memcpy(out, text.data(), text.size());
  return out + text.size();
}

}  // namespace

XmlTables::XmlTables(XmlMarkup& markup, const FormatSettings& settings, EventSink& content)
    : markup_(markup),
      content_(content),
      isPlain_(settings.text("numbers") == "1234.5" && settings.text("dates") == "yyyy-mm-dd") {}

XmlTables::ElementTag XmlTables::tagOf(std::string_view text) {
  ElementTag tag;
  if (text.size() <= ElementTag::kSpace) {
    std::memcpy(tag.bytes, text.data(), text.size());
    tag.size = text.size();
  }
  return tag;
}

char* XmlTables::putTag(char* out, const ElementTag& tag) {
  std::memcpy(out, tag.bytes, ElementTag::kSpace);
  return out + tag.size;
}

void XmlTables::begin(const Table& table) {
  markup_.put("<table");
  markup_.putAttribute("name", table.name);
  markup_.put(">");
  columns_.clear();
  for (const Column& column : table.columns) {
    columns_.push_back(formOf(column));
    putColumn(column, columns_.back());
  }
}

XmlTables::ColumnForm XmlTables::formOf(const Column& column) const {
  ColumnForm form;
  form.name = column.name.empty() ? "cell" : toUtf8(formats::repairedXmlName(toWide(column.name)));
  form.start = tagOf("<" + form.name + ">");
  form.end = tagOf("</" + form.name + ">");
  form.isPlain = isPlain_ && column.format.decimals() == 0 && column.format.pattern().empty();
  return form;
}

void XmlTables::putColumn(const Column& column, const ColumnForm& form) {
  markup_.put("\n<column");
  markup_.putAttribute("name", column.name);
  markup_.putAttribute("element", form.name == column.name ? std::string_view() : form.name);
  markup_.putAttribute("type", nameOf(column.type));
  markup_.putAlign(column.align);
  if (column.width > 0) {
    markup_.putAttribute("width", column.width);
  }
  markup_.putAttribute("format", column.format.pattern());
  markup_.put("/>");
}

bool XmlTables::isSimple(const Cell& cell, const ColumnForm& form) {
  return cell.content == nullptr && cell.span == 1 && cell.align == Align::Auto && !cell.header && !cell.color &&
         !cell.background && form.end.size > 0 && cell.text.size() <= kLongestSimple;
}

void XmlTables::row(const Row& row) {
  markup_.put(row.header ? "\n<row header=\"true\">" : "\n<row>");
  std::size_t column = 0;
  for (const Cell& cell : row.cells) {
    ColumnForm& form = columns_[column];
    if (!isSimple(cell, form)) {
      putCell(cell, form);
    } else if (form.isPlain || !cell.isValue()) {
      putSimple(form, cell.text);
    } else {
      putSimpleValue(form, cell);
    }
    column += static_cast<std::size_t>(cell.span);
  }
  markup_.put("</row>");
}

void XmlTables::putSimple(const ColumnForm& form, std::string_view text) {
  OutputBuffer& out = markup_.out();
  char* at = putTag(out.reserve(2 * ElementTag::kSpace + MarkupText::spaceFor(text.size())), form.start);
  at = markup_.escaper().content(at, text, XmlMarkup::kBreak);
  out.advance(putTag(at, form.end));
}

// The values of a column are nearly always of one type.
const std::string& XmlTables::valueStartOf(ColumnForm& form, ValueType type) {
  if (form.valueType != type) {
    form.valueType = type;
    form.valueStart.assign(1, '<').append(form.name).append(" type=\"").append(nameOf(type)).append("\" value=\"");
  }
  return form.valueStart;
}

// The characters of a value's plain form are never escaped.
void XmlTables::putSimpleValue(ColumnForm& form, const Cell& cell) {
  OutputBuffer& out = markup_.out();
  char* at = out.reserve(3 * ElementTag::kSpace + Values::kLongest + MarkupText::spaceFor(cell.text.size()));
  char* const value = copy(at, valueStartOf(form, cell.type));
  at = putPlainForm(value, cell);
  if (const std::string_view plain(value, static_cast<std::size_t>(at - value)); plain.empty() || plain == cell.text) {
    return putSimple(form, cell.text);
  }
  at = markup_.escaper().content(copy(at, "\">"), cell.text, XmlMarkup::kBreak);
  out.advance(putTag(at, form.end));
}

void XmlTables::putCell(const Cell& cell, const ColumnForm& form) {
  markup_.putStart(form.name);
  markup_.putFlag("header", cell.header);
  if (cell.span > 1) {
    markup_.putAttribute("span", cell.span);
  }
  markup_.putAlign(cell.align);
  markup_.putColors(cell.color, cell.background);
  if (cell.isValue() && !form.isPlain) {
    putValue(cell);
  }
  markup_.put(">");
  if (cell.content != nullptr) {
    cell.replay(content_);
  } else {
    markup_.putText(cell.text);
  }
  markup_.putEnd(form.name);
}

// Writes the value in the plain form, where the text shows another one.
void XmlTables::putValue(const Cell& cell) {
  char plain[Values::kLongest];
  const std::string_view value(plain, static_cast<std::size_t>(putPlainForm(plain, cell) - plain));
  if (!value.empty() && value != cell.text) {
    markup_.putAttribute("type", nameOf(cell.type));
    markup_.putAttribute("value", value);
  }
}

// Nothing for a value that has only one form.
char* XmlTables::putPlainForm(char* out, const Cell& cell) const {
  const Values& values = markup_.plainValues();
  switch (cell.type) {
    case ValueType::Number:
      return cell.decimals > 0 ? values.decimal(out, cell.integer, cell.decimals, ValueFormat())
                               : values.number(out, cell.number, ValueFormat());
    case ValueType::Integer: return values.integer(out, cell.integer, ValueFormat());
    case ValueType::Date: return values.date(out, static_cast<std::int32_t>(cell.integer), ValueFormat());
    case ValueType::Time: return values.time(out, cell.integer, ValueFormat());
    default: return out;
  }
}

}  // namespace scrivalen::document

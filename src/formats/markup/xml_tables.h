#pragma once

#include "document/model/table.h"
#include "document/settings/settings.h"
#include "formats/markup/xml_markup.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::document {

/// Writes tables. A cell has the name of its column. One with nothing but a text or value is written in place.
class XmlTables {
 public:
  /// @param markup   not owned; must outlive this object
  /// @param content  gets what a cell with spans, links and the like contains; not owned
  XmlTables(XmlMarkup& markup, const FormatSettings& settings, EventSink& content);

  void begin(const Table& table);
  void row(const Row& row);
  void end() { markup_.put("\n</table>"); }

 private:
  // A tag with the space to be copied in one piece.
  struct ElementTag {
    static constexpr std::size_t kSpace = 48;

    char bytes[kSpace] = {};
    std::size_t size = 0;  // 0 if the tag is longer than that
  };

  struct ColumnForm {
    std::string name;  // of its element
    ElementTag start;
    ElementTag end;
    bool isPlain = true;  // its values are shown in the plain form
    ValueType valueType = ValueType::Auto;
    std::string valueStart;  // the start tag of a value of that type, up to the plain form
  };

  // The longest text that is written in place together with its tags.
  static constexpr std::size_t kLongestSimple =
      MarkupText::longestInPlace(OutputBuffer::kBlock - 2 * ElementTag::kSpace);

  static ElementTag tagOf(std::string_view text);
  static char* putTag(char* out, const ElementTag& tag);
  static bool isSimple(const Cell& cell, const ColumnForm& form);
  static const std::string& valueStartOf(ColumnForm& form, ValueType type);
  ColumnForm formOf(const Column& column) const;
  void putColumn(const Column& column, const ColumnForm& form);
  void putSimple(const ColumnForm& form, std::string_view text);
  void putSimpleValue(ColumnForm& form, const Cell& cell);
  void putCell(const Cell& cell, const ColumnForm& form);
  void putValue(const Cell& cell);
  char* putPlainForm(char* out, const Cell& cell) const;

  XmlMarkup& markup_;
  EventSink& content_;
  const bool isPlain_;  // the settings show values in the plain form
  std::vector<ColumnForm> columns_;
};

}  // namespace scrivalen::document

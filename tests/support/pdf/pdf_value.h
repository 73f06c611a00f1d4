#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace scrivalen::test {

/// A value of PDF (PDF 1.7, 7.3), or an operator of a content stream.
struct PdfValue {
  enum class Kind { Null, Number, String, Name, Array, Dictionary, Reference, Word };

  /// The value of a key; null without it.
  const PdfValue& at(const std::string& key) const;
  bool has(const std::string& key) const { return entries.count(key) != 0; }
  bool isName(std::string_view name) const { return kind == Kind::Name && text == name; }
  /// The number of a reference; 0 for any other value.
  int reference() const { return kind == Kind::Reference ? static_cast<int>(number) : 0; }
  /// The numbers of an array.
  std::vector<double> numbers() const;

  Kind kind = Kind::Null;
  double number = 0;            ///< or the number of the object that a reference is to
  std::string text;             ///< a string's bytes, a name without its slash, or a word
  std::vector<PdfValue> items;  ///< of an array
  std::map<std::string, PdfValue> entries;
};

/// Reads one value after the other. Any bytes may be given.
class PdfScanner {
 public:
  /// @param text  must outlive this
  explicit PdfScanner(std::string_view text) : text_(text) {}

  /// The next value; none at the end, and from the first mistake on.
  std::optional<PdfValue> next();
  bool isWrong() const { return isWrong_; }

 private:
  std::optional<PdfValue> nextAt(int depth);
  std::optional<PdfValue> wrong();
  std::optional<PdfValue> string();
  std::optional<PdfValue> hexString();
  std::optional<PdfValue> array(int depth);
  std::optional<PdfValue> dictionary(int depth);
  PdfValue name();
  PdfValue word();
  PdfValue numberOrReference(double number);
  bool take(std::string_view token);
  std::string_view takeRegular();
  void skipBlanks();

  std::string_view text_;
  std::size_t at_ = 0;
  bool isWrong_ = false;
};

/// The value that a text is; null for anything else.
PdfValue pdfValueOf(std::string_view text);

/// A string of text (PDF 1.7, 7.9.2.2) in ASCII or UTF-16, as UTF-8.
std::string pdfTextOf(std::string_view string);

}  // namespace scrivalen::test

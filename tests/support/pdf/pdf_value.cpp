#include "support/pdf/pdf_value.h"

#include "text/utf.h"

#include <charconv>
#include <cstdint>

namespace scrivalen::test {
namespace {

constexpr int kDeepest = 100;
constexpr std::string_view kBlanks("\0\t\n\f\r ", 6);
constexpr std::string_view kDelimiters = "()<>[]{}/%";

bool isRegular(char c) { return kBlanks.find(c) == kBlanks.npos && kDelimiters.find(c) == kDelimiters.npos; }

int hexDigit(char c) {
  return c >= '0' && c <= '9'   ? c - '0'
         : c >= 'A' && c <= 'F' ? c - 'A' + 10
         : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                : -1;
}

// What a letter stands for after a backslash.
char escaped(char c) {
  switch (c) {
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    default: return c;
  }
}

std::optional<double> numberOf(std::string_view word) {
  double number = 0;
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number, std::chars_format::fixed);
  const bool isNumber = error == std::errc() && end == word.data() + word.size();
  return isNumber ? std::optional(number) : std::nullopt;
}

}  // namespace

const PdfValue& PdfValue::at(const std::string& key) const {
  static const PdfValue none;
  const auto found = entries.find(key);
  return found == entries.end() ? none : found->second;
}

std::vector<double> PdfValue::numbers() const {
  std::vector<double> result;
  for (const PdfValue& item : items) {
    if (item.kind == Kind::Number) {
      result.push_back(item.number);
    }
  }
  return result;
}

std::optional<PdfValue> PdfScanner::next() { return isWrong_ ? std::nullopt : nextAt(0); }

std::optional<PdfValue> PdfScanner::nextAt(int depth) {
  skipBlanks();
  if (at_ == text_.size()) {
    return std::nullopt;
  }
  if (depth > kDeepest) {
    return wrong();
  }
  if (take("<<")) {
    return dictionary(depth);
  }
  if (take("[")) {
    return array(depth);
  }
  if (take("(")) {
    return string();
  }
  if (take("<")) {
    return hexString();
  }
  if (take("/")) {
    return name();
  }
  return isRegular(text_[at_]) ? std::optional(word()) : wrong();
}

std::optional<PdfValue> PdfScanner::wrong() {
  isWrong_ = true;
  return std::nullopt;
}

std::optional<PdfValue> PdfScanner::string() {
  PdfValue value;
  value.kind = PdfValue::Kind::String;
  for (int open = 1; at_ < text_.size(); ++at_) {
    char c = text_[at_];
    open += c == '(' ? 1 : c == ')' ? -1 : 0;
    if (open == 0) {
      ++at_;
      return value;
    }
    if (c == '\\' && at_ + 1 < text_.size()) {
      c = escaped(text_[++at_]);
    }
    value.text += c;
  }
  return wrong();
}

std::optional<PdfValue> PdfScanner::hexString() {
  PdfValue value;
  value.kind = PdfValue::Kind::String;
  while (at_ + 1 < text_.size() && text_[at_] != '>') {
    const int high = hexDigit(text_[at_]);
    const int low = hexDigit(text_[at_ + 1]);
    if (high < 0 || low < 0) {
      return wrong();
    }
    value.text += static_cast<char>(static_cast<unsigned char>(high << 4 | low));
    at_ += 2;
  }
  return take(">") ? std::optional(value) : wrong();
}

std::optional<PdfValue> PdfScanner::array(int depth) {
  PdfValue value;
  value.kind = PdfValue::Kind::Array;
  for (skipBlanks(); !take("]"); skipBlanks()) {
    auto item = nextAt(depth + 1);
    if (!item) {
      return wrong();
    }
    value.items.push_back(std::move(*item));
  }
  return value;
}

std::optional<PdfValue> PdfScanner::dictionary(int depth) {
  PdfValue value;
  value.kind = PdfValue::Kind::Dictionary;
  for (skipBlanks(); !take(">>"); skipBlanks()) {
    const auto key = nextAt(depth + 1);
    auto content = key ? nextAt(depth + 1) : std::nullopt;
    const bool isGood = content && key->kind == PdfValue::Kind::Name && !value.has(key->text);
    if (!isGood) {
      return wrong();
    }
    value.entries[key->text] = std::move(*content);
  }
  return value;
}

PdfValue PdfScanner::name() {
  PdfValue value;
  value.kind = PdfValue::Kind::Name;
  const std::string_view written = takeRegular();
  for (std::size_t i = 0; i < written.size(); ++i) {
    const bool isEscaped = written[i] == '#' && i + 2 < written.size() && hexDigit(written[i + 1]) >= 0;
    value.text +=
        isEscaped
            ? static_cast<char>(static_cast<unsigned char>(hexDigit(written[i + 1]) << 4 | hexDigit(written[i + 2])))
            : written[i];
    i += isEscaped ? 2 : 0;
  }
  return value;
}

PdfValue PdfScanner::word() {
  const std::string_view text = takeRegular();
  if (const auto number = numberOf(text)) {
    return numberOrReference(*number);
  }
  PdfValue value;
  if (text != "null") {
    value.kind = PdfValue::Kind::Word;
    value.text = text;
  }
  return value;
}

// The references of our files are all to generation 0.
PdfValue PdfScanner::numberOrReference(double number) {
  PdfValue value;
  value.number = number;
  const bool isReference =
      text_.substr(at_).starts_with(" 0 R") && (at_ + 4 == text_.size() || !isRegular(text_[at_ + 4]));
  at_ += isReference ? 4 : 0;
  value.kind = isReference ? PdfValue::Kind::Reference : PdfValue::Kind::Number;
  return value;
}

bool PdfScanner::take(std::string_view token) {
  const bool isHere = text_.substr(at_).starts_with(token);
  at_ += isHere ? token.size() : 0;
  return isHere;
}

std::string_view PdfScanner::takeRegular() {
  const std::size_t begin = at_;
  while (at_ < text_.size() && isRegular(text_[at_])) {
    ++at_;
  }
  return text_.substr(begin, at_ - begin);
}

void PdfScanner::skipBlanks() {
  while (at_ < text_.size() && kBlanks.find(text_[at_]) != kBlanks.npos) {
    ++at_;
  }
}

PdfValue pdfValueOf(std::string_view text) {
  PdfScanner scanner(text);
  auto value = scanner.next();
  return value && !scanner.next() && !scanner.isWrong() ? std::move(*value) : PdfValue();
}

std::string pdfTextOf(std::string_view string) {
  if (!string.starts_with("\xFE\xFF")) {
    return std::string(string);
  }
  std::wstring units;
  for (std::size_t at = 2; at + 1 < string.size(); at += 2) {
    const auto byte = [&](std::size_t index) {
      return static_cast<unsigned>(static_cast<unsigned char>(string[index]));
    };
    units += static_cast<wchar_t>(byte(at) << 8 | byte(at + 1));
  }
  return toUtf8(units);
}

}  // namespace scrivalen::test

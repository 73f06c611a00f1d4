#include "document/tables/number_text.h"

#include "document/model/values.h"
#include "text/ascii.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>

namespace scrivalen::document {
namespace {

// "+" and so many digits are a telephone number.
constexpr std::size_t kDigitsOfTelephone = 7;
constexpr std::size_t kMostExponentDigits = 3;

constexpr std::string_view kBlanks[] = {" ", "\u00A0", "\u2009", "\u202F"};
constexpr std::string_view kGroupMarks[] = {",", ".", "'", "\u2019", " ", "\u00A0", "\u2009", "\u202F"};
constexpr std::string_view kMinusSigns[] = {"-", "\u2212", "\u2013"};
constexpr std::string_view kPercentSigns[] = {"%", "\u2030"};
constexpr std::string_view kCurrencySigns[] = {"$", "\u00A2", "\u00A3", "\u00A5", "\u0E3F"};
constexpr std::string_view kPlaceholders[] = {"-",   "\u2013", "\u2014", "\u2212", "?",   "\u2026",
                                              "...", "n/a",    "na",     "n.a.",   "nan", "null"};

bool isAmong(std::string_view text, std::span<const std::string_view> texts) {
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

std::size_t countDigits(std::string_view text) {
  return static_cast<std::size_t>(
      std::distance(text.begin(), std::find_if_not(text.begin(), text.end(), isAsciiDigit<char>)));
}

bool isPlaceholder(std::string_view text) {
  constexpr std::size_t kLongest = 4;
  std::string lower(text.substr(0, kLongest + 1));
  std::transform(lower.begin(), lower.end(), lower.begin(), asciiLower<char>);
  return isAmong(lower, kPlaceholders);
}

// Reads a text from its beginning to its end.
class NumberReader {
 public:
  explicit NumberReader(std::string_view text) : rest_(text) {}

  NumberText read() {
    takeBlanks();
    inBrackets_ = take("(");
    takeSigns();
    if (!takeDigits() || !takeEnd() || isTelephone()) {
      return NumberText::Other;
    }
    return isDoubtful() ? NumberText::Perhaps : NumberText::Number;
  }

 private:
  bool take(std::string_view text) {
    if (!rest_.starts_with(text)) {
      return false;
    }
    rest_.remove_prefix(text.size());
    return true;
  }

  bool takeOneOf(std::span<const std::string_view> texts) {
    return std::any_of(texts.begin(), texts.end(), [&](std::string_view text) { return take(text); });
  }

  void takeBlanks() {
    while (takeOneOf(kBlanks)) {
    }
  }

  // A sign and the sign of a currency, in any order.
  void takeSigns() {
    takeSign();
    hasUnit_ = takeCurrency();
    takeBlanks();
    takeSign();
  }

  void takeSign() {
    if (hasMinus_ || hasPlus_) {
      return;
    }
    hasMinus_ = takeOneOf(kMinusSigns);
    hasPlus_ = !hasMinus_ && take("+");
    if (hasMinus_ || hasPlus_) {
      takeBlanks();
    }
  }

  // One of the signs, or a dollar with the letters of its country: "US$", "R$".
  bool takeCurrency() {
    constexpr std::size_t kMostLetters = 2;
    std::size_t letters = 0;
    while (letters < rest_.size() && letters < kMostLetters && rest_[letters] >= 'A' && rest_[letters] <= 'Z') {
      ++letters;
    }
    if (letters > 0 && rest_.substr(letters).starts_with('$')) {
      rest_.remove_prefix(letters + 1);
      return true;
    }
    return takeOneOf(kCurrencySigns) || takeCurrencyOfBlock();
  }

  // The block "Currency Symbols", U+20A0 to U+20CF.
  bool takeCurrencyOfBlock() {
    if (rest_.size() < 3 || (rest_.substr(0, 2) != "\xE2\x82" && rest_.substr(0, 2) != "\xE2\x83")) {
      return false;
    }
    const auto last = static_cast<unsigned char>(rest_[2]);
    if (rest_[1] == '\x82' ? last < 0xA0 : last > 0x8F) {
      return false;
    }
    rest_.remove_prefix(3);
    return true;
  }

  bool takeDigits() {
    whole_ = countDigits(rest_);
    if (whole_ > 1 && rest_.front() == '0') {
      return false;
    }
    const bool mayHaveGroups = whole_ > 0 && whole_ <= 3 && rest_.front() != '0';
    rest_.remove_prefix(whole_);
    if (mayHaveGroups) {
      takeGroups();
    }
    takeFraction();
    takeExponent();
    return whole_ > 0 || hasFraction_;
  }

  void takeGroups() {
    for (const std::string_view mark : kGroupMarks) {
      while (const std::size_t size = sizeOfGroup(mark)) {
        rest_.remove_prefix(mark.size() + size);
        mark_ = mark;
        ++groups_;
      }
      if (groups_ > 0) {
        return;
      }
    }
  }

  // Three digits, or two before further groups as in India: "12,34,567".
  std::size_t sizeOfGroup(std::string_view mark) const {
    if (!rest_.starts_with(mark)) {
      return 0;
    }
    const std::string_view group = rest_.substr(mark.size());
    const std::size_t size = countDigits(group);
    const bool isIndian = size == 2 && mark == "," && group.substr(size).starts_with(mark);
    return size == 3 || isIndian ? size : 0;
  }

  void takeFraction() {
    if (rest_.empty() || (rest_.front() != '.' && (rest_.front() != ',' || whole_ == 0)) ||
        mark_ == rest_.substr(0, 1)) {
      return;
    }
    const std::size_t digits = countDigits(rest_.substr(1));
    if (digits > 0) {
      rest_.remove_prefix(1 + digits);
      hasFraction_ = true;
    }
  }

  void takeExponent() {
    if (groups_ > 0 || rest_.empty() || (rest_.front() != 'e' && rest_.front() != 'E')) {
      return;
    }
    std::string_view exponent = rest_.substr(1);
    if (exponent.starts_with('-') || exponent.starts_with('+')) {
      exponent.remove_prefix(1);
    }
    const std::size_t digits = countDigits(exponent);
    if (digits > 0 && digits <= kMostExponentDigits) {
      rest_ = exponent.substr(digits);
    }
  }

  // What follows the digits, up to the end of the text.
  bool takeEnd() {
    takeBlanks();
    hasUnit_ = hasUnit_ || takeOneOf(kPercentSigns) || takeCurrency();
    if (inBrackets_ && !take(")")) {
      return false;
    }
    takeBlanks();
    return rest_.empty();
  }

  bool isPlain() const { return !hasUnit_ && !hasFraction_; }
  bool hasBlanks() const { return isAmong(mark_, kBlanks); }

  bool isTelephone() const {
    return hasPlus_ && isPlain() && (hasBlanks() || (groups_ == 0 && whole_ >= kDigitsOfTelephone));
  }

  // A label; the address of a computer; a telephone number or a postal code.
  bool isDoubtful() const {
    return isPlain() && !hasMinus_ &&
           ((inBrackets_ && groups_ == 0) || (groups_ == 3 && mark_ == ".") || (hasBlanks() && whole_ == 3));
  }

  std::string_view rest_;
  std::string_view mark_;  // between groups
  std::size_t whole_ = 0;  // digits before the first group or the fraction
  std::size_t groups_ = 0;
  bool hasMinus_ = false;
  bool hasPlus_ = false;
  bool hasUnit_ = false;
  bool hasFraction_ = false;
  bool inBrackets_ = false;
};

}  // namespace

NumberText numberTextOf(std::string_view utf8) {
  if (isPlainNumber(utf8)) {
    return NumberText::Number;
  }
  return isPlaceholder(utf8) ? NumberText::Placeholder : NumberReader(utf8).read();
}

}  // namespace scrivalen::document

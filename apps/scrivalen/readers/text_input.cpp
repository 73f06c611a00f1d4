#include "readers/text_input.h"

#include "errors.h"
#include "readers/utf8_check.h"
#include "system/messages.h"
#include "text/utf.h"
#include "texts.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace scrivalen::command {
namespace {

constexpr std::size_t kChunk = 256 * 1024;
constexpr std::size_t kFewestToJudge = 4096;  // bytes that show whether an input is a text
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

struct Signature {
  std::string_view bytes;
  const char* kind;
};

constexpr Signature kSignatures[] = {{"%PDF-", "a PDF"},
                                     {"\x1F\x8B", "compressed by gzip"},
                                     {"\xFD"
                                      "7zXZ",
                                      "compressed by xz"},
                                     {"PK\x03\x04", "a ZIP file, as spreadsheets and many other documents are"},
                                     {"\xD0\xCF\x11\xE0", "a document of an office program"},
                                     {"\x89PNG", "a picture"},
                                     {"\xFF\xD8\xFF", "a picture"},
                                     {"\x7F"
                                      "ELF",
                                      "a program"}};

// A text may begin with "BZh", as the name BZhang does; bzip2 has a digit and the mark of a block or of the end after
// it.
bool isBzip2(std::string_view start) {
  constexpr std::size_t kMark = 4;
  return start.starts_with("BZh") && start.size() > kMark &&
         (start.substr(kMark).starts_with("1AY&SY") || start.substr(kMark).starts_with("\x17rE8P\x90"));
}

// What a file is that begins like no text; nothing if it may be one.
const char* kindOfBinary(std::string_view start) {
  const auto* const found = std::find_if(std::begin(kSignatures), std::end(kSignatures),
                                         [=](const Signature& known) { return start.starts_with(known.bytes); });
  const char* const compressed = isBzip2(start) ? "compressed by bzip2" : nullptr;
  return found == std::end(kSignatures) ? compressed : found->kind;
}

bool isUtf32(std::string_view start) {
  using namespace std::string_view_literals;
  return start.starts_with("\xFF\xFE\0\0"sv) || start.starts_with("\0\0\xFE\xFF"sv);
}

// Whether a file is a program, a picture or the like, told by its control characters. A damaged text has few of them.
bool isBinary(std::string_view start) {
  constexpr std::size_t kFewest = 16;
  constexpr std::size_t kOneIn = 20;
  static constexpr std::string_view kOfText = "\t\n\r\f\x1B";
  const auto count = static_cast<std::size_t>(std::count_if(start.begin(), start.end(), [](char c) {
    return (static_cast<unsigned char>(c) < 0x20 && kOfText.find(c) == kOfText.npos) || c == 0x7F;
  }));
  return count >= kFewest && count > start.size() / kOneIn;
}

// The letters of most texts in UTF-16 have a byte 0, always the first or always the second.
std::string utf16Hint(std::string_view start) {
  std::size_t zeros[2] = {};
  for (std::size_t i = 0; i < start.size(); ++i) {
    zeros[i % 2] += start[i] == '\0' ? 1 : 0;
  }
  const std::size_t first = zeros[0] > zeros[1] ? 0 : 1;
  if (zeros[first] < start.size() / 4 || zeros[1 - first] > zeros[first] / 8) {
    return {};
  }
  return std::string("; it may be UTF-16 without a byte-order mark: --encoding ") +
         (first == 0 ? "utf-16be" : "utf-16le");
}

}  // namespace

TextInput::TextInput(const Environment& environment, std::string name, InputEncoding encoding, ByteOrderMark mark)
    : environment_(environment), name_(std::move(name)), mark_(mark), given_(encoding) {
  bytes_.resize(kChunk);
  if (name_ == "-") {
    return;
  }
  file_ = scrivalen::openForReading(scrivalen::widePath(name_));
  if (!file_) {
    fail();
  }
}

std::string_view TextInput::next() {
  while (fill()) {
    if (encoding_ == InputEncoding::Default) {
      recognizeEncoding();
    }
    if (const std::string_view text = take(); !text.empty()) {
      return text;
    }
  }
  return {};
}

std::string_view TextInput::take() {
  switch (encoding_) {
    case InputEncoding::Utf16Little:
    case InputEncoding::Utf16Big: return takeUtf16();
    case InputEncoding::Latin1:
    case InputEncoding::Windows1252: return takeSingleBytes();
    default: return takeUtf8();
  }
}

std::string TextInput::rest() {
  constexpr std::uint64_t kMostReserved = 1 << 30;  // of a file that may say that it is larger than it is
  std::string all;
  if (const auto size = file_ ? scrivalen::sizeOf(file_) : std::nullopt) {
    all.reserve(static_cast<std::size_t>(std::min(*size, kMostReserved)));
  }
  for (std::string_view piece = next(); !piece.empty(); piece = next()) {
    all += piece;
  }
  return all;
}

void TextInput::fail() const {
  const std::string reason = lastErrorText();
  if (environment_.wasInterrupted()) {
    throw Interrupted();
  }
  throw InputError("cannot read '" + name_ + "': " + reason);
}

// Moves the remaining bytes to the front and reads more after them; at first until the kind of the input can be told.
bool TextInput::fill() {
  std::memmove(bytes_.data(), bytes_.data() + begin_, end_ - begin_);
  end_ -= begin_;
  begin_ = 0;
  const std::size_t fewest = encoding_ == InputEncoding::Default ? kFewestToJudge : kUtf8Mark.size();
  while (!ended_) {
    if (environment_.wasInterrupted()) {
      throw Interrupted();
    }
    char* const space = bytes_.data() + end_;
    const std::size_t size = bytes_.size() - end_;
    const auto count = file_ ? scrivalen::readSome(file_, space, size) : environment_.readInput(space, size);
    if (!count) {
      fail();
    }
    end_ += *count;
    size_ += *count;
    ended_ = *count == 0;
    if (end_ >= fewest) {
      break;
    }
  }
  return end_ > 0;
}

void TextInput::recognizeEncoding() {
  const std::string_view start(bytes_.data(), end_);
  if (isUtf32(start)) {
    throw InputError("'" + name_ + "' is in UTF-32, which is not supported; UTF-8 and UTF-16 are");
  }
  std::size_t markSize = 0;
  encoding_ = given_ == InputEncoding::Default ? InputEncoding::Utf8 : given_;
  if (start.starts_with(kUtf8Mark)) {
    encoding_ = InputEncoding::Utf8;
    markSize = kUtf8Mark.size();
  } else if (start.starts_with("\xFF\xFE")) {
    encoding_ = InputEncoding::Utf16Little;
    markSize = 2;
  } else if (start.starts_with("\xFE\xFF")) {
    encoding_ = InputEncoding::Utf16Big;
    markSize = 2;
  }
  begin_ = mark_ == ByteOrderMark::Removed ? markSize : 0;
  requireText(start);
  if (encoding_ == InputEncoding::Latin1 || encoding_ == InputEncoding::Windows1252) {
    decoder_.emplace(encoding_);
  }
}

void TextInput::requireText(std::string_view start) const {
  if (encoding_ == InputEncoding::Utf16) {
    throw InputError("'" + name_ + "' has no byte-order mark: --encoding utf-16le or utf-16be says which UTF-16 it is");
  }
  const bool isUtf16 = encoding_ == InputEncoding::Utf16Little || encoding_ == InputEncoding::Utf16Big;
  if (isUtf16) {
    return;
  }
  const std::string reason = "'" + name_ + "' is not a text file";
  if (const char* const kind = kindOfBinary(start)) {
    throw InputError(reason + "; it is " + kind);
  }
  if (isBinary(start)) {
    throw InputError(reason + utf16Hint(start));
  }
}

std::string_view TextInput::takeUtf8() {
  std::string_view text(bytes_.data() + begin_, end_ - begin_);
  if (!ended_) {
    text.remove_suffix(incompleteSequence(text));
  }
  begin_ += text.size();
  return isCleanUtf8(text) ? text : repaired(text);
}

std::string_view TextInput::repaired(std::string_view text) {
  wide_.clear();
  const std::size_t illFormed = scrivalen::appendWide(wide_, text);
  replaced_ += illFormed;
  isDoubtful_ = isDoubtful_ || (illFormed > 0 && given_ == InputEncoding::Default);
  for (wchar_t& c : wide_) {
    if (c == L'\0') {
      c = static_cast<wchar_t>(scrivalen::kReplacement);
      ++replaced_;
    }
  }
  converted_.clear();
  scrivalen::appendUtf8(converted_, wide_);
  return converted_;
}

std::string_view TextInput::takeSingleBytes() {
  converted_.clear();
  replaced_ += decoder_->append(converted_, {bytes_.data() + begin_, end_ - begin_});
  begin_ = end_;
  return converted_;
}

std::string_view TextInput::takeUtf16() {
  const auto unit = [this](std::size_t at) {
    const auto first = static_cast<unsigned char>(bytes_[at]);
    const auto second = static_cast<unsigned char>(bytes_[at + 1]);
    return static_cast<char32_t>(encoding_ == InputEncoding::Utf16Little ? first | second << 8 : first << 8 | second);
  };
  converted_.clear();
  while (end_ - begin_ >= 2) {
    char32_t c = unit(begin_);
    const bool isPairPossible = scrivalen::isHighSurrogate(c);
    if (isPairPossible && end_ - begin_ < 4 && !ended_) {
      break;
    }
    begin_ += 2;
    if (isPairPossible && end_ - begin_ >= 2 && scrivalen::isLowSurrogate(unit(begin_))) {
      c = scrivalen::fromSurrogates(c, unit(begin_));
      begin_ += 2;
    }
    if (c == 0 || scrivalen::isSurrogate(c)) {
      c = scrivalen::kReplacement;
      ++replaced_;
    }
    char bytes[4];
    converted_.append(bytes, scrivalen::putUtf8(c, bytes));
  }
  if (ended_ && end_ - begin_ == 1) {
    begin_ = end_;
    ++replaced_;
    converted_ += "\xEF\xBF\xBD";
  }
  return converted_;
}

}  // namespace scrivalen::command

#include "scrivalen/rtf_doc.h"

#include "platform/code_page.h"
#include "platform/loss.h"
#include "platform/utf.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <string_view>

using namespace scrivalen::platform;

namespace {

constexpr std::size_t kFragmentBytes = 4096;
constexpr std::size_t kFormattedUnits = 1024;
constexpr std::size_t kUnlimited = std::numeric_limits<std::size_t>::max();

constexpr std::string_view kColorTable =
    "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue255;\\red0\\green255\\blue255;\\red0\\green255\\blue0;"
    "\\red255\\green0\\blue255;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red255\\green255\\blue255;"
    "\\red0\\green0\\blue128;\\red0\\green128\\blue128;\\red0\\green128\\blue0;\\red128\\green0\\blue128;"
    "\\red128\\green0\\blue0;\\red128\\green128\\blue0;\\red128\\green128\\blue128;\\red192\\green192\\blue192;}";

constexpr std::string_view kPortrait = "\\paperw11906\\paperh16838";  // A4 in twips
constexpr std::string_view kLandscape = "\\landscape\\paperw16838\\paperh11906";

constexpr std::string_view kAlignments[] = {"\\ql", "\\ql", "\\qc", "\\qr", "\\qj"};

constexpr std::string_view kRowBegin =
    "{\\trowd\\trgaph108\\trwWidth5000\\trftsWidth2\\trbrdrt\\brdrs\\brdrw10 \\trbrdrl\\brdrs\\brdrw10 "
    "\\trbrdrb\\brdrs\\brdrw10 \\trbrdrr\\brdrs\\brdrw10 \\trbrdrh\\brdrs\\brdrw10 \\trbrdrv\\brdrs\\brdrw10\r\n";
constexpr std::string_view kCellBorders =
    "\\clbrdrt\\brdrs\\brdrw10 \\clbrdrl\\brdrs\\brdrw10 \\clbrdrb\\brdrs\\brdrw10 \\clbrdrr\\brdrs\\brdrw10 "
    "\\cltxlrtb \r\n";
constexpr std::string_view kRowProperties = "\\nowidctlpar\\widctlpar\\adjustright\r\n";
constexpr std::string_view kRowEnd = "\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n";

constexpr std::string_view kFieldEnd = "}}}\n";

constexpr RTFdoc::ParType kNoAlignment = static_cast<RTFdoc::ParType>(-1);

}  // namespace

const int RTFdoc::OBUF_SIZE = 102400;

// One fragment on its way to the file: control words and texts are put together in one local buffer, converted as they
// come, and written once.
class RTFdoc::Fragment {
 public:
  /// @param units  how many UTF-16 code units of the fragment arrive; the conforming form has no such limit
  explicit Fragment(RTFdoc& doc, std::size_t units = kUnlimited)
      : doc_(doc), unitsLeft_(doc.conforming_ ? kUnlimited : units) {}
  Fragment(const Fragment&) = delete;
  Fragment& operator=(const Fragment&) = delete;

  Fragment& control(std::string_view words) {
    words = words.substr(0, unitsLeft_);
    spend(words.size());
    append(words);
    return *this;
  }

  Fragment& number(int value) {
    char digits[16];
    return control({digits, std::to_chars(digits, digits + sizeof digits, value).ptr});
  }

  /// A text of the document's, escaped in the conforming form.
  Fragment& text(const wchar_t* text) { return this->text(std::wstring_view(text ? text : L"")); }

  Fragment& text(std::wstring_view text) {
    if (doc_.conforming_) {
      escape(text);
    } else {
      convert(text);
    }
    return *this;
  }

  /// Control words that a caller hands in as they stand.
  Fragment& rawText(const wchar_t* text) {
    convert(text ? text : L"");
    return *this;
  }

  void write() {
    if (doc_.file && !dropped_ && size_ > 0) {
      doc_.file->Write(bytes_, size_);
    }
    size_ = 0;
  }

 private:
  void spend(std::size_t units) {
    if (unitsLeft_ != kUnlimited) {
      unitsLeft_ -= units;
    }
  }

  void append(std::string_view bytes) {
    if (doc_.conforming_ && bytes.size() > kFragmentBytes - size_) {
      write();
    }
    if (bytes.size() > kFragmentBytes - size_) {
      dropped_ = true;
      return;
    }
    std::memcpy(bytes_ + size_, bytes.data(), bytes.size());
    size_ += bytes.size();
  }

  void convert(std::wstring_view text) {
    const std::size_t whole = wholeCharacters(text);
    LossCounter loss;
    const auto size = toCodePage(text.substr(0, whole), bytes_ + size_, kFragmentBytes - size_, loss);
    dropped_ = dropped_ || !size;
    size_ += size.value_or(0);
    doc_.noteLoss(loss.count(), loss.first());
    // Where the limit falls between the two code units of a character, half of its stand-in arrives.
    if (whole < text.size() && unitsLeft_ > 0) {
      unitsLeft_ = 0;
      append("?");
    }
  }

  // How much of a text fits into the limit, in whole characters.
  std::size_t wholeCharacters(std::wstring_view text) {
    if (unitsLeft_ == kUnlimited) {
      return text.size();
    }
    std::size_t length = 0;
    for (; length < text.size(); ++length) {
      const std::size_t units = unitsOf(static_cast<char32_t>(text[length]));
      if (units > unitsLeft_) {
        break;
      }
      unitsLeft_ -= units;
    }
    return length;
  }

  void escape(std::wstring_view text) {
    const wchar_t* at = text.data();
    const wchar_t* const end = at + text.size();
    while (at != end) {
      const wchar_t* const start = at;
      const char32_t c = nextCharacter(at, end);
      if (c == '\\' || c == '{' || c == '}') {
        const char escaped[] = {'\\', static_cast<char>(c)};
        append({escaped, sizeof escaped});
      } else {
        character(c, {start, static_cast<std::size_t>(at - start)});
      }
    }
  }

  void character(char32_t c, std::wstring_view units) {
    char bytes[8];
    LossCounter loss;
    const auto size = toCodePage(units, bytes, sizeof bytes, loss);
    if (loss.count() == 0) {
      append({bytes, size.value_or(0)});
    } else if (c > 0xFFFF) {
      unicode(0xD800 + ((c - 0x10000) >> 10));
      unicode(0xDC00 + ((c - 0x10000) & 0x3FF));
    } else {
      unicode(c);
    }
  }

  // RTF 1.9, "Unicode RTF": the code unit as a signed 16-bit number, then what a reader without Unicode shows.
  void unicode(char32_t unit) { number(static_cast<std::int16_t>(static_cast<std::uint16_t>(unit)), "\\u", "?"); }

  void number(int value, std::string_view before, std::string_view behind) {
    char bytes[32];
    char* at = std::copy(before.begin(), before.end(), bytes);
    at = std::to_chars(at, bytes + sizeof bytes, value).ptr;
    at = std::copy(behind.begin(), behind.end(), at);
    append({bytes, static_cast<std::size_t>(at - bytes)});
  }

  RTFdoc& doc_;
  std::size_t unitsLeft_;
  std::size_t size_ = 0;
  bool dropped_ = false;
  char bytes_[kFragmentBytes];
};

RTFdoc::RTFdoc() = default;

void RTFdoc::noteLoss(std::uint64_t count, char32_t first) {
  if (count > 0 && lost_ == 0) {
    firstLost_ = first;
  }
  lost_ += count;
}

void RTFdoc::literal(std::string_view words) {
  if (file) {
    file->Write(words.data(), words.size());
  }
}

void RTFdoc::numbered(std::string_view word, int value, std::string_view behind) {
  Fragment(*this).control(word).number(value).control(behind).write();
}

int RTFdoc::BegDoc(OutputFile* target, const wchar_t* title, int landscape) {
  nextStyle = -1;
  file = target;
  reserved[0] = reserved[1] = 0;
  underlineDepth = 0;
  conforming_ = conformingNext_;
  lost_ = 0;
  if (!file) {
    return 0;
  }
  Fragment(*this, kFormattedUnits).control("{\\rtf\\ansi{\\info{\\title ").text(title).control("}} \r\n").write();
  literal(kColorTable);
  literal(landscape ? kLandscape : kPortrait);
  literal("\r\n{");
  nextParType = PAR_DEFAULT;
  return 1;
}

void RTFdoc::EndDoc() {
  if (!file) {
    return;
  }
  // Two at a time: an odd depth ends at -1, and the documents that programs know end so.
  for (; fieldDepth > 0; fieldDepth -= 2) {
    literal(kFieldEnd);
  }
  literal("}}");
  file = nullptr;
}

void RTFdoc::SetConforming(int on) { conformingNext_ = on; }

void RTFdoc::AddFont(int number, const wchar_t* name, ITEM_TYPE pos) {
  if (pos == ITEM_FIRST) {
    literal("\\fonttbl");
  }
  Fragment(*this, kFormattedUnits).control("{\\f").number(number).control("{").text(name).control("}}\r\n").write();
  if (pos == ITEM_LAST) {
    literal("}{");
  }
}

void RTFdoc::AddStyle(int number, const wchar_t* name, const wchar_t*, int size, int bold, const wchar_t* extra,
                      ITEM_TYPE pos) {
  if (pos == ITEM_FIRST) {
    literal("\\stylesheet");
  }
  Fragment entry(*this, kFormattedUnits);
  entry.control("{\\s").number(number).control("\\fs").number(size).control(bold ? "\\b" : "").rawText(extra);
  if (name && *name) {
    entry.control("{").text(name).control("}");
  }
  entry.control("}\r\n").write();
  if (pos == ITEM_LAST) {
    literal("}\r\n{");
  }
}

void RTFdoc::Char(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0x20) {
    SpecChar(byte);
  } else if (c == '\\' || c == '{' || c == '}') {
    const char escaped[] = {'\\', c};
    literal({escaped, sizeof escaped});
  } else if (byte >= 0x80) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const char escaped[] = {'\\', '\'', kDigits[byte >> 4], kDigits[byte & 0xF]};
    literal({escaped, sizeof escaped});
  } else {
    literal({&c, 1});
  }
}

void RTFdoc::Char(wchar_t) {}

void RTFdoc::SpecChar(wchar_t c) {
  switch (c) {
    case 7: Paragraf(kNoAlignment, -1); break;
    case 9: Tab(); break;
    case 11: LineBreak(); break;
    case 12:
    case 14: PageBreak(); break;
    case 13:
      Paragraf(nextParType, -1);
      nextParType = PAR_DEFAULT;
      break;
    default: break;
  }
}

void RTFdoc::write(const wchar_t* text, int length) {
  if (text) {
    Fragment(*this).text(length > 0 ? std::wstring_view(text, static_cast<std::size_t>(length)) : text).write();
  }
}

void RTFdoc::writeT(const wchar_t*, int) {}

void RTFdoc::BoldOn() { literal("\\b{"); }
void RTFdoc::BoldOff() { literal("}\\b0 "); }
void RTFdoc::ItalicOn() { literal("\\i{"); }
void RTFdoc::ItalicOff() { literal("}\\i0 "); }
void RTFdoc::StrikeOn() { literal("\\strike"); }
void RTFdoc::StrikeOff() { literal("\\strike0 "); }
void RTFdoc::OutlineOn() { literal("\\outl"); }
void RTFdoc::OutlineOff() { literal("\\outl0 "); }
void RTFdoc::ShadowOn() { literal("\\shad"); }
void RTFdoc::ShadowOff() { literal("\\shad0 "); }
void RTFdoc::SmallOn() { literal("\\scaps"); }
void RTFdoc::SmallOff() { literal("\\scaps0 "); }
void RTFdoc::CapsOn() { literal("\\caps"); }
void RTFdoc::CapsOff() { literal("\\caps0 "); }
void RTFdoc::ScriptOff() { literal("\\nosupersub "); }
void RTFdoc::FontColorOff() { literal("\\cf0 "); }
void RTFdoc::BackgroundColorOff() { literal("\\highlight0 "); }
void RTFdoc::FontColorOn(int index) { numbered("\\cf", index, " "); }
void RTFdoc::BackgroundColorOn(int index) { numbered("\\highlight", index, " "); }
void RTFdoc::FontNo(int number) { numbered("\\f", number, ""); }

void RTFdoc::FontSize(char size) {
  const int halfPoints = static_cast<signed char>(size);
  if (halfPoints > 0) {
    numbered("\\fs", halfPoints, " ");
  }
}

void RTFdoc::UnderLineOn(char) {
  literal("\\ul ");
  ++underlineDepth;
}

void RTFdoc::UnderLineOff(char) {
  if (underlineDepth > 0) {
    --underlineDepth;
    literal("\\ul0 ");
  }
}

void RTFdoc::ScriptOn(char kind) {
  if (kind == 1) {
    literal("\\super ");
  } else if (kind == 2) {
    literal("\\sub ");
  }
}

void RTFdoc::Style(int number) { nextStyle = number; }
void RTFdoc::NextParJ(ParType type) { nextParType = type; }

// The words in front of \par apply to the paragraph that it ends.
void RTFdoc::Paragraf(ParType type, int style) {
  const int number = style < 0 ? nextStyle : style;
  if (number >= 0) {
    numbered("\\s", number, "");
  }
  if (type >= 0 && static_cast<std::size_t>(type) < std::size(kAlignments)) {
    literal(kAlignments[type]);
  }
  literal("\\par\\pard\\plain ");
  nextStyle = -1;
}

void RTFdoc::PageBreak() { literal("\\page "); }
void RTFdoc::Tab() { literal("\\tab "); }
void RTFdoc::LineBreak() { literal("\\line "); }
void RTFdoc::Numbers(int on) { literal(on ? "\\pn{" : "}\\pn0"); }
void RTFdoc::List(char) {}

void RTFdoc::HyperLink(const wchar_t* text, const wchar_t* bookmark) {
  Fragment(*this)
      .control(" {\\field{\\*\\fldinst {HYPERLINK \\\\l \"")
      .text(bookmark)
      .control("\" }}{\\fldrslt {\\cs15\\ul\\cf2 ")
      .text(text)
      .control("}}} ")
      .write();
}

void RTFdoc::BookMark(const wchar_t* name) {
  Fragment(*this, kFormattedUnits)
      .control("{\\*\\bkmkstart ")
      .text(name)
      .control("}{\\*\\bkmkend ")
      .text(name)
      .control("}")
      .write();
}

void RTFdoc::BeginField() {
  ++fieldDepth;
  literal("{\\field{\\*\\fldinst {");
}

void RTFdoc::MiddleField() { literal("}}{\\fldrslt {"); }

void RTFdoc::EndField() {
  literal(kFieldEnd);
  --fieldDepth;
}

void RTFdoc::BeginTable() { literal("\\par "); }
void RTFdoc::EndTable() {}

void RTFdoc::BeginRow(int cells, int color) {
  literal(kRowBegin);
  for (int cell = 1; cell <= cells; ++cell) {
    Fragment definition(*this);
    definition.control(kCellBorders);
    if (color >= 0) {
      definition.control("\\clcbpat").number(color);
    }
    definition.control("\\cellx").number(cell).control("000").write();
  }
  literal(kRowProperties);
}

void RTFdoc::BeginCell() { literal("\\intbl "); }
void RTFdoc::EndCell() { literal("\\cell \r\n"); }
void RTFdoc::EndRow() { literal(kRowEnd); }

std::uint64_t RTFdoc::LostCharacters() const { return lost_; }
char32_t RTFdoc::FirstLostCharacter() const { return firstLost_; }

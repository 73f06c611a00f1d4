#include "scrivalen/rtf_doc.h"

#include "system/code_page.h"
#include "text/loss_counter.h"
#include "output/output_buffer.h"
#include "text/plain_text.h"
#include "text/utf.h"
#include "text/windows_1252.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <string_view>
#include <typeinfo>

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
constexpr std::string_view kCellShading = "\\clcbpat";
constexpr std::string_view kCellEdge = "\\cellx";
constexpr std::string_view kTwipsBehindCellNumber = "000";
constexpr std::string_view kRowProperties = "\\nowidctlpar\\widctlpar\\adjustright\r\n";
constexpr std::string_view kRowEnd = "\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n";

constexpr std::string_view kLineBreak = "\\line ";
constexpr std::string_view kFieldEnd = "}}}\n";

constexpr RTFdoc::ParType kNoAlignment = static_cast<RTFdoc::ParType>(-1);

constexpr std::size_t kNumberBytes = std::numeric_limits<std::int64_t>::digits10 + 2;
constexpr std::size_t kCellBytes = kCellBorders.size() + kCellShading.size() + kNumberBytes + kCellEdge.size() +
                                   kNumberBytes + kTwipsBehindCellNumber.size();

// What the conforming form writes as it stands.
struct PlainText : PlainBelow<char, 0x80> {
  static bool isPlain(unsigned c) { return c < kEnd && c != '\\' && c != '{' && c != '}' && c != '\n'; }
  static bool arePlain(std::uint64_t bytes) {
    return allMarked(differFrom(bytes, '\\') & differFrom(bytes, '{') & differFrom(bytes, '}') &
                     differFrom(bytes, '\n'));
  }
};

char* put(std::string_view words, char* out) { return std::copy(words.begin(), words.end(), out); }
char* put(std::int64_t number, char* out) { return std::to_chars(out, out + kNumberBytes, number).ptr; }

// One cell of a row's definition, at most kCellBytes.
char* putCell(std::int64_t cell, int color, char* out) {
  out = put(kCellBorders, out);
  if (color >= 0) {
    out = put(color, put(kCellShading, out));
  }
  return put(kTwipsBehindCellNumber, put(cell, put(kCellEdge, out)));
}

}  // namespace

const int RTFdoc::OBUF_SIZE = 102400;

// One fragment on its way to the file: control words and texts are put together in one local buffer, converted as they
// come, and written once.
class RTFdoc::Fragment {
 public:
  /// @param units  how many UTF-16 code units of the fragment arrive; the conforming form has no such limit
  explicit Fragment(RTFdoc& doc, std::size_t units = kUnlimited)
      : doc_(doc), buffer_(doc.buffer()), unitsLeft_(doc.conforming_ ? kUnlimited : units) {
    begin();
  }
  Fragment(const Fragment&) = delete;
  Fragment& operator=(const Fragment&) = delete;

  Fragment& control(std::string_view words) {
    words = words.substr(0, unitsLeft_);
    spend(words.size());
    append(words);
    return *this;
  }

  Fragment& number(int value) {
    char digits[kNumberBytes];
    return control({digits, put(value, digits)});
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

  /// The name of a bookmark. The field that jumps to it has it in double quotes, so that a conforming one has none.
  Fragment& bookmark(const wchar_t* name) {
    std::wstring_view rest = name ? name : L"";
    for (std::size_t quote = rest.find(L'"'); doc_.conforming_ && quote != rest.npos; quote = rest.find(L'"')) {
      text(rest.substr(0, quote)).control("'");
      rest.remove_prefix(quote + 1);
    }
    return text(rest);
  }

  /// Control words that a caller hands in as they stand.
  Fragment& rawText(const wchar_t* text) {
    std::wstring_view rest = text ? text : L"";
    for (; doc_.conforming_ && rest.size() > kFormattedUnits; rest.remove_prefix(kFormattedUnits)) {
      write();
      convert(rest.substr(0, kFormattedUnits));
    }
    if (doc_.conforming_) {
      write();
    }
    convert(rest);
    return *this;
  }

  void write() {
    doc_.noteLoss(dropped_ ? characters_ : lost_, dropped_ ? first_ : firstLost_);
    if (!dropped_) {
      handOver();
    }
    begin();
  }

 private:
  void handOver() {
    if (buffer_) {
      buffer_->advance(bytes_ + size_);
    } else if (doc_.file && size_ > 0) {
      doc_.file->Write(bytes_, size_);
    }
  }

  void begin() {
    bytes_ = buffer_ ? buffer_->room(kFragmentBytes) : own_;
    size_ = 0;
    characters_ = lost_ = 0;
  }

  void lose(std::uint64_t count, char32_t first) {
    if (lost_ == 0) {
      firstLost_ = first;
    }
    lost_ += count;
  }

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
    countCharacters(text, whole);
    LossCounter loss;
    const auto size = toCodePage(text.substr(0, whole), bytes_ + size_, kFragmentBytes - size_, loss);
    dropped_ = dropped_ || !size;
    size_ += size.value_or(0);
    lose(loss.count(), loss.first());
    // Where the limit falls between the two code units of a character, half of its stand-in arrives.
    if (whole < text.size() && unitsLeft_ > 0) {
      unitsLeft_ = 0;
      append("?");
    }
  }

  // All of them are lost when the fragment is dropped, else those that are cut off.
  void countCharacters(std::wstring_view text, std::size_t arriving) {
    if (characters_ == 0 && !text.empty()) {
      first_ = static_cast<char32_t>(text.front());
    }
    characters_ += text.size();
    if (arriving < text.size()) {
      lose(text.size() - arriving, static_cast<char32_t>(text[arriving]));
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
      const std::size_t room = kFragmentBytes - size_;
      const std::size_t plain =
          copyPlainBlocks<PlainText>(at, std::min(room, static_cast<std::size_t>(end - at)), bytes_ + size_);
      at += plain;
      size_ += plain;
      const wchar_t* const stop = at + std::min(kPlainBlock, static_cast<std::size_t>(end - at));
      while (at < stop) {
        escapeCharacter(at, end);
      }
    }
  }

  void escapeCharacter(const wchar_t*& at, const wchar_t* end) {
    const wchar_t* const start = at;
    const char32_t c = asCharacter(nextCharacter(at, end));
    const char escaped[] = {'\\', static_cast<char>(c)};
    if (PlainText::isPlain(c)) {
      append({escaped + 1, 1});
    } else if (c == '\n') {
      append(kLineBreak);  // readers pass over the character itself
    } else if (c < 0x80) {
      append({escaped, sizeof escaped});
    } else {
      character(c, {start, static_cast<std::size_t>(at - start)});
    }
  }

  // A byte stands for itself only where every reader takes it so: "\\ansi" means Windows-1252 to them, whatever the
  // code page of the system that wrote it.
  void character(char32_t c, std::wstring_view units) {
    char bytes[8];
    LossCounter loss;
    const auto size = toCodePage(units, bytes, sizeof bytes, loss);
    if (loss.count() == 0 && size == 1 && toWindows1252(c) == static_cast<unsigned char>(bytes[0])) {
      append({bytes, 1});
    } else if (c > 0xFFFF) {
      unicode(highSurrogate(c));
      unicode(lowSurrogate(c));
    } else {
      unicode(c);
    }
  }

  // RTF 1.9, "Unicode RTF": the code unit as a signed 16-bit number, then what a reader without Unicode shows.
  void unicode(char32_t unit) {
    char bytes[kNumberBytes + 3];
    char* const end = put("?", put(static_cast<std::int16_t>(static_cast<std::uint16_t>(unit)), put("\\u", bytes)));
    append({bytes, end});
  }

  RTFdoc& doc_;
  OutputBuffer* buffer_;
  std::size_t unitsLeft_;
  std::uint64_t characters_ = 0;  // of texts in the fragment
  char32_t first_ = 0;
  std::uint64_t lost_ = 0;  // of them
  char32_t firstLost_ = 0;
  bool dropped_ = false;
  char* bytes_ = nullptr;
  std::size_t size_ = 0;
  char own_[kFragmentBytes];
};

RTFdoc::RTFdoc() = default;

void RTFdoc::noteLoss(std::uint64_t count, char32_t first) {
  if (!file) {
    return;
  }
  if (count > 0 && lost_ == 0) {
    firstLost_ = first;
  }
  lost_ += count;
}

void RTFdoc::literal(std::string_view words) {
  if (OutputBuffer* const own = buffer()) {
    own->write(words.data(), words.size());
  } else if (file) {
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
  bufferedFile_ = file;
  // A host's class derived from it may have a Write of its own.
  const bool ownFile = file && typeid(*file) == typeid(ReportFile);
  buffer_ = ownFile ? bufferOf(static_cast<ReportFile&>(*file)) : nullptr;
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
void RTFdoc::LineBreak() { literal(kLineBreak); }
void RTFdoc::Numbers(int on) { literal(on ? "\\pn{" : "}\\pn0"); }
void RTFdoc::List(char) {}

void RTFdoc::HyperLink(const wchar_t* text, const wchar_t* bookmark) {
  Fragment(*this)
      .control(" {\\field{\\*\\fldinst {HYPERLINK \\\\l \"")
      .bookmark(bookmark)
      .control("\" }}{\\fldrslt {\\cs15\\ul\\cf2 ")
      .text(text)
      .control("}}} ")
      .write();
}

void RTFdoc::BookMark(const wchar_t* name) {
  Fragment(*this, kFormattedUnits)
      .control("{\\*\\bkmkstart ")
      .bookmark(name)
      .control("}{\\*\\bkmkend ")
      .bookmark(name)
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
  for (std::int64_t cell = 1; cell <= cells; ++cell) {
    char bytes[kCellBytes];
    literal({bytes, putCell(cell, color, bytes)});
  }
  literal(kRowProperties);
}

void RTFdoc::BeginCell() { literal("\\intbl "); }
void RTFdoc::EndCell() { literal("\\cell \r\n"); }
void RTFdoc::EndRow() { literal(kRowEnd); }

std::uint64_t RTFdoc::LostCharacters() const { return lost_; }
char32_t RTFdoc::FirstLostCharacter() const { return firstLost_; }

#include "scrivalen/rtf_doc.h"

#include "formats/rtf/fragment.h"
#include "text/ascii.h"
#include "text/null_text.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <typeinfo>

using namespace scrivalen;
using namespace scrivalen::rtf;

namespace {

constexpr std::string_view kColorTable =
    "{\\colortbl;\\red0\\green0\\blue0;\\red0\\green0\\blue255;\\red0\\green255\\blue255;\\red0\\green255\\blue0;"
    "\\red255\\green0\\blue255;\\red255\\green0\\blue0;\\red255\\green255\\blue0;\\red255\\green255\\blue255;"
    "\\red0\\green0\\blue128;\\red0\\green128\\blue128;\\red0\\green128\\blue0;\\red128\\green0\\blue128;"
    "\\red128\\green0\\blue0;\\red128\\green128\\blue0;\\red128\\green128\\blue128;\\red192\\green192\\blue192;}";

constexpr std::string_view kPortraitPaper = "\\paperw11906\\paperh16838";  // A4 in twips
constexpr std::string_view kLandscapePaper = "\\landscape\\paperw16838\\paperh11906";

constexpr std::string_view kAlignments[] = {"\\ql", "\\ql", "\\qc", "\\qr", "\\qj"};

constexpr std::string_view kRowBegin =
    "{\\trowd\\trgaph108\\trwWidth5000\\trftsWidth2\\trbrdrt\\brdrs\\brdrw10 \\trbrdrl\\brdrs\\brdrw10 "
    "\\trbrdrb\\brdrs\\brdrw10 \\trbrdrr\\brdrs\\brdrw10 \\trbrdrh\\brdrs\\brdrw10 \\trbrdrv\\brdrs\\brdrw10\r\n";
constexpr std::string_view kCellBorders =
    "\\clbrdrt\\brdrs\\brdrw10 \\clbrdrl\\brdrs\\brdrw10 \\clbrdrb\\brdrs\\brdrw10 \\clbrdrr\\brdrs\\brdrw10 "
    "\\cltxlrtb \r\n";
constexpr std::string_view kCellShading = "\\clcbpat";
constexpr std::string_view kCellEdge = "\\cellx";
constexpr std::string_view kThousandTwips = "000";
constexpr std::string_view kRowProperties = "\\nowidctlpar\\widctlpar\\adjustright\r\n";
constexpr std::string_view kRowEnd = "\\pard \\nowidctlpar\\widctlpar\\adjustright\\row\\pard}\r\n";

constexpr std::string_view kFieldEnd = "}}}\n";

constexpr RTFdoc::ParType kNoAlignment = static_cast<RTFdoc::ParType>(-1);

constexpr std::size_t kCellBytes =
    kCellBorders.size() + kCellShading.size() + kNumberBytes + kCellEdge.size() + kNumberBytes + kThousandTwips.size();

char* put(std::string_view words, char* out) { return std::copy(words.begin(), words.end(), out); }

// Writes one cell of a row's definition, at most kCellBytes.
char* putCell(std::int64_t cell, int color, char* out) {
  out = put(kCellBorders, out);
  if (color >= 0) {
    out = putNumber(color, put(kCellShading, out));
  }
  return put(kThousandTwips, putNumber(cell, put(kCellEdge, out)));
}

}  // namespace

const int RTFdoc::OBUF_SIZE = 102400;

RTFdoc::RTFdoc() = default;

struct RTFdoc::Words {
  static void noteLoss(RTFdoc& doc, std::uint64_t count, char32_t first) {
    if (!doc.file) {
      return;
    }
    if (count > 0 && doc.lost_ == 0) {
      doc.firstLost_ = first;
    }
    doc.lost_ += count;
  }

  static void literal(RTFdoc& doc, std::string_view words) {
    if (OutputBuffer* const own = doc.buffer()) {
      own->write(words.data(), words.size());
    } else if (doc.file) {
      doc.file->Write(words.data(), words.size());
    }
  }

  // RTF 1.9, "Control Words": a space ends the word and is not part of the text. The classic form has none here, so
  // that a following letter or digit becomes part of the word.
  static void unended(RTFdoc& doc, std::string_view wordAndBlank) {
    literal(doc, doc.conforming_ ? wordAndBlank : wordAndBlank.substr(0, wordAndBlank.size() - 1));
  }

  static void numbered(RTFdoc& doc, std::string_view word, int value, std::string_view end) {
    char bytes[kNumberBytes + 16];
    literal(doc, {bytes, put(end, putNumber(value, put(word, bytes)))});
  }
};

template <typename Content>
void RTFdoc::fragment(std::size_t units, Content content) {
  const Output output{file, buffer()};
  const auto write = [&](auto& part) {
    content(part);
    Words::noteLoss(*this, part.loss().count(), part.loss().first());
    part.write();
  };
  if (conforming_) {
    ConformingFragment part(output);
    write(part);
  } else {
    ClassicFragment part(output, units);
    write(part);
  }
}

int RTFdoc::BegDoc(OutputFile* target, const wchar_t* title, int landscape) {
  nextStyle = -1;
  file = target;
  reserved[0] = reserved[1] = 0;
  underlineDepth = 0;
  conforming_ = conformingNext_;
  lost_ = 0;
  bufferedFile_ = file;
  // A class that a host derives from it may override Write.
  const bool ownFile = file && typeid(*file) == typeid(ReportFile);
  buffer_ = ownFile ? bufferOf(static_cast<ReportFile&>(*file)) : nullptr;
  if (!file) {
    return 0;
  }
  fragment(kFormattedUnits, [title](auto& part) {
    part.control("{\\rtf\\ansi{\\info{\\title ").text(orEmpty(title)).control("}} \r\n");
  });
  Words::literal(*this, kColorTable);
  Words::literal(*this, landscape ? kLandscapePaper : kPortraitPaper);
  Words::literal(*this, "\r\n{");
  nextParType = PAR_DEFAULT;
  return 1;
}

void RTFdoc::EndDoc() {
  if (!file) {
    return;
  }
  // Two at a time, which closes only half of the fields and leaves an odd depth at -1: programs know the documents this
  // way.
  for (; fieldDepth > 0; fieldDepth -= 2) {
    Words::literal(*this, kFieldEnd);
  }
  Words::literal(*this, "}}");
  file = nullptr;
}

void RTFdoc::SetConforming(int on) { conformingNext_ = on; }

void RTFdoc::AddFont(int number, const wchar_t* name, ITEM_TYPE pos) {
  if (pos == ITEM_FIRST) {
    Words::literal(*this, "\\fonttbl");
  }
  fragment(kFormattedUnits,
           [=](auto& part) { part.control("{\\f").number(number).control("{").text(orEmpty(name)).control("}}\r\n"); });
  if (pos == ITEM_LAST) {
    Words::literal(*this, "}{");
  }
}

void RTFdoc::AddStyle(int number, const wchar_t* name, const wchar_t*, int size, int bold, const wchar_t* extra,
                      ITEM_TYPE pos) {
  if (pos == ITEM_FIRST) {
    Words::literal(*this, "\\stylesheet");
  }
  fragment(kFormattedUnits, [=](auto& part) {
    part.control("{\\s").number(number).control("\\fs").number(size).control(bold ? "\\b" : "");
    part.controlText(orEmpty(extra));
    if (name && *name) {
      part.control("{").text(name).control("}");
    }
    part.control("}\r\n");
  });
  if (pos == ITEM_LAST) {
    Words::literal(*this, "}\r\n{");
  }
}

void RTFdoc::Char(char c) {
  const auto byte = static_cast<unsigned char>(c);
  if (byte < 0x20) {
    SpecChar(byte);
  } else if (c == '\\' || c == '{' || c == '}') {
    const char escaped[] = {'\\', c};
    Words::literal(*this, {escaped, sizeof escaped});
  } else if (byte >= 0x80) {
    const char escaped[] = {'\\', '\'', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
    Words::literal(*this, {escaped, sizeof escaped});
  } else {
    Words::literal(*this, {&c, 1});
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
    const std::wstring_view all = length > 0 ? std::wstring_view(text, static_cast<std::size_t>(length)) : text;
    fragment(kUnlimited, [all](auto& part) { part.text(all); });
  }
}

void RTFdoc::writeT(const wchar_t*, int) {}

void RTFdoc::BoldOn() { Words::literal(*this, "\\b{"); }
void RTFdoc::BoldOff() { Words::literal(*this, "}\\b0 "); }
void RTFdoc::ItalicOn() { Words::literal(*this, "\\i{"); }
void RTFdoc::ItalicOff() { Words::literal(*this, "}\\i0 "); }
void RTFdoc::StrikeOn() { Words::unended(*this, "\\strike "); }
void RTFdoc::StrikeOff() { Words::literal(*this, "\\strike0 "); }
void RTFdoc::OutlineOn() { Words::unended(*this, "\\outl "); }
void RTFdoc::OutlineOff() { Words::literal(*this, "\\outl0 "); }
void RTFdoc::ShadowOn() { Words::unended(*this, "\\shad "); }
void RTFdoc::ShadowOff() { Words::literal(*this, "\\shad0 "); }
void RTFdoc::SmallOn() { Words::unended(*this, "\\scaps "); }
void RTFdoc::SmallOff() { Words::literal(*this, "\\scaps0 "); }
void RTFdoc::CapsOn() { Words::unended(*this, "\\caps "); }
void RTFdoc::CapsOff() { Words::literal(*this, "\\caps0 "); }
void RTFdoc::ScriptOff() { Words::literal(*this, "\\nosupersub "); }
void RTFdoc::FontColorOff() { Words::literal(*this, "\\cf0 "); }
void RTFdoc::BackgroundColorOff() { Words::literal(*this, "\\highlight0 "); }
void RTFdoc::FontColorOn(int index) { Words::numbered(*this, "\\cf", index, " "); }
void RTFdoc::BackgroundColorOn(int index) { Words::numbered(*this, "\\highlight", index, " "); }
void RTFdoc::FontNo(int number) { Words::numbered(*this, "\\f", number, conforming_ ? " " : ""); }

void RTFdoc::FontSize(char size) {
  const int halfPoints = static_cast<signed char>(size);
  if (halfPoints > 0) {
    Words::numbered(*this, "\\fs", halfPoints, " ");
  }
}

void RTFdoc::UnderLineOn(char) {
  Words::literal(*this, "\\ul ");
  ++underlineDepth;
}

void RTFdoc::UnderLineOff(char) {
  if (underlineDepth > 0) {
    --underlineDepth;
    Words::literal(*this, "\\ul0 ");
  }
}

void RTFdoc::ScriptOn(char kind) {
  if (kind == 1) {
    Words::literal(*this, "\\super ");
  } else if (kind == 2) {
    Words::literal(*this, "\\sub ");
  }
}

void RTFdoc::Style(int number) { nextStyle = number; }
void RTFdoc::NextParJ(ParType type) { nextParType = type; }

// The words before \par apply to the paragraph that it ends.
void RTFdoc::Paragraf(ParType type, int style) {
  const int number = style < 0 ? nextStyle : style;
  if (number >= 0) {
    Words::numbered(*this, "\\s", number, "");
  }
  if (type >= 0 && static_cast<std::size_t>(type) < std::size(kAlignments)) {
    Words::literal(*this, kAlignments[type]);
  }
  Words::literal(*this, "\\par\\pard\\plain ");
  nextStyle = -1;
}

void RTFdoc::PageBreak() { Words::literal(*this, "\\page "); }
void RTFdoc::Tab() { Words::literal(*this, "\\tab "); }
void RTFdoc::LineBreak() { Words::literal(*this, kLineBreak); }
void RTFdoc::Numbers(int on) {
  if (on) {
    Words::literal(*this, "\\pn{");
  } else {
    Words::unended(*this, "}\\pn0 ");
  }
}

void RTFdoc::List(char) {}

void RTFdoc::HyperLink(const wchar_t* text, const wchar_t* bookmark) {
  fragment(kUnlimited, [=](auto& part) {
    part.control(" {\\field{\\*\\fldinst {HYPERLINK \\\\l \"").bookmark(orEmpty(bookmark));
    part.control("\" }}{\\fldrslt {\\cs15\\ul\\cf2 ").text(orEmpty(text)).control("}}} ");
  });
}

void RTFdoc::BookMark(const wchar_t* name) {
  fragment(kFormattedUnits, [all = orEmpty(name)](auto& part) {
    part.control("{\\*\\bkmkstart ").bookmark(all).control("}{\\*\\bkmkend ").bookmark(all).control("}");
  });
}

void RTFdoc::BeginField() {
  ++fieldDepth;
  Words::literal(*this, "{\\field{\\*\\fldinst {");
}

void RTFdoc::MiddleField() { Words::literal(*this, "}}{\\fldrslt {"); }

void RTFdoc::EndField() {
  Words::literal(*this, kFieldEnd);
  --fieldDepth;
}

void RTFdoc::BeginTable() { Words::literal(*this, "\\par "); }
void RTFdoc::EndTable() {}

void RTFdoc::BeginRow(int cells, int color) {
  Words::literal(*this, kRowBegin);
  for (std::int64_t cell = 1; cell <= cells; ++cell) {
    char bytes[kCellBytes];
    Words::literal(*this, {bytes, putCell(cell, color, bytes)});
  }
  Words::literal(*this, kRowProperties);
}

void RTFdoc::BeginCell() { Words::literal(*this, "\\intbl "); }
void RTFdoc::EndCell() { Words::literal(*this, "\\cell \r\n"); }
void RTFdoc::EndRow() { Words::literal(*this, kRowEnd); }

std::uint64_t RTFdoc::LostCharacters() const { return lost_; }
char32_t RTFdoc::FirstLostCharacter() const { return firstLost_; }

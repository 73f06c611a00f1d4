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

constexpr std::string_view kFieldEnd = "}}}\n";

constexpr RTFdoc::ParType kNoAlignment = static_cast<RTFdoc::ParType>(-1);

constexpr std::size_t kCellBytes = kCellBorders.size() + kCellShading.size() + kNumberBytes + kCellEdge.size() +
                                   kNumberBytes + kTwipsBehindCellNumber.size();

char* put(std::string_view words, char* out) { return std::copy(words.begin(), words.end(), out); }

// One cell of a row's definition, at most kCellBytes.
char* putCell(std::int64_t cell, int color, char* out) {
  out = put(kCellBorders, out);
  if (color >= 0) {
    out = putNumber(color, put(kCellShading, out));
  }
  return put(kTwipsBehindCellNumber, putNumber(cell, put(kCellEdge, out)));
}

}  // namespace

const int RTFdoc::OBUF_SIZE = 102400;

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

// RTF 1.9, "Control Words": a blank ends the word and is no part of the text. The classic form has none here, so that a
// letter or digit after it becomes a part of the word.
void RTFdoc::unended(std::string_view wordAndBlank) {
  literal(conforming_ ? wordAndBlank : wordAndBlank.substr(0, wordAndBlank.size() - 1));
}

void RTFdoc::numbered(std::string_view word, int value, std::string_view end) {
  char bytes[kNumberBytes + 16];
  literal({bytes, put(end, putNumber(value, put(word, bytes)))});
}

template <typename Content>
void RTFdoc::fragment(std::size_t units, Content content) {
  const Output output{file, buffer()};
  const auto write = [&](auto& part) {
    content(part);
    noteLoss(part.loss().count(), part.loss().first());
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
  // A host's class derived from it may have a Write of its own.
  const bool ownFile = file && typeid(*file) == typeid(ReportFile);
  buffer_ = ownFile ? bufferOf(static_cast<ReportFile&>(*file)) : nullptr;
  if (!file) {
    return 0;
  }
  fragment(kFormattedUnits, [title](auto& part) {
    part.control("{\\rtf\\ansi{\\info{\\title ").text(orEmpty(title)).control("}} \r\n");
  });
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
  fragment(kFormattedUnits,
           [=](auto& part) { part.control("{\\f").number(number).control("{").text(orEmpty(name)).control("}}\r\n"); });
  if (pos == ITEM_LAST) {
    literal("}{");
  }
}

void RTFdoc::AddStyle(int number, const wchar_t* name, const wchar_t*, int size, int bold, const wchar_t* extra,
                      ITEM_TYPE pos) {
  if (pos == ITEM_FIRST) {
    literal("\\stylesheet");
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
    const char escaped[] = {'\\', '\'', kHexDigits[byte >> 4], kHexDigits[byte & 0xF]};
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
    const std::wstring_view all = length > 0 ? std::wstring_view(text, static_cast<std::size_t>(length)) : text;
    fragment(kUnlimited, [all](auto& part) { part.text(all); });
  }
}

void RTFdoc::writeT(const wchar_t*, int) {}

void RTFdoc::BoldOn() { literal("\\b{"); }
void RTFdoc::BoldOff() { literal("}\\b0 "); }
void RTFdoc::ItalicOn() { literal("\\i{"); }
void RTFdoc::ItalicOff() { literal("}\\i0 "); }
void RTFdoc::StrikeOn() { unended("\\strike "); }
void RTFdoc::StrikeOff() { literal("\\strike0 "); }
void RTFdoc::OutlineOn() { unended("\\outl "); }
void RTFdoc::OutlineOff() { literal("\\outl0 "); }
void RTFdoc::ShadowOn() { unended("\\shad "); }
void RTFdoc::ShadowOff() { literal("\\shad0 "); }
void RTFdoc::SmallOn() { unended("\\scaps "); }
void RTFdoc::SmallOff() { literal("\\scaps0 "); }
void RTFdoc::CapsOn() { unended("\\caps "); }
void RTFdoc::CapsOff() { literal("\\caps0 "); }
void RTFdoc::ScriptOff() { literal("\\nosupersub "); }
void RTFdoc::FontColorOff() { literal("\\cf0 "); }
void RTFdoc::BackgroundColorOff() { literal("\\highlight0 "); }
void RTFdoc::FontColorOn(int index) { numbered("\\cf", index, " "); }
void RTFdoc::BackgroundColorOn(int index) { numbered("\\highlight", index, " "); }
void RTFdoc::FontNo(int number) { numbered("\\f", number, conforming_ ? " " : ""); }

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
void RTFdoc::Numbers(int on) {
  if (on) {
    literal("\\pn{");
  } else {
    unended("}\\pn0 ");
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

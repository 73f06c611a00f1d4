#include "formats/rtf/document/prolog/list_table.h"

#include "document/word/word_containers.h"
#include "formats/rtf/document/escape.h"

namespace scrivalen::document::rtf {
namespace {

// Each depth has its own indent, which paragraphs repeat.
void writeIndent(OutputBuffer& out, int level) {
  put(out, "\\fi", -kListIndent);
  put(out, "\\li", (level + 1) * kListIndent);
  out.put('}');
}

void writeBulletList(OutputBuffer& out) {
  put(out, "{\\list\\listtemplateid1\\listhybrid");
  for (int level = 0; level < kBulletLevels; ++level) {
    put(out, "{\\listlevel\\levelnfc23\\leveljc0\\levelfollow0\\levelstartat1{\\leveltext\\'01");
    writeText(out, bulletOf(level));
    put(out, ";}{\\levelnumbers;}");
    writeIndent(out, level);
  }
  put(out, "\\listid1}\n");
}

void writeNumberedList(OutputBuffer& out, int list) {
  put(out, "{\\list\\listtemplateid", list);
  put(out,
      "\\listsimple1{\\listlevel\\levelnfc0\\leveljc0\\levelfollow0\\levelstartat1{\\leveltext\\'02\\'00.;}"
      "{\\levelnumbers\\'01;}");
  writeIndent(out, 0);
  put(out, "\\listid", list);
  put(out, "}\n");
}

}  // namespace

std::string_view bulletOf(int level) {
  constexpr std::string_view kBullets[] = {"\xE2\x80\xA2", "\xE2\x97\xA6", "\xE2\x96\xAA"};  // U+2022, U+25E6, U+25AA
  return kBullets[level % 3];
}

void writeLists(OutputBuffer& out) {
  put(out, "{\\*\\listtable\n");
  writeBulletList(out);
  for (int list = kFirstNumberedList; list < kFirstNumberedList + kNumberedLists; ++list) {
    writeNumberedList(out, list);
  }
  put(out, "}\n{\\*\\listoverridetable");
  for (int list = kBulletList; list < kFirstNumberedList + kNumberedLists; ++list) {
    put(out, "{\\listoverride\\listid", list);
    put(out, "\\listoverridecount0\\ls", list);
    out.put('}');
  }
  put(out, "}\n");
}

}  // namespace scrivalen::document::rtf

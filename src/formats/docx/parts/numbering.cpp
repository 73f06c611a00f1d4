#include "formats/docx/parts/numbering.h"

#include "document/word/word_containers.h"
#include "formats/docx/xml.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace scrivalen::document::docx {
namespace {

// The kinds of lists, which the lists of a document refer to. Lists of one kind have one counter for each level, so
// numbered lists that are deeper than levels go have a kind of their own for each further depth.
constexpr int kBullets = 0;
constexpr int kTasks = 1;
constexpr int kNumbers = 2;

int numberedKind(int depth) { return kNumbers + std::max(depth - (kListLevels - 1), 0); }

constexpr std::string_view kBulletCharacters[] = {"\xE2\x80\xA2", "\xE2\x97\xA6", "\xE2\x96\xAA"};

constexpr std::string_view kZeroWidthSpace = "\xE2\x80\x8B";

void beginLevel(OutputBuffer& out, int level, std::string_view format) {
  put(out, "<w:lvl w:ilvl=\"", level, "\"><w:start w:val=\"1\"/><w:numFmt w:val=\"");
  put(out, format);
  put(out, "\"/>");
}

void endLevel(OutputBuffer& out, int level, std::string_view text) {
  put(out, "<w:lvlText w:val=\"");
  put(out, text);
  put(out, "\"/><w:lvlJc w:val=\"left\"/><w:pPr><w:ind w:left=\"", (level + 1) * kListIndent, "\"");
  put(out, " w:hanging=\"", kListIndent, "\"/></w:pPr></w:lvl>");
}

// The box of a task is text, which a person can tick. The marker of the item itself cannot be seen; without one,
// converters take the item for a part of the one before it.
void writeLevel(OutputBuffer& out, int kind, int level) {
  beginLevel(out, level, kind >= kNumbers ? "decimal" : "bullet");
  if (kind == kTasks) {
    put(out, "<w:suff w:val=\"nothing\"/>");
    endLevel(out, level, kZeroWidthSpace);
  } else if (kind == kBullets) {
    endLevel(out, level, kBulletCharacters[level % 3]);
  } else {
    endLevel(out, level, joined({"%", std::to_string(level + 1), "."}));
  }
}

void writeKind(OutputBuffer& out, int kind) {
  put(out, "<w:abstractNum w:abstractNumId=\"", kind, "\"><w:multiLevelType w:val=\"hybridMultilevel\"/>");
  for (int level = 0; level < kListLevels; ++level) {
    writeLevel(out, kind, level);
  }
  put(out, "</w:abstractNum>\n");
}

void beginList(OutputBuffer& out, std::int64_t list, int kind) {
  put(out, "<w:num w:numId=\"", list, "\">");
  put(out, "<w:abstractNumId w:val=\"", kind, "\"/>");
}

}  // namespace

int Numbering::addList(int depth, std::int64_t first) {
  if (lists_.size() == kMostLists || first > kLargestFirst) {
    return 0;
  }
  deepest_ = std::max(deepest_, depth);
  lists_.push_back({depth, first});
  return kTaskList + static_cast<int>(lists_.size());
}

void Numbering::write(OutputBuffer& out) const {
  put(out, kXmlStart);
  put(out, "<w:numbering");
  put(out, kNamespaces);
  put(out, "\n");
  for (int kind = kBullets; kind <= numberedKind(deepest_); ++kind) {
    writeKind(out, kind);
  }
  beginList(out, kBulletList, kBullets);
  put(out, "</w:num>");
  beginList(out, kTaskList, kTasks);
  put(out, "</w:num>\n");
  int number = kTaskList;
  for (const List& list : lists_) {
    beginList(out, ++number, numberedKind(list.depth));
    put(out, "<w:lvlOverride w:ilvl=\"", levelOf(list.depth), "\">");
    put(out, "<w:startOverride w:val=\"", list.first, "\"/></w:lvlOverride></w:num>\n");
  }
  put(out, "</w:numbering>\n");
}

}  // namespace scrivalen::document::docx

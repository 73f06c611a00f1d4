#include "round_trip/random_document.h"

#include "document/pictures/picture.h"
#include "support/documents/pictures.h"

#include <array>

using namespace scrivalen::document;

namespace scrivalen::test {
namespace {

// What could be markup, alone or together with what comes before or after it.
constexpr const char* kTokens[] = {"*",
                                   "**",
                                   "_",
                                   "__",
                                   "`",
                                   "``",
                                   "```",
                                   "[",
                                   "]",
                                   "](x)",
                                   "[x]: /y",
                                   "<",
                                   "<b>",
                                   "</b>",
                                   "<!--",
                                   "-->",
                                   "<br>",
                                   "&",
                                   "&amp;",
                                   "&#65;",
                                   "&amp",
                                   "\\",
                                   "~",
                                   "~~",
                                   "~~~",
                                   "|",
                                   "| - |",
                                   "!",
                                   "![",
                                   "#",
                                   "# ",
                                   "###### ",
                                   "-",
                                   "- ",
                                   "---",
                                   "- - -",
                                   "+",
                                   "+ ",
                                   "1. ",
                                   "12) ",
                                   "3",
                                   ".",
                                   ")",
                                   "> ",
                                   ">",
                                   "=",
                                   "===",
                                   ":",
                                   ":-",
                                   "://",
                                   "http",
                                   "https://example.org/a_b_c",
                                   "www.",
                                   "example.org",
                                   "ann@example.org",
                                   "@",
                                   "    ",
                                   " ",
                                   "  ",
                                   "a",
                                   "b1",
                                   "word",
                                   "snake_case",
                                   "\xC3\xA9",
                                   "\xE2\x80\x9C",
                                   "\xE4\xB8\xAD",
                                   "\xF0\x9F\x98\x80",
                                   "\"",
                                   "'",
                                   "(",
                                   ")",
                                   "$",
                                   "^",
                                   "{",
                                   "}",
                                   "%",
                                   "?",
                                   ",",
                                   ";",
                                   "[ ] ",
                                   "[x] ",
                                   "0",
                                   "-5",
                                   "ftp",
                                   "x",
                                   "two words",
                                   "\xC2\xA0",
                                   "{#a}",
                                   " {#b}",
                                   "[!NOTE]"};

constexpr const char* kAddresses[] = {"https://example.org/",
                                      "#place",
                                      "a b",
                                      "a(b)c",
                                      "",
                                      "x?a=1&amp;b=2",
                                      "back\\slash",
                                      "<angle>",
                                      "a_b_c*d*",
                                      "tick`tick",
                                      "https://example.org/|x|",
                                      "https://example.org/_a_?b=c&d=e",
                                      "[y]",
                                      "mailto:a@b.example"};

}  // namespace

const char* RandomDocument::randomToken() { return kTokens[below(std::size(kTokens))]; }

std::string RandomDocument::randomText(std::uint32_t most) {
  std::string text;
  for (std::uint32_t i = below(most) + 1; i > 0; --i) {
    text += randomToken();
    text += isChosen(3) ? " " : "";
  }
  return text;
}

std::string RandomDocument::fill() {
  for (std::uint32_t i = below(isChosen(2) ? 1 : 5) + 1; i > 0; --i) {
    addBlock(0);
  }
  return outline_.lines();
}

// ---- Text

// In pieces, as a host may write it.
void RandomDocument::addText(const Outline::Style& style) {
  const std::string text = randomText(4);
  const std::size_t half = below(static_cast<std::uint32_t>(text.size()));
  const bool isCut = (static_cast<unsigned char>(text[half]) & 0xC0) != 0x80;
  document_.text(std::string_view(text).substr(0, isCut ? half : 0));
  document_.text(std::string_view(text).substr(isCut ? half : 0));
  outline_.text(text, style);
}

void RandomDocument::addInline(int depth, Outline::Style style) {
  for (std::uint32_t i = below(4) + 1; i > 0; --i) {
    const std::uint32_t choice = below(12);
    Outline::Style inner = style;
    if (choice < 3 && depth < 4) {
      constexpr Span kSpans[] = {Span::Strong, Span::Emphasis, Span::Deleted};
      bool* const flags[] = {&inner.strong, &inner.emphasis, &inner.deleted};
      *flags[choice] = true;
      document_.beginSpan(kSpans[choice]);
      addInline(depth + 1, inner);
      document_.end();
    } else if (choice == 3) {
      addCode(style);
    } else if (choice == 4 && depth < 4 && style.link.empty()) {
      addLink(depth, style);
    } else if (choice == 5) {
      document_.lineBreak();
      outline_.text("\n", style);
    } else if (choice == 6 && isChosen(4)) {
      addPicture(style);
    } else {
      addText(style);
    }
  }
}

void RandomDocument::addCode(const Outline::Style& style) {
  Outline::Style inner = style;
  inner.code = true;
  const std::string text = randomText(3);
  document_.beginSpan(Span::Code);
  document_.text(text);
  document_.end();
  outline_.text(text, inner);
}

void RandomDocument::addLink(int depth, const Outline::Style& style) {
  Outline::Style inner = style;
  const std::string address = kAddresses[below(std::size(kAddresses))];
  const std::string title = isChosen(2) ? std::string() : randomText(3);
  inner.link = "@" + address + "'" + title + "'";
  document_.beginLink(address, title);
  if (isChosen(3) && !address.empty()) {
    const std::string shown = address.starts_with("mailto:") ? address.substr(7) : address;
    document_.text(shown);
    outline_.text(shown, inner);
  } else {
    addInline(depth + 1, inner);
  }
  document_.end();
}

void RandomDocument::addPicture(const Outline::Style& style) {
  std::string reason;
  document_.image(Picture::read(greyPng(1, 1), reason), "a [*map*]", 0, {});
  outline_.text("<a [*map*]|data:image/p>", style);
}

void RandomDocument::addTextOf(const std::string& name, bool mayBeEmpty) {
  outline_.beginText(name, mayBeEmpty);
  if (!mayBeEmpty || !isChosen(4)) {
    addInline(0, {});
    document_.text("x");
    outline_.text("x", {});
  }
  outline_.endText();
}

// ---- Blocks

void RandomDocument::addBlock(int depth) {
  const std::uint32_t choice = below(depth < 3 ? 12 : 7);
  switch (choice) {
    case 0: return addHeading();
    case 1: return addCodeBlock();
    case 2: document_.rule(); return outline_.add("rule");
    case 3: return addTable();
    case 7:
    case 8: return addQuote(depth);
    case 9:
    case 10:
    case 11: return addList(depth, isChosen(2));
    default: return addParagraph();
  }
}

void RandomDocument::addRule() {
  document_.rule();
  outline_.add("rule");
}

void RandomDocument::addHeading() {
  const int level = static_cast<int>(below(6)) + 1;
  document_.beginHeading(level, {}, Align::Auto);
  addTextOf("heading " + std::to_string(level) + " ", false);
  document_.end();
}

void RandomDocument::addParagraph() {
  document_.beginParagraph(Align::Auto);
  addTextOf("text ", false);
  document_.end();
}

void RandomDocument::addQuote(int depth) {
  document_.beginQuote();
  outline_.beginBlock("quote");
  for (std::uint32_t i = below(3) + 1; i > 0; --i) {
    addBlock(depth + 1);
  }
  outline_.endBlock();
  document_.end();
}

// The reader takes some lists that hold loose lists in tight ones, or items that do not begin with text, for other
// lists than they are, and tasks after quotes for texts. There are none of these here.
void RandomDocument::addList(int depth, bool isTight) {
  constexpr int kFirst[] = {1, 0, 7, 99, 999999999};
  const bool isOrdered = isChosen(2);
  const int first = kFirst[below(std::size(kFirst))];
  const bool hasTasks = isChosen(4);
  document_.beginList(isOrdered, first, isTight);
  const std::size_t place = outline_.beginBlock(isOrdered ? "list " + std::to_string(first) : std::string("list"));
  const std::uint32_t items = below(3) + 1;
  bool isLoose = items > 1;
  for (std::uint32_t i = 0; i < items; ++i) {
    isLoose = (hasTasks ? addTask() : addItem(depth, isTight)) || isLoose;
  }
  outline_.endBlock();
  outline_.complete(place, isLoose && !isTight ? " loose" : " tight");
  document_.end();
}

bool RandomDocument::addTask() {
  constexpr const char* kNames[] = {"item", "item open", "item done"};
  const std::uint32_t task = below(3);
  document_.beginItem(static_cast<Task>(task));
  outline_.beginBlock(kNames[task]);
  addTextOf("text ", false);
  outline_.endBlock();
  document_.end();
  return false;
}

// @return whether the item has two blocks, which blank lines may separate
bool RandomDocument::addItem(int depth, bool isTight) {
  document_.beginItem(Task::None);
  outline_.beginBlock("item");
  const std::uint32_t blocks = below(3) + 1;
  bool isAfterText = false;
  for (std::uint32_t i = 0; i < blocks; ++i) {
    const bool isText = isTight && (i == 0 || (!isAfterText && isChosen(2)));
    if (isText) {
      addTextOf("text ", false);
    } else if (!isTight) {
      i == 0 ? addParagraph() : addBlock(depth + 1);
    } else if (depth < 3) {
      addList(depth + 1, true);
    } else {
      addCodeBlock();
    }
    isAfterText = isText;
  }
  outline_.endBlock();
  document_.end();
  return blocks > 1;
}

void RandomDocument::addCodeBlock() {
  constexpr const char* kLanguages[] = {"", "cpp", "a`b", "~x", "c&amp;d", "e\\f"};
  const std::string language = kLanguages[below(std::size(kLanguages))];
  std::string code;
  for (std::uint32_t i = below(4); i > 0; --i) {
    code += randomText(3) + "\n";
  }
  document_.beginCode(language);
  document_.text(code);
  document_.end();
  outline_.add("code " + language + ":" + code);
}

void RandomDocument::addTable() {
  const std::uint32_t columns = below(3) + 1;
  std::vector<Column> list(columns);
  for (Column& column : list) {
    column.align = static_cast<Align>(below(3) + 1);
  }
  constexpr const char* kNames[] = {"cell ", "cell ", "cell center ", "cell right "};
  document_.beginTable(list, {});
  outline_.beginBlock("table");
  const bool hasHeader = isChosen(2);
  if (!hasHeader) {
    outline_.beginBlock("header");
    for (const Column& column : list) {
      outline_.beginText(kNames[static_cast<int>(column.align)], true);
      outline_.endText();
    }
    outline_.endBlock();
  }
  for (std::uint32_t row = 0; row < 3; ++row) {
    document_.beginRow(hasHeader && row == 0);
    outline_.beginBlock(hasHeader && row == 0 ? "header" : "row");
    for (const Column& column : list) {
      document_.beginCell({});
      addTextOf(kNames[static_cast<int>(column.align)], true);
      document_.end();
    }
    outline_.endBlock();
    document_.end();
  }
  outline_.endBlock();
  document_.end();
}

}  // namespace scrivalen::test

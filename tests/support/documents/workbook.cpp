#include "support/documents/workbook.h"

#include "support/files.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <charconv>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace scrivalen::test {
namespace {

std::size_t number(std::string_view bytes, std::size_t at, std::size_t size) {
  std::size_t value = 0;
  for (std::size_t i = size; i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes.at(at + i));
  }
  return value;
}

struct PackedMember {
  std::string bytes;
  bool isStored;
};

// A member, found through the directory at the archive's end.
std::optional<PackedMember> packedMember(const std::string& archive, std::string_view name) {
  const std::size_t end = archive.rfind("PK\x05\x06");
  if (end == std::string::npos) {
    return std::nullopt;
  }
  std::size_t at = number(archive, end + 16, 4);
  for (std::size_t left = number(archive, end + 10, 2); left > 0; --left) {
    const std::size_t nameSize = number(archive, at + 28, 2);
    if (archive.substr(at + 46, nameSize) == name) {
      const std::size_t local = number(archive, at + 42, 4);
      const std::size_t begin = local + 30 + number(archive, local + 26, 2) + number(archive, local + 28, 2);
      return PackedMember{archive.substr(begin, number(archive, at + 20, 4)), number(archive, at + 10, 2) == 0};
    }
    at += 46 + nameSize + number(archive, at + 30, 2) + number(archive, at + 32, 2);
  }
  return std::nullopt;
}

void inflatePieces(std::string& packed, const std::function<void(std::string_view)>& take) {
  z_stream stream{};
  ASSERT_EQ(inflateInit2(&stream, -MAX_WBITS), Z_OK);
  stream.next_in = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_in = static_cast<uInt>(packed.size());
  std::string piece(65536, '\0');
  int state = Z_OK;
  while (state == Z_OK) {
    stream.next_out = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_out = static_cast<uInt>(piece.size());
    state = inflate(&stream, Z_NO_FLUSH);
    take(std::string_view(piece).substr(0, piece.size() - stream.avail_out));
  }
  EXPECT_EQ(state, Z_STREAM_END);
  inflateEnd(&stream);
}

std::string unescaped(std::string_view text) {
  constexpr std::pair<std::string_view, char> kNames[] = {
      {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}};
  std::string result;
  while (!text.empty()) {
    std::size_t taken = 0;
    for (const auto& [name, character] : kNames) {
      if (text.starts_with(name)) {
        result += character;
        taken = name.size();
      }
    }
    if (taken == 0) {
      EXPECT_NE(text.front(), '&') << "an unknown reference: " << text.substr(0, 20);
      result += text.front();
      taken = 1;
    }
    text.remove_prefix(taken);
  }
  return result;
}

// ECMA-376, 22.9.2.19; only characters below U+0080 are escaped here.
std::string withoutEscapes(std::string_view text) {
  constexpr std::size_t kSize = 7;
  std::string result;
  while (!text.empty()) {
    unsigned code = 0;
    const char* const digits = text.data() + 2;
    if (text.size() >= kSize && text.starts_with("_x") && text[kSize - 1] == '_' &&
        std::from_chars(digits, digits + 4, code, 16).ptr == digits + 4) {
      EXPECT_LT(code, 0x80u);
      result += static_cast<char>(code);
      text.remove_prefix(kSize);
    } else {
      result += text.front();
      text.remove_prefix(1);
    }
  }
  return result;
}

// A start tag, an empty element's tag, an end tag, or a text.
struct Token {
  enum class Kind { Start, Empty, End, Text } kind;
  std::string name;
  std::map<std::string, std::string, std::less<>> attributes;
  std::string text;

  std::string attribute(std::string_view key) const {
    const auto found = attributes.find(key);
    return found == attributes.end() ? std::string() : found->second;
  }
};

void readAttributes(std::string_view text, Token& token) {
  for (;;) {
    const std::size_t begin = text.find_first_not_of(" \r\n");
    const std::size_t equals = text.find("=\"");
    if (begin == std::string_view::npos || equals == std::string_view::npos) {
      EXPECT_EQ(begin, std::string_view::npos) << text;
      return;
    }
    const std::size_t end = text.find('"', equals + 2);
    ASSERT_NE(end, std::string_view::npos) << text;
    token.attributes[std::string(text.substr(begin, equals - begin))] =
        unescaped(text.substr(equals + 2, end - equals - 2));
    text.remove_prefix(end + 1);
  }
}

Token readTag(std::string_view inside) {
  Token token{Token::Kind::Start, {}, {}, {}};
  if (inside.starts_with('/')) {
    token.kind = Token::Kind::End;
    inside.remove_prefix(1);
  } else if (inside.ends_with('/')) {
    token.kind = Token::Kind::Empty;
    inside.remove_suffix(1);
  }
  const std::size_t blank = inside.find_first_of(" \r\n");
  token.name = inside.substr(0, blank);
  if (blank != std::string_view::npos) {
    readAttributes(inside.substr(blank), token);
  }
  return token;
}

// Every control character but these is forbidden in XML, escaped or not.
void expectXmlCharacters(std::string_view text) {
  for (const char c : text) {
    EXPECT_TRUE(static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\t' || c == '\r') << static_cast<int>(c);
  }
}

std::vector<Token> tokensOf(std::string_view xml) {
  expectXmlCharacters(xml);
  EXPECT_TRUE(xml.starts_with("<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"));
  xml.remove_prefix(std::min(xml.size(), xml.find('\n') + 1));
  std::vector<Token> tokens;
  std::vector<std::string> open;
  while (!xml.empty()) {
    if (xml.front() != '<') {
      const std::size_t end = std::min(xml.find('<'), xml.size());
      tokens.push_back({Token::Kind::Text, {}, {}, unescaped(xml.substr(0, end))});
      xml.remove_prefix(end);
      continue;
    }
    const std::size_t end = xml.find('>');
    if (end == std::string_view::npos) {
      ADD_FAILURE() << "an unclosed tag: " << xml.substr(0, 50);
      break;
    }
    tokens.push_back(readTag(xml.substr(1, end - 1)));
    xml.remove_prefix(end + 1);
    if (tokens.back().kind == Token::Kind::Start) {
      open.push_back(tokens.back().name);
    } else if (tokens.back().kind == Token::Kind::End) {
      EXPECT_FALSE(open.empty() || open.back() != tokens.back().name) << tokens.back().name;
      if (!open.empty()) {
        open.pop_back();
      }
    }
  }
  EXPECT_TRUE(open.empty());
  return tokens;
}

// The formats of cells, by the index that cells refer to.
std::vector<std::string> looksOf(const std::wstring& path) {
  std::vector<std::string> fonts;
  std::vector<std::string> fills;
  std::vector<std::string> looks;
  std::map<std::string, std::string> numbers{{"0", ""},          {"1", " 0"},  {"2", " 0.00"},  {"3", " #,##0"},
                                             {"4", " #,##0.00"}, {"9", " 0%"}, {"10", " 0.00%"}};
  std::string inside;
  for (const Token& token : tokensOf(workbookPart(path, "xl/styles.xml"))) {
    if (token.kind == Token::Kind::Start &&
        (token.name == "fonts" || token.name == "fills" || token.name == "cellXfs")) {
      inside = token.name;
    } else if (token.kind == Token::Kind::End && token.name == inside) {
      inside.clear();
    } else if (token.name == "numFmt") {
      numbers[token.attribute("numFmtId")] = " " + token.attribute("formatCode");
    } else if (inside == "fonts" && token.name == "font") {
      if (token.kind == Token::Kind::Start) {
        fonts.emplace_back();
      }
    } else if (inside == "fonts" && token.name == "b") {
      fonts.back() += " bold";
    } else if (inside == "fonts" && token.name == "name" && token.attribute("val") != "Calibri") {
      fonts.back() += " " + token.attribute("val");
    } else if (inside == "fonts" && token.name == "sz" && token.attribute("val") != "11") {
      fonts.back() += " " + token.attribute("val");
    } else if (inside == "fonts" && token.name == "color" && !token.attribute("rgb").empty()) {
      fonts.back() += " color=" + token.attribute("rgb").substr(2);
    } else if (inside == "fills" && token.name == "fill" && token.kind == Token::Kind::Start) {
      fills.emplace_back();
    } else if (inside == "fills" && token.name == "patternFill" && token.attribute("patternType") == "gray125") {
      fills.back() = " gray";
    } else if (inside == "fills" && token.name == "fgColor") {
      fills.back() = " fill=" + token.attribute("rgb").substr(2);
    } else if (inside == "cellXfs" && token.name == "xf" && token.kind != Token::Kind::End) {
      looks.push_back(fonts.at(std::stoul(token.attribute("fontId"))) +
                      fills.at(std::stoul(token.attribute("fillId"))) + numbers[token.attribute("numFmtId")]);
    } else if (inside == "cellXfs" && token.attribute("shrinkToFit") == "1") {
      looks.back() += " shrunk";
    }
  }
  return looks;
}

std::string columnName(std::size_t column) {
  std::string name;
  for (; column > 0; column = (column - 1) / 26) {
    name.insert(name.begin(), static_cast<char>('A' + (column - 1) % 26));
  }
  return name;
}

std::string widthLine(const Token& token) {
  const std::string width = token.attribute("width");
  const std::size_t dot = width.find('.');
  const std::string first = columnName(std::stoul(token.attribute("min")));
  const std::string last = columnName(std::stoul(token.attribute("max")));
  return first + (first == last ? "" : ":" + last) + ' ' + width.substr(0, dot == std::string::npos ? dot : dot + 2) +
         '\n';
}

struct Sheet {
  std::string widths;
  std::string cells;
};

Sheet readSheet(const std::wstring& path, std::size_t number, const std::vector<std::string>& looks) {
  Sheet sheet;
  std::string place;
  std::string text;
  std::string look;
  std::string type;
  bool hasValue = false;
  const auto endCell = [&] {
    const std::string shown = !hasValue     ? '"' + withoutEscapes(text) + '"'
                              : type == "b" ? std::string(text == "1" ? "TRUE" : "FALSE")
                                            : text;
    sheet.cells += place + ' ' + shown + look + '\n';
  };
  bool inText = false;
  for (const Token& token : tokensOf(workbookPart(path, "xl/worksheets/sheet" + std::to_string(number) + ".xml"))) {
    if (token.name == "col") {
      sheet.widths += widthLine(token);
    } else if (token.name == "c" && token.kind != Token::Kind::End) {
      place = token.attribute("r");
      text.clear();
      const std::string style = token.attribute("s");
      look = looks.at(style.empty() ? 0 : std::stoul(style));
      type = token.attribute("t");
      hasValue = token.kind == Token::Kind::Start && type != "inlineStr";
      if (token.kind == Token::Kind::Empty) {
        endCell();
      }
    } else if (token.name == "c") {
      endCell();
    } else if (token.name == "t" || token.name == "v") {
      EXPECT_EQ(token.name == "v", hasValue) << place;
      inText = token.kind == Token::Kind::Start;
    } else if (token.kind == Token::Kind::Text) {
      EXPECT_TRUE(inText) << token.text;
      text += token.text;
    }
  }
  return sheet;
}

std::vector<std::string> sheetNames(const std::wstring& path) {
  std::vector<std::string> names;
  for (const Token& token : tokensOf(workbookPart(path, "xl/workbook.xml"))) {
    if (token.name == "sheet") {
      names.push_back(token.attribute("name"));
    }
  }
  return names;
}

}  // namespace

void readWorkbookPart(const std::wstring& path, std::string_view name,
                      const std::function<void(std::string_view)>& take) {
  auto packed = packedMember(bytesOf(path), name);
  ASSERT_TRUE(packed.has_value()) << "there is no " << name;
  if (packed->isStored) {
    take(packed->bytes);
  } else {
    inflatePieces(packed->bytes, take);
  }
}

std::string workbookPart(const std::wstring& path, std::string_view name) {
  std::string part;
  readWorkbookPart(path, name, [&part](std::string_view piece) { part += piece; });
  return part;
}

std::string readWorkbook(const std::wstring& path) {
  std::string all;
  const std::vector<std::string> looks = looksOf(path);
  const std::vector<std::string> names = sheetNames(path);
  for (std::size_t i = 0; i < names.size(); ++i) {
    const Sheet sheet = readSheet(path, i + 1, looks);
    all += '[' + names[i] + "]\n" + sheet.widths + sheet.cells;
  }
  return all;
}

std::string readCells(const std::wstring& path) {
  std::string all;
  const std::vector<std::string> looks = looksOf(path);
  for (std::size_t i = 0; i < sheetNames(path).size(); ++i) {
    all += readSheet(path, i + 1, looks).cells;
  }
  return all;
}

}  // namespace scrivalen::test

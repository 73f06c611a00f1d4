#include "markup_check.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <vector>

namespace scrivalen::fuzz {
namespace {

// Thrown at the first problem.
struct Problem {
  std::string text;
};

class Reader {
 public:
  explicit Reader(std::string_view bytes) : all_(bytes), rest_(bytes) {}

  bool atEnd() const { return rest_.empty(); }
  bool startsWith(std::string_view text) const { return rest_.starts_with(text); }
  bool contains(std::string_view text) const { return rest_.find(text) != std::string_view::npos; }
  char front() const { return rest_.empty() ? '\0' : rest_.front(); }

  bool accept(std::string_view text) {
    const bool found = startsWith(text);
    rest_.remove_prefix(found ? text.size() : 0);
    return found;
  }

  void expect(std::string_view text) {
    if (!accept(text)) {
      fail("no " + std::string(text));
    }
  }

  std::string_view takeUntil(std::string_view characters) {
    const std::string_view taken = rest_.substr(0, rest_.find_first_of(characters));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  void skipTo(std::string_view text) {
    const std::size_t at = rest_.find(text);
    if (at == std::string_view::npos) {
      fail("no " + std::string(text));
    }
    rest_.remove_prefix(at);
  }

  [[noreturn]] void fail(const std::string& what) const {
    const std::size_t at = all_.size() - rest_.size();
    throw Problem{what + " at " + std::to_string(at) + ": " + std::string(rest_.substr(0, 60))};
  }

 private:
  std::string_view all_;
  std::string_view rest_;
};

// The characters of UTF-8 text; 0xFFFFFFFF for an invalid one.
std::vector<char32_t> charactersOf(std::string_view text) {
  constexpr char32_t kNone = 0xFFFFFFFF;
  std::vector<char32_t> characters;
  for (std::size_t at = 0; at < text.size();) {
    const auto first = static_cast<unsigned char>(text[at]);
    const std::size_t size = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
    if (size == 0 || at + size > text.size()) {
      characters.push_back(kNone);
      return characters;
    }
    char32_t c = size == 1 ? first : first & (0x7Fu >> size);
    for (std::size_t i = 1; i < size; ++i) {
      const auto next = static_cast<unsigned char>(text[at + i]);
      c = (next & 0xC0) == 0x80 ? c << 6 | (next & 0x3F) : kNone;
    }
    const bool isTooLong = (size == 3 && c < 0x800) || (size == 4 && c < 0x10000);
    characters.push_back(isTooLong || c > 0x10FFFF ? kNone : c);
    at += size;
  }
  return characters;
}

// XML 1.0, 2.2.
bool isXmlCharacter(char32_t c) {
  return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
         (c >= 0x10000 && c <= 0x10FFFF);
}

struct Range {
  char32_t first;
  char32_t last;
};

// XML 1.0, 2.3.
bool isNameStart(char32_t c) {
  static constexpr std::array<Range, 16> kRanges = {{{':', ':'},
                                                     {'A', 'Z'},
                                                     {'_', '_'},
                                                     {'a', 'z'},
                                                     {0xC0, 0xD6},
                                                     {0xD8, 0xF6},
                                                     {0xF8, 0x2FF},
                                                     {0x370, 0x37D},
                                                     {0x37F, 0x1FFF},
                                                     {0x200C, 0x200D},
                                                     {0x2070, 0x218F},
                                                     {0x2C00, 0x2FEF},
                                                     {0x3001, 0xD7FF},
                                                     {0xF900, 0xFDCF},
                                                     {0xFDF0, 0xFFFD},
                                                     {0x10000, 0xEFFFF}}};
  return std::any_of(kRanges.begin(), kRanges.end(), [c](Range range) { return c >= range.first && c <= range.last; });
}

bool isNamePart(char32_t c) {
  return isNameStart(c) || c == '-' || c == '.' || (c >= '0' && c <= '9') || c == 0xB7 || (c >= 0x300 && c <= 0x36F) ||
         (c >= 0x203F && c <= 0x2040);
}

bool isName(std::string_view text) {
  const auto characters = charactersOf(text);
  return !characters.empty() && isNameStart(characters.front()) &&
         std::all_of(characters.begin(), characters.end(), isNamePart);
}

bool isXmlReference(std::string_view name) {
  static constexpr std::array<std::string_view, 5> kNames = {"amp", "lt", "gt", "quot", "apos"};
  if (!name.starts_with('#')) {
    return std::find(kNames.begin(), kNames.end(), name) != kNames.end();
  }
  name.remove_prefix(1);
  const bool isHexadecimal = name.starts_with('x');
  name.remove_prefix(isHexadecimal ? 1 : 0);
  std::uint64_t number = 0;
  for (const char c : name) {
    const bool isGood = isHexadecimal ? std::isxdigit(static_cast<unsigned char>(c)) != 0
                                      : std::isdigit(static_cast<unsigned char>(c)) != 0;
    if (!isGood) {
      return false;
    }
    const int digit = c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
    number = std::min<std::uint64_t>(number * (isHexadecimal ? 16 : 10) + static_cast<std::uint64_t>(digit), 0x110000);
  }
  return !name.empty() && isXmlCharacter(static_cast<char32_t>(number));
}

// A text up to a character that ends it, or a part of it up to the end of a reference.
void readXmlText(Reader& reader, std::string_view ends = "<&") {
  const std::string_view text = reader.takeUntil(ends);
  const auto characters = charactersOf(text);
  if (!std::all_of(characters.begin(), characters.end(), isXmlCharacter)) {
    reader.fail("an invalid character before");
  }
  if (text.find("]]>") != std::string_view::npos) {
    reader.fail("the end of a marked section before");
  }
  if (reader.accept("&")) {
    const std::string_view name = reader.takeUntil(";<");
    if (!isXmlReference(name) || !reader.accept(";")) {
      reader.fail("an unknown reference '" + std::string(name) + "'");
    }
  }
}

// XML 1.0, 3.1. Returns whether the element is empty.
bool readXmlAttributes(Reader& reader) {
  std::vector<std::string_view> names;
  while (reader.accept(" ")) {
    const std::string_view name = reader.takeUntil("= />");
    if (!isName(name) || std::find(names.begin(), names.end(), name) != names.end()) {
      reader.fail("the attribute " + std::string(name) + " before");
    }
    names.push_back(name);
    reader.expect("=\"");
    do {
      readXmlText(reader, "<&\"");
    } while (!reader.startsWith("\"") && !reader.startsWith("<") && !reader.atEnd());
    reader.expect("\"");
  }
  return reader.accept("/");
}

enum class Attributes : std::uint8_t { None, Some };

void readXml(Reader& reader, Attributes attributes) {
  std::vector<std::string_view> open;
  reader.expect("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n");
  if (!reader.startsWith("<")) {
    reader.fail("no root element");
  }
  do {
    if (reader.accept("</")) {
      const std::string_view name = reader.takeUntil(">");
      if (open.empty() || open.back() != name) {
        reader.fail("a mismatched end tag");
      }
      open.pop_back();
      reader.expect(">");
    } else if (reader.accept("<")) {
      const std::string_view name = reader.takeUntil(attributes == Attributes::Some ? " />" : ">");
      if (!isName(name)) {
        reader.fail("an invalid name: " + std::string(name));
      }
      const bool isEmpty = attributes == Attributes::Some && readXmlAttributes(reader);
      reader.expect(">");
      if (!isEmpty) {
        open.push_back(name);
      }
    } else {
      readXmlText(reader);
    }
  } while (!open.empty() && !reader.atEnd());
  if (!open.empty()) {
    reader.fail("an open element");
  }
  if (attributes == Attributes::Some) {
    reader.expect("\n");
  }
  if (!reader.atEnd()) {
    reader.fail("something after the root element");
  }
}

constexpr std::array<std::string_view, 4> kVoidElements = {"br", "hr", "img", "input"};
constexpr std::array<std::string_view, 26> kElements = {
    "a",    "blockquote", "code", "colgroup", "del", "em",     "h1",    "h2",    "h3", "h4", "h5",    "h6", "li",
    "main", "nav",        "ol",   "p",        "pre", "strong", "table", "tbody", "td", "th", "thead", "tr", "ul"};
constexpr std::array<std::string_view, 14> kAttributes = {"alt",   "checked", "class", "disabled", "height",
                                                          "href",  "id",      "scope", "src",      "start",
                                                          "style", "title",   "type",  "width"};

template <std::size_t N>
bool isOneOf(const std::array<std::string_view, N>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

// Whether a character may be in a scheme (RFC 3986, 3.1).
bool isPartOfScheme(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '-' || c == '.';
}

// The scheme of an address as a browser reads it, without blanks and control characters; empty without one.
std::string schemeOf(std::string_view address) {
  const std::size_t colon = address.find(':');
  std::string scheme;
  for (const char c : address.substr(0, colon == std::string_view::npos ? 0 : colon)) {
    if (isPartOfScheme(c)) {
      scheme += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    } else if (static_cast<unsigned char>(c) > ' ') {
      return {};
    }
  }
  return scheme;
}

// Schemes whose addresses run something or open a page with the rights of a local one. The list is not the command's,
// as it checks that one.
constexpr std::array<std::string_view, 27> kRunningSchemes = {
    ".uno",       "about",   "feed",  "hcp",  "help",  "intent", "its",      "jar",         "javascript",
    "livescript", "macro",   "mhtml", "mk",   "mocha", "mshelp", "private",  "res",         "search",
    "search-ms",  "service", "shell", "slot", "url",   "vbs",    "vbscript", "view-source", "wyciwyg"};
constexpr std::array<std::string_view, 2> kRunningPrefixes = {"ms-", "vnd.sun.star."};

bool runsProgram(std::string_view scheme) {
  return isOneOf(kRunningSchemes, scheme) ||
         std::any_of(kRunningPrefixes.begin(), kRunningPrefixes.end(),
                     [scheme](std::string_view prefix) { return scheme.starts_with(prefix); });
}

// Whether a value has a reference to a character that could be part of a scheme or hide one. Pages in a code page refer
// to the letters that it lacks, which are outside ASCII.
bool hasReferenceToAscii(std::string_view value) {
  for (std::size_t at = value.find("&#"); at != value.npos; at = value.find("&#", at + 2)) {
    const std::string_view digits = value.substr(at + 2, value.find(';', at) - at - 2);
    const auto isDigit = [](char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; };
    const bool isNumber = !digits.empty() && digits.size() < 8 && std::all_of(digits.begin(), digits.end(), isDigit);
    if (!isNumber || std::stoi(std::string(digits)) < 0x80) {
      return true;
    }
  }
  return false;
}

void checkAttribute(const Reader& reader, std::string_view element, std::string_view name, std::string_view value) {
  if (!isOneOf(kAttributes, name)) {
    reader.fail("the attribute " + std::string(name) + " before");
  }
  if (name != "href" && name != "src") {
    return;
  }
  const std::string scheme = schemeOf(value);
  if (runsProgram(scheme) || (scheme == "data" && element != "img")) {
    reader.fail("the address " + std::string(value) + " before");
  }
  if (hasReferenceToAscii(value)) {
    reader.fail("a reference in the address " + std::string(value) + " before");
  }
}

void readAttributes(Reader& reader, std::string_view element) {
  while (!reader.startsWith(">")) {
    reader.expect(" ");
    const std::string_view name = reader.takeUntil("= >");
    std::string_view value;
    if (reader.accept("=")) {
      reader.expect("\"");
      value = reader.takeUntil("\"");
      reader.expect("\"");
    }
    checkAttribute(reader, element, name, value);
  }
  reader.expect(">");
}

constexpr std::string_view kPageContent = "<main";

void readPage(Reader& reader) {
  reader.skipTo(kPageContent);
  std::vector<std::string_view> open;
  do {
    reader.takeUntil("<");
    if (reader.accept("</")) {
      const std::string_view name = reader.takeUntil(">");
      if (open.empty() || open.back() != name) {
        reader.fail("an end tag that does not match " + std::string(open.empty() ? "" : open.back()));
      }
      open.pop_back();
      reader.expect(">");
    } else if (reader.accept("<")) {
      const std::string_view name = reader.takeUntil(" >");
      const bool isVoid = isOneOf(kVoidElements, name);
      if (!isVoid && !isOneOf(kElements, name)) {
        reader.fail("the element " + std::string(name));
      }
      if (name == "a" && std::find(open.begin(), open.end(), name) != open.end()) {
        reader.fail("a link within a link");
      }
      readAttributes(reader, name);
      if (!isVoid) {
        open.push_back(name);
      }
    }
  } while (!open.empty() && !reader.atEnd());
  if (!open.empty()) {
    reader.fail("an open element: " + std::string(open.back()));
  }
}

template <class Read>
std::string problemIn(std::string_view bytes, Read read) {
  Reader reader(bytes);
  try {
    read(reader);
    return {};
  } catch (const Problem& problem) {
    return problem.text;
  }
}

}  // namespace

std::string problemOfXml(std::string_view bytes) {
  return problemIn(bytes, [](Reader& reader) { readXml(reader, Attributes::None); });
}

std::string problemOfDocumentXml(std::string_view bytes) {
  return problemIn(bytes, [](Reader& reader) { readXml(reader, Attributes::Some); });
}

std::string problemOfPages(std::string_view pages) {
  return problemIn(pages, [](Reader& reader) {
    do {
      readPage(reader);
    } while (reader.contains(kPageContent));
  });
}

std::string withMarkedTags(std::string_view text) {
  const auto isPartOfName = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '-'; };
  std::string marked;
  while (!text.empty()) {
    const std::size_t start = std::min(text.find('<'), text.size() - 1) + 1;
    const bool isOpen = text[start - 1] == '<';
    const auto end = std::find_if_not(text.begin() + static_cast<std::ptrdiff_t>(start), text.end(), isPartOfName);
    const auto size = static_cast<std::size_t>(end - text.begin());
    const bool endsName = end == text.end() || std::string_view(" \t\r\n/>").find(*end) != std::string_view::npos;
    marked += text.substr(0, size);
    if (isOpen && size > start && endsName) {
      marked += " from-input";
    }
    text.remove_prefix(size);
  }
  return marked;
}

std::string problemOfRtf(std::string_view bytes) {
  int depth = 0;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    const char c = bytes[at];
    at += c == '\\' ? 1 : 0;
    depth += c == '{' ? 1 : c == '}' ? -1 : 0;
    const bool isLast = at + 1 >= bytes.size();
    if (depth < 0 || (depth == 0) != isLast) {
      return "the groups do not nest at " + std::to_string(at);
    }
  }
  return bytes.starts_with('{') ? "" : "no group";
}

}  // namespace scrivalen::fuzz

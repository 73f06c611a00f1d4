#include "formats/markup_reading.h"

#include "text/ascii.h"
#include "text/utf.h"
#include "text/xml_characters.h"

#include <algorithm>
#include <iterator>

namespace scrivalen {
namespace {

struct NamedCharacter {
  std::string_view name;
  char32_t character;
};

constexpr NamedCharacter kXmlNames[] = {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

// The names of U+00A0 to U+00FF, in their order (HTML 4.01, 24.2.1).
constexpr std::string_view kLatin1Names[] = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",   "ordf",
    "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",   "acute",  "micro",
    "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12", "frac34", "iquest", "Agrave",
    "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil", "Egrave", "Eacute", "Ecirc",  "Euml",
    "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde", "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",
    "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",  "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute",
    "acirc",  "atilde", "auml",   "aring",  "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave",
    "iacute", "icirc",  "iuml",   "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide",
    "oslash", "ugrave", "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml"};
static_assert(std::size(kLatin1Names) == 96);

constexpr NamedCharacter kOtherNames[] = {
    {"ndash", 0x2013}, {"mdash", 0x2014}, {"lsquo", 0x2018},  {"rsquo", 0x2019}, {"sbquo", 0x201A},
    {"ldquo", 0x201C}, {"rdquo", 0x201D}, {"bdquo", 0x201E},  {"bull", 0x2022},  {"hellip", 0x2026},
    {"ensp", 0x2002},  {"emsp", 0x2003},  {"thinsp", 0x2009}, {"euro", 0x20AC},  {"trade", 0x2122},
    {"larr", 0x2190},  {"uarr", 0x2191},  {"rarr", 0x2192},   {"darr", 0x2193},  {"minus", 0x2212},
    {"ne", 0x2260},    {"le", 0x2264},    {"ge", 0x2265},     {"infin", 0x221E}, {"check", 0x2713}};

// The elements that a paragraph cannot contain (HTML, 4.4.1), and the parts of tables and lists.
constexpr std::string_view kBlocks[] = {
    "address", "article", "aside", "blockquote", "body",     "caption",    "center", "dd",     "details",
    "dir",     "div",     "dl",    "dt",         "fieldset", "figcaption", "figure", "footer", "form",
    "h1",      "h2",      "h3",    "h4",         "h5",       "h6",         "header", "hgroup", "hr",
    "html",    "li",      "main",  "menu",       "nav",      "ol",         "p",      "pre",    "search",
    "section", "summary", "table", "tbody",      "tfoot",    "thead",      "title",  "tr",     "ul"};

constexpr std::string_view kUnread[] = {"script", "style", "template"};

template <std::size_t kCount>
bool isOneOf(std::string_view name, const std::string_view (&names)[kCount]) {
  return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

template <std::size_t kCount>
char32_t characterOf(std::string_view name, const NamedCharacter (&names)[kCount]) {
  const auto* const found =
      std::find_if(std::begin(names), std::end(names), [name](const NamedCharacter& n) { return n.name == name; });
  return found == std::end(names) ? 0 : found->character;
}

// 0 for digits that do not name a character of XML.
char32_t characterOfNumber(std::string_view digits) {
  const int base = digits.starts_with('x') ? 16 : 10;
  digits.remove_prefix(base == 16 ? 1 : 0);
  char32_t number = 0;
  for (const char c : digits) {
    const int digit = hexValue(c);
    if (digit < 0 || digit >= base) {
      return 0;
    }
    number = std::min<char32_t>(0x110000, number * static_cast<char32_t>(base) + static_cast<char32_t>(digit));
  }
  return isXmlCharacter(number) ? number : 0;
}

char32_t characterOfHtml(std::string_view name) {
  const auto* const latin1 = std::find(std::begin(kLatin1Names), std::end(kLatin1Names), name);
  return latin1 == std::end(kLatin1Names) ? characterOf(name, kOtherNames)
                                          : static_cast<char32_t>(0xA0 + (latin1 - std::begin(kLatin1Names)));
}

enum class Names { Xml, Html };

struct Reference {
  char32_t character;
  std::size_t size;
};

// The reference that text begins with; its size is 0 if there is none.
Reference referenceAt(std::string_view text, Names names) {
  constexpr std::size_t kFarthest = 64;  // leading zeros aside, no reference is longer than ten characters
  const std::size_t semicolon = text.substr(0, kFarthest).find(';');
  if (semicolon == text.npos) {
    return {0, 0};
  }
  const std::string_view body = text.substr(1, semicolon - 1);
  char32_t character = body.starts_with('#') ? characterOfNumber(body.substr(1)) : characterOf(body, kXmlNames);
  if (character == 0 && names == Names::Html) {
    character = characterOfHtml(body);
  }
  return {character, character == 0 ? 0 : semicolon + 1};
}

// Replaces the references of a text from the first one on.
void decode(std::string& text, Names names) {
  std::size_t at = text.find('&');
  std::size_t end = at;
  while (at < text.size()) {
    const Reference reference =
        text[at] == '&' ? referenceAt(std::string_view(text).substr(at), names) : Reference{0, 0};
    if (reference.size == 0) {
      text[end++] = text[at++];
    } else {
      // No character is longer in UTF-8 than a reference to it.
      end += putUtf8(reference.character, text.data() + end);
      at += reference.size;
    }
  }
  if (end < text.size()) {
    text.resize(end);
  }
}

struct Tag {
  std::string name;  // in lower case; empty for a comment and the like
  bool isEnd = false;
  std::size_t size = 0;  // 0: no tag
};

// Where a tag ends: after the next ">" that is not in a quoted value.
std::size_t sizeOfTag(std::string_view text) {
  char quote = 0;
  for (std::size_t i = 1; i < text.size(); ++i) {
    if (quote != 0) {
      quote = text[i] == quote ? '\0' : quote;
    } else if ((text[i] == '"' || text[i] == '\'') && text[i - 1] == '=') {
      quote = text[i];
    } else if (text[i] == '>') {
      return i + 1;
    }
  }
  return text.size();
}

std::size_t sizeUpTo(std::string_view text, std::string_view end) {
  const std::size_t found = text.find(end);
  return found == text.npos ? text.size() : found + end.size();
}

// The tag that text, which begins with "<", begins with.
Tag tagAt(std::string_view text) {
  if (text.starts_with("<!--")) {
    return {{}, false, sizeUpTo(text, "-->")};
  }
  if (text.starts_with("<!") || text.starts_with("<?")) {
    return {{}, false, sizeUpTo(text, ">")};
  }
  Tag tag;
  tag.isEnd = text.starts_with("</");
  const std::string_view rest = text.substr(tag.isEnd ? 2 : 1);
  if (rest.empty() || !isAsciiLetter(rest.front())) {
    return tag;
  }
  const auto end = std::find_if(rest.begin(), rest.end(), [](char c) { return !isAsciiLetter(c) && !isAsciiDigit(c); });
  tag.name = asciiLowered(rest.substr(0, static_cast<std::size_t>(end - rest.begin())));
  tag.size = sizeOfTag(text);
  return tag;
}

// What comes after the end tag of an element whose content is not read.
std::size_t sizeOfUnread(std::string_view text, std::string_view name) {
  for (std::size_t at = text.find("</"); at != text.npos; at = text.find("</", at + 1)) {
    const Tag tag = tagAt(text.substr(at));
    if (tag.name == name) {
      return at + tag.size;
    }
  }
  return text.size();
}

class MarkupReader {
 public:
  std::string read(std::string_view markup);

 private:
  void readTag(const Tag& tag);
  void write(std::string_view text);
  void lineBreak();

  std::string text_;
  bool isLineDue_ = false;   // before further text
  bool isBlankDue_ = false;  // the same
};

std::string MarkupReader::read(std::string_view markup) {
  while (!markup.empty()) {
    const std::string_view text = markup.substr(0, markup.find('<'));
    write(text);
    markup.remove_prefix(text.size());
    if (markup.empty()) {
      break;
    }
    const Tag tag = tagAt(markup);
    if (tag.size == 0) {
      write("<");
      markup.remove_prefix(1);
      continue;
    }
    markup.remove_prefix(tag.size);
    if (!tag.isEnd && isOneOf(tag.name, kUnread)) {
      markup.remove_prefix(sizeOfUnread(markup, tag.name));
    } else {
      readTag(tag);
    }
  }
  return std::move(text_);
}

void MarkupReader::readTag(const Tag& tag) {
  if (tag.name == "br") {
    lineBreak();
  } else if (isOneOf(tag.name, kBlocks)) {
    isLineDue_ = !text_.empty();
  } else if (tag.name == "td" || tag.name == "th") {
    isBlankDue_ = !text_.empty();
  }
}

void MarkupReader::lineBreak() {
  while (text_.ends_with(' ')) {
    text_.pop_back();
  }
  text_ += '\n';
}

// References are decoded after white space, so that a no-break space stays.
void MarkupReader::write(std::string_view text) {
  constexpr std::string_view kWhiteSpace = " \t\r\n\f";
  std::string decoded;
  for (const char c : text) {
    if (kWhiteSpace.find(c) == kWhiteSpace.npos) {
      decoded += c;
    } else if (!decoded.ends_with(' ')) {
      decoded += ' ';
    }
  }
  if (decoded.starts_with(' ') && (isLineDue_ || isBlankDue_ || text_.ends_with(' ') || text_.ends_with('\n'))) {
    decoded.erase(0, 1);
  }
  if (decoded.empty()) {
    return;
  }
  if (isLineDue_) {
    lineBreak();
  } else if (isBlankDue_ && !text_.ends_with(' ') && !text_.ends_with('\n')) {
    text_ += ' ';
  }
  isLineDue_ = false;
  isBlankDue_ = false;
  decode(decoded, Names::Html);
  text_ += decoded;
}

}  // namespace

void decodeReferences(std::string& text) { decode(text, Names::Xml); }

std::string textOfMarkup(std::string_view markup) { return MarkupReader().read(markup); }

bool beginsWithBlock(std::string_view markup) {
  markup.remove_prefix(std::min(markup.find_first_not_of(" \t\r\n\f"), markup.size()));
  if (!markup.starts_with('<')) {
    return false;
  }
  const Tag tag = tagAt(markup);
  return tag.size > 0 && (tag.name.empty() || isOneOf(tag.name, kBlocks) || isOneOf(tag.name, kUnread));
}

}  // namespace scrivalen

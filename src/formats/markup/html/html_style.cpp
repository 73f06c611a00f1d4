#include "formats/markup/html/html_style.h"

#include "document/language.h"
#include "document/settings/page.h"
#include "document/settings/running_text.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>

namespace scrivalen::document {
namespace {

// Prose keeps a readable measure. The page grows with tables that are wider. A paragraph has the direction of its first
// letter.
constexpr std::string_view kStyle =
    "*,::before,::after{box-sizing:border-box}\n"
    "html{color-scheme:light;-webkit-text-size-adjust:none;text-size-adjust:none}\n"
    "body{margin:0;padding:3rem 2rem 5rem;background:#fff;color:#1f2328;line-height:1.6;overflow-wrap:break-word}\n"
    "main{width:fit-content;min-width:min(46rem,100%);max-width:100%;margin:0 auto}\n"
    "h1,h2,h3,h4,h5,h6,p,ul,ol,pre,blockquote,nav,hr{max-width:46rem}\n"
    "h1,h2,h3,h4,h5,h6{margin:1.8em 0 .6em;line-height:1.25;font-weight:650}\n"
    "h1{font-size:1.9rem;margin-bottom:.8em}\n"
    "h1.title{font-size:2.3rem}\n"
    "h2{font-size:1.5rem;padding-bottom:.25em;border-bottom:1px solid #d1d9e0}\n"
    "h3{font-size:1.2rem}\n"
    "h4{font-size:1.05rem}\n"
    "h5{font-size:1rem}\n"
    "h6{font-size:.9rem;color:#59636e}\n"
    "main>:first-child,section>:first-child{margin-top:0}\n"
    "*+section{margin-top:3.5rem}\n"
    "p,h1,h2,h3,h4,h5,h6{unicode-bidi:plaintext}\n"
    "p,ul,ol,pre,blockquote{margin:0 0 1em}\n"
    "sup,sub{line-height:0}\n"
    "ul,ol{padding-inline-start:1.75em}\n"
    "li{margin-bottom:.25em}\n"
    "li>p{margin-bottom:.6em}\n"
    "li>ul,li>ol{margin:.25em 0 .2em}\n"
    "li.task{list-style:none}\n"
    "li.task>input,li.task>p:first-child>input{margin-block:0;margin-inline:-1.4em "
    ".35em;vertical-align:-.1em}\n"
    "blockquote{padding:.1em 1.1em;border-inline-start:.25em solid #d1d9e0;color:#59636e}\n"
    "blockquote>:last-child{margin-bottom:.2em}\n"
    // Text that is this deep would have no width left.
    ":is(ul,ol,blockquote) :is(ul,ol,blockquote) :is(ul,ol,blockquote) :is(ul,ol,blockquote) :is(ul,ol,blockquote) "
    ":is(ul,ol,blockquote) :is(ul,ol,blockquote) :is(ul,ol,blockquote) :is(ul,ol,blockquote) :is(ul,ol,blockquote)"
    "{padding-inline:0;border-inline-start-width:0}\n"
    "hr{margin:2.5em 0;border:0;border-top:1px solid #d1d9e0}\n"
    "img{max-width:100%;height:auto}\n"
    "a[href]{color:#0b5cad;text-underline-offset:.15em;text-decoration-thickness:1px}\n"
    "nav ol{padding-inline-start:1.5em;list-style:none}\n"
    "nav>ol{padding-inline-start:0}\n"
    "nav a[href]{text-decoration:none}\n"
    "code,pre{font-family:ui-monospace,\"Cascadia Mono\",Consolas,\"DejaVu Sans Mono\",monospace;font-size:.875em}\n"
    "code{padding:.1em .25em;border-radius:.3em;background:#f4f6f8}\n"
    "pre{padding:.9em 1.1em;border:1px solid #d1d9e0;border-radius:.4em;background:#f4f6f8;line-height:1.5;"
    "overflow-x:auto;overflow-wrap:normal;tab-size:4}\n"
    "pre>code{padding:0;background:none;font-size:inherit}\n"
    "table{margin:.5em 0 1.75em;border-collapse:separate;border-spacing:0;border-top:1px solid #8c959f;"
    "font-size:.9375rem;line-height:1.45;font-variant-numeric:tabular-nums}\n"
    "th,td{padding:.35em .75em;border-bottom:1px solid #d1d9e0;text-align:start;vertical-align:top}\n"
    "li>table{margin-bottom:1em}\n"
    "td.date{white-space:nowrap}\n"
    "th{font-weight:600}\n"
    "thead th{background:#f4f6f8}\n"
    "thead tr:last-child th{border-bottom-color:#8c959f}\n"
    "td[style*=background],th[style*=background]{-webkit-print-color-adjust:exact;print-color-adjust:exact}\n"
    "@media screen and (min-width:48.01em){\n"
    "thead tr:only-child th{position:sticky;top:0}\n"
    "}\n"
    "@media screen and (max-width:48em){\n"
    "body{padding:1.5rem 1rem 3rem}\n"
    "h1{font-size:1.7rem}\n"
    "table{display:block;width:max-content;max-width:100%;overflow-x:auto;overflow-wrap:normal}\n"
    "}\n"
    "@media print{\n"
    "body{padding:0;font-size:10.5pt;line-height:1.45}\n"
    "main,h1,h2,h3,h4,h5,h6,p,ul,ol,pre,blockquote,nav,hr{width:auto;min-width:0;max-width:none}\n"
    "h1{font-size:18pt}\n"
    "h1.title{font-size:22pt}\n"
    "h2{font-size:15pt}\n"
    "h3{font-size:12.5pt}\n"
    "h1,h2,h3,h4,h5,h6{break-after:avoid}\n"
    "*+section{margin-top:0;break-before:page}\n"
    "h1.title+section{break-before:auto}\n"
    "p,li,blockquote{orphans:3;widows:3}\n"
    "pre{white-space:pre-wrap;overflow-wrap:anywhere}\n"
    "table{max-width:100%;font-size:9pt}\n"
    "table.wide{width:100%;font-size:var(--print)}\n"
    "table.wide th,table.wide td{padding:.25em .3em}\n"
    "table.crowded th,table.crowded td{overflow-wrap:anywhere}\n"
    "thead{display:table-header-group}\n"
    "tr,img{break-inside:avoid}\n"
    "img{max-height:95vh;object-fit:contain;object-position:left}\n"
    "tbody tr:nth-child(-n+2){break-after:avoid}\n"
    "tbody tr:nth-last-child(-n+2){break-before:avoid}\n"
    "thead th,code,pre{-webkit-print-color-adjust:exact;print-color-adjust:exact}\n"
    "a[href]{color:inherit}\n"
    "}\n";

constexpr std::string_view kFonts = "system-ui,\"Segoe UI\",Roboto,\"Noto Sans\",\"DejaVu Sans\",Arial,sans-serif";

// A text as a string of CSS (CSS Syntax, 4.3.5). "<" is escaped, too: it could end the style element.
std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (static_cast<unsigned char>(c) < ' ' || c == '"' || c == '\\' || c == '<' || c == 0x7F) {
      const auto byte = static_cast<unsigned char>(c);
      result += {'\\', kHexDigits[byte >> 4], kHexDigits[byte & 0xF], ' '};
    } else {
      result += c;
    }
  }
  return result + '"';
}

std::string fontsOf(const FormatSettings& settings) {
  const std::string_view font = settings.text("font");
  return font.empty() ? std::string(kFonts) : quoted(font) + ',' + std::string(kFonts);
}

// Escapes the characters above ASCII (CSS Syntax, 4.3.7).
std::string inAscii(std::string_view css) {
  std::string result;
  const char* at = css.data();
  const char* const end = at + css.size();
  while (at != end) {
    char32_t c = 0;
    if (static_cast<unsigned char>(*at) < 0x80) {
      result += *at++;
    } else if (nextUtf8(at, end, c)) {
      char digits[8];
      result += '\\';
      result.append(digits, std::to_chars(digits, digits + sizeof digits, static_cast<std::uint32_t>(c), 16).ptr) +=
          ' ';
    }
  }
  return result;
}

std::string millimetres(double points) {
  char digits[32];
  const auto end = std::to_chars(digits, digits + sizeof digits, points * 25.4 / 72, std::chars_format::fixed, 2).ptr;
  std::string result(digits, end);
  result.erase(result.find_last_not_of('0') + 1);
  if (result.back() == '.') {
    result.pop_back();
  }
  return result + "mm";
}

std::string sizeOf(const FormatSettings& settings, const Page& page) {
  const auto paper = paperOf(settings.text("paper"));
  if (!paper || paper->name.empty()) {
    return millimetres(page.widthPt) + ' ' + millimetres(page.heightPt);
  }
  return std::string(paper->name) + (settings.flag("landscape") ? " landscape" : "");
}

std::string contentOf(const std::vector<RunningPiece>& pieces, const FormatSettings& settings) {
  std::string result;
  for (const RunningPiece& piece : pieces) {
    result += result.empty() ? "" : " ";
    switch (piece.field) {
      case RunningField::None: result += quoted(piece.text); break;
      case RunningField::Page: result += "counter(page)"; break;
      case RunningField::Pages: result += "counter(pages)"; break;
      case RunningField::Title: result += quoted(settings.text("title")); break;
      case RunningField::Date: result += quoted(shownDate(settings)); break;
      case RunningField::Section: result += "string(section)"; break;
    }
  }
  return result;
}

bool contains(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

bool isSection(const RunningPiece& piece) { return piece.field == RunningField::Section; }

// Browsers that know no names of sections on the page drop the second declaration and keep the first.
void appendMarginBox(std::string& rules, std::string_view name, std::string_view image,
                     std::vector<RunningPiece> pieces, const FormatSettings& settings) {
  if (pieces.empty() && image.empty()) {
    return;
  }
  const std::string start = image.empty() || pieces.empty() ? std::string(image) : std::string(image) + " \" \" ";
  const std::string all = start + contentOf(pieces, settings);
  const bool hasSection = std::erase_if(pieces, &isSection) > 0;
  rules.append("@").append(name).append("{");
  if (hasSection && !(pieces.empty() && image.empty())) {
    rules.append("content:").append(pieces.empty() ? image : start + contentOf(pieces, settings)).append(";");
  }
  rules.append("content:").append(all).append("}\n");
}

void appendRunningText(std::string& rules, std::string_view place, std::string_view name, std::string_view image,
                       const FormatSettings& settings) {
  constexpr std::string_view kSides[] = {"-left", "-center", "-right"};
  const RunningText parts = runningTextOf(settings.text(name));
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const std::string_view imageHere = i == 0 ? image : std::string_view();
    appendMarginBox(rules, std::string(place).append(kSides[i]), imageHere, parts[i], settings);
  }
}

bool showsSection(const FormatSettings& settings) {
  return contains(settings.text("header"), "{section}") || contains(settings.text("footer"), "{section}");
}

std::string pageRules(const FormatSettings& settings, std::string_view headerImage) {
  const Page page = pageOf(settings);
  std::string rules = "@page{size:" + sizeOf(settings, page) + ";margin:" + millimetres(page.topPt) + ' ' +
                      millimetres(page.rightPt) + ' ' + millimetres(page.bottomPt) + ' ' + millimetres(page.leftPt) +
                      ";color:#59636e;font:8.5pt " + fontsOf(settings) + ";\n";
  appendRunningText(rules, "top", "header", headerImage, settings);
  appendRunningText(rules, "bottom", "footer", {}, settings);
  return rules + "}\n";
}

}  // namespace

std::string htmlStyle(const FormatSettings& settings, std::string_view headerImage) {
  std::string style = "body{font-family:" + fontsOf(settings) + "}\n";
  style.append(kStyle).append(pageRules(settings, headerImage));
  if (showsSection(settings)) {
    style += "section{string-set:section attr(aria-label)}\n";
  }
  return style;
}

std::string htmlScreenStyle(const FormatSettings& settings) {
  return "body{font-family:" + inAscii(fontsOf(settings)) + "}\n" + std::string(kStyle);
}

// Browsers print a page smaller that is somewhat wider than the paper, but cut it off where text begins at the right.
HtmlPrintSize htmlPrintSize(const Table& table, const FormatSettings& settings) {
  constexpr double kUsual = 9;
  constexpr double kSmallest = 5;
  constexpr double kUsualWidth = 0.6;  // of a character, in sizes, like the paddings of a cell
  constexpr double kLargestWidth = 0.7;
  constexpr double kPadding = 1.5;
  constexpr double kNarrowPadding = 0.6;
  const double width = isRightToLeft(settings.text("language")) ? kLargestWidth : kUsualWidth;
  const Page page = pageOf(settings);
  const double space = page.widthPt - page.leftPt - page.rightPt;
  double words = 0;
  for (const Column& column : table.columns) {
    words += static_cast<double>(column.longestWord) * width;
  }
  const auto count = static_cast<double>(table.columns.size());
  if ((words + count * kPadding) * kUsual <= space) {
    return {};
  }
  const double size = space / (words + count * kNarrowPadding);
  return {std::clamp(size, kSmallest, kUsual), size < kSmallest};
}

}  // namespace scrivalen::document

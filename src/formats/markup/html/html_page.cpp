#include "formats/markup/html/html_page.h"

#include "document/language.h"
#include "document/settings/running_text.h"
#include "formats/markup/html/html_header_image.h"
#include "formats/markup/html/html_style.h"
#include "output/markup_text.h"
#include "report/template_path.h"
#include "system/files/files.h"
#include "system/messages.h"
#include "text/ascii.h"
#include "text/utf.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

namespace scrivalen::document {
namespace {

constexpr std::string_view kBody = "%BODY%";
constexpr std::string_view kOwnTail = "</main>\n</body>\n</html>\n";

std::string escaped(std::string_view text) {
  std::string result(MarkupText::spaceFor(text.size()), '\0');
  const char* const end = MarkupText().value(result.data(), text);
  result.resize(static_cast<std::size_t>(end - result.data()));
  return result;
}

void appendMeta(std::string& head, std::string_view name, std::string_view value) {
  if (!value.empty()) {
    head.append("<meta name=\"").append(name).append("\" content=\"").append(escaped(value)).append("\">\n");
  }
}

// A title of no character is not allowed (HTML, 4.2.2).
std::string titleText(std::string_view title) {
  return title.find_first_not_of(' ') == title.npos ? "-" : escaped(title);
}

std::string htmlElement(std::string_view language) {
  const std::string_view direction = isRightToLeft(language) ? " dir=\"rtl\"" : "";
  return "<!DOCTYPE html>\n<html lang=\"" + escaped(language) + '"' + std::string(direction) + ">\n";
}

std::string ownHead(const FormatSettings& settings, std::string_view title, std::string_view metas,
                    std::string_view style) {
  std::string head = htmlElement(settings.text("language"));
  head.append("<head>\n").append(metas).append("<title>").append(titleText(title)).append("</title>\n");
  appendMeta(head, "author", settings.text("author"));
  appendMeta(head, "description", settings.text("subject"));
  appendMeta(head, "keywords", settings.text("keywords"));
  appendMeta(head, "dcterms.date", settings.text("date"));
  return head.append("<style>\n").append(style).append("</style>\n</head>\n<body>\n<main>\n");
}

std::string readTemplate(std::string_view setting) {
  std::string bytes;
  const File file = openForReading(templateFile(setting));
  const bool isRead = file && readRest(file, [&bytes](std::string_view part) {
                        bytes.append(part);
                        return true;
                      });
  if (!isRead) {
    const std::string reason = toUtf8(systemErrorText(lastSystemError()));
    throw OutputFailure(Status::TemplateNotFound,
                        "The template '" + std::string(setting) + "' cannot be read. " + reason);
  }
  return bytes;
}

// A template in UTF-8, without a byte-order mark.
std::string cleanTemplate(std::string_view bytes, OutputWarnings& warnings) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  bytes.remove_prefix(bytes.starts_with(kMark) ? kMark.size() : 0);
  std::wstring text;
  const std::size_t replaced = appendWide(text, bytes);
  if (replaced == 0) {
    return std::string(bytes);
  }
  warnings.add(WarningCode::CharactersReplaced, "the template is not in UTF-8 everywhere: bytes became U+FFFD",
               replaced);
  return toUtf8(text);
}

using Placeholders = std::vector<std::pair<std::string, std::string>>;

// Later ones come before earlier ones of the same name. A property may be named with the percent signs or without.
Placeholders placeholdersOf(const FormatSettings& settings, std::string_view title) {
  Placeholders result = {{"TITLE", escaped(title)},
                         {"AUTHOR", escaped(settings.text("author"))},
                         {"SUBJECT", escaped(settings.text("subject"))},
                         {"DATE", escaped(shownDate(settings))},
                         {"KEYWORDS", escaped(settings.text("keywords"))},
                         {"LANGUAGE", escaped(settings.text("language"))}};
  for (auto [name, value] : settings.properties()) {
    if (name.size() > 2 && name.starts_with('%') && name.ends_with('%')) {
      name = name.substr(1, name.size() - 2);
    }
    result.emplace_back(name, escaped(value));
  }
  std::reverse(result.begin(), result.end());
  return result;
}

// Replaces placeholders in one pass, so that none is looked for in a value.
std::string filled(std::string_view text, const Placeholders& placeholders) {
  std::string result;
  for (std::size_t sign = text.find('%'); sign != text.npos; sign = text.find('%')) {
    result.append(text.substr(0, sign));
    text.remove_prefix(sign + 1);
    const auto found = std::find_if(placeholders.begin(), placeholders.end(), [text](const auto& placeholder) {
      return text.starts_with(placeholder.first) && text.substr(placeholder.first.size()).starts_with('%');
    });
    if (found == placeholders.end()) {
      result += '%';
    } else {
      result += found->second;
      text.remove_prefix(found->first.size() + 1);
    }
  }
  return result.append(text);
}

// Writes another charset into the first meta element that names one; a page without one gets one.
std::string withCharset(std::string page, std::string_view charset) {
  constexpr std::string_view kName = "charset=";
  constexpr std::string_view kEnd = "\"' \t\r\n/>;";
  const std::string lowered = asciiLowered(std::string_view(page));
  for (std::size_t meta = lowered.find("<meta"); meta != lowered.npos; meta = lowered.find("<meta", meta + 1)) {
    std::size_t at = lowered.find(kName, meta);
    if (at < lowered.find('>', meta)) {
      at += kName.size();
      at += page.find_first_of("\"'", at) == at ? 1 : 0;
      return page.replace(at, std::min(page.find_first_of(kEnd, at), page.size()) - at, charset);
    }
  }
  const std::size_t head = lowered.find("<head>");
  if (head != lowered.npos) {
    constexpr std::size_t kSize = 6;
    page.insert(head + kSize, "<meta charset=\"" + std::string(charset) + "\">");
  }
  return page;
}

// Where the document goes: its place, else the end of the page's body.
std::pair<std::string_view, std::string_view> divided(std::string_view page) {
  std::size_t at = page.find(kBody);
  if (at != page.npos) {
    return {page.substr(0, at), page.substr(at + kBody.size())};
  }
  at = std::min(page.rfind("</body"), page.size());
  return {page.substr(0, at), page.substr(at)};
}

HtmlPage filledTemplate(std::string_view page, const FormatSettings& settings, std::string_view title) {
  const Placeholders placeholders = placeholdersOf(settings, title);
  const auto [head, tail] = divided(page);
  return {filled(head, placeholders), filled(tail, placeholders)};
}

}  // namespace

HtmlPage htmlPageOf(const WriterContext& context) {
  const std::string_view name = context.settings.text("template");
  const std::string_view title = context.settings.text("title");
  if (name.empty()) {
    constexpr std::string_view kMetas =
        "<meta charset=\"utf-8\">\n"
        "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n";
    const std::string headerImage = htmlHeaderImage(context.settings, context.warnings);
    return {ownHead(context.settings, title, kMetas, htmlStyle(context.settings, headerImage)), std::string(kOwnTail)};
  }
  return filledTemplate(cleanTemplate(readTemplate(name), context.warnings), context.settings, title);
}

HtmlPageFrame::HtmlPageFrame(const WriterContext& context, std::string_view charset)
    : settings_(context.settings), charset_(charset) {
  const std::string_view name = settings_.text("template");
  if (name.empty()) {
    style_ = htmlScreenStyle(settings_);
  } else {
    template_ = withCharset(cleanTemplate(readTemplate(name), context.warnings), charset);
  }
}

// Readers of help files show a page as old browsers did unless it asks for better.
HtmlPage HtmlPageFrame::page(std::string_view title) const {
  if (!style_.empty()) {
    const std::string metas = "<meta charset=\"" + charset_ +
                              "\">\n"
                              "<meta http-equiv=\"X-UA-Compatible\" content=\"IE=edge\">\n";
    return {ownHead(settings_, title, metas, style_), std::string(kOwnTail)};
  }
  return filledTemplate(template_, settings_, title);
}

}  // namespace scrivalen::document

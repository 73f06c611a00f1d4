#include "formats/help/document/project.h"

#include "output/markup_text.h"
#include "text/ascii.h"

#include <charconv>
#include <cstddef>

namespace scrivalen::help {
namespace {

std::string hexadecimal(int number) {
  char digits[16];
  std::string text = "0x";
  for (const char *at = digits, *end = std::to_chars(digits, digits + sizeof digits, number, 16).ptr; at != end; ++at) {
    text += asciiUpper(*at);
  }
  return text;
}

void appendParameter(std::string& bytes, std::string_view name, std::string_view value, const CodePage& page) {
  std::string escaped(MarkupText::spaceFor(value.size()), '\0');
  escaped.resize(static_cast<std::size_t>(MarkupText().value(escaped.data(), value) - escaped.data()));
  bytes.append("<param name=\"").append(name).append("\" value=\"");
  appendWithReferences(bytes, escaped, page);
  bytes.append("\">\n");
}

void appendEntry(std::string& bytes, const ContentsEntry& entry, const CodePage& page) {
  bytes.append("<LI><OBJECT type=\"text/sitemap\">\n");
  appendParameter(bytes, "Name", entry.name, page);
  appendParameter(bytes, "Local", entry.page, page);
  bytes.append("</OBJECT>\n");
}

// The lists of entries that are open.
class Lists {
 public:
  explicit Lists(std::string& bytes) : bytes_(bytes) {}

  void beginEntry(int level) {
    while (levels_.size() > 1 && levels_.back() > level) {
      end();
    }
    if (levels_.empty() || levels_.back() < level) {
      bytes_.append("<UL>\n");
      levels_.push_back(level);
    } else {
      levels_.back() = level;
    }
  }

  void end() {
    bytes_.append("</UL>\n");
    levels_.pop_back();
  }

  bool isOpen() const { return !levels_.empty(); }

 private:
  std::string& bytes_;
  std::vector<int> levels_;  // of the latest entry in each
};

void appendLine(std::string& bytes, std::string_view key, std::string_view value) {
  bytes.append(key).append("=").append(value).append("\n");
}

}  // namespace

std::string projectFile(const Project& project, const CodePage& page, document::OutputWarnings& warnings) {
  std::string bytes = "[OPTIONS]\n";
  appendLine(bytes, "Compatibility", "1.0");
  appendLine(bytes, "Compiled file", kCompiledName);
  appendLine(bytes, "Contents file", kContentsName);
  appendLine(bytes, "Default topic", project.pages.front());
  appendLine(bytes, "Display compile progress", "No");
  appendLine(bytes, "Full-text search", "Yes");
  appendLine(bytes, "Language", hexadecimal(project.language.identifier).append(" ").append(project.language.name));
  std::string title;
  if (const std::size_t replaced = appendReplaced(title, project.title, page); replaced > 0) {
    warnings.add(document::WarningCode::CharactersReplaced,
                 "letters of the title that the code page of the language lacks, shown as \"?\" above the window",
                 replaced);
  }
  appendLine(bytes, "Title", title);
  bytes.append("[FILES]\n");
  for (const auto* const files : {&project.pages, &project.pictures}) {
    for (const std::string& file : *files) {
      bytes.append(file).append("\n");
    }
  }
  return bytes;
}

std::string contentsFile(const std::vector<ContentsEntry>& entries, const CodePage& page) {
  std::string bytes =
      "<!DOCTYPE HTML PUBLIC \"-//IETF//DTD HTML//EN\">\n"
      "<HTML>\n"
      "<HEAD>\n"
      "<!-- Sitemap 1.0 -->\n"
      "</HEAD>\n"
      "<BODY>\n"
      "<OBJECT type=\"text/site properties\">\n"
      "<param name=\"ImageType\" value=\"Folder\">\n"
      "</OBJECT>\n";
  Lists lists(bytes);
  for (const ContentsEntry& entry : entries) {
    lists.beginEntry(entry.level);
    appendEntry(bytes, entry, page);
  }
  while (lists.isOpen()) {
    lists.end();
  }
  return bytes.append("</BODY>\n</HTML>\n");
}

}  // namespace scrivalen::help

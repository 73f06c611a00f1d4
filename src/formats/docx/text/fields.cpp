#include "formats/docx/text/fields.h"

#include "document/word/bookmark_name.h"
#include "formats/docx/xml.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace scrivalen::document::docx {
namespace {

// Writes a text as part of an argument in quotation marks. A backslash begins a switch unless it is doubled.
// @param quote  in place of each quotation mark of the text
void writeArgument(OutputBuffer& out, std::string_view text, std::string_view quote) {
  while (!text.empty()) {
    const std::size_t plain = std::min(text.find_first_of("\"\\"), text.size());
    putContent(out, text.substr(0, plain));
    if (plain < text.size()) {
      put(out, text[plain] == '"' ? quote : "\\\\");
    }
    text.remove_prefix(std::min(plain + 1, text.size()));
  }
}

// The title is in a run of its own: converters read the address up to the end of the first. It is followed by the frame
// in which addresses open anyway, for which a reader takes the last argument, whatever that is.
void writeTitle(OutputBuffer& out, std::string_view title) {
  put(out, "</w:instrText></w:r><w:r><w:instrText xml:space=\"preserve\"> \\o \"");
  writeArgument(out, title, "'");
  put(out, "\" \\t \"_self\" ");
}

constexpr std::string_view kFieldEnd = "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
constexpr std::string_view kResult = "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>";

}  // namespace

void beginAddressField(OutputBuffer& out, std::string_view address, std::string_view title) {
  put(out, "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText xml:space=\"preserve\"> HYPERLINK \"");
  writeArgument(out, address, "%22");
  put(out, "\" ");
  if (!title.empty()) {
    writeTitle(out, title);
  }
  put(out, kResult);
}

// Some readers make a field of it, in which a quotation mark would end the title, and the rest would be an address.
void beginPlaceLink(OutputBuffer& out, std::string_view id, std::string_view title) {
  put(out, "<w:hyperlink w:anchor=\"");
  putValue(out, bookmarkName(id));
  if (!title.empty()) {
    std::string tip(title);
    std::replace(tip.begin(), tip.end(), '"', '\'');
    put(out, "\" w:tooltip=\"");
    putValue(out, tip);
  }
  put(out, "\" w:history=\"1\">");
}

void endAddressField(OutputBuffer& out) { put(out, kFieldEnd); }
void endPlaceLink(OutputBuffer& out) { put(out, "</w:hyperlink>"); }

void writePageReference(OutputBuffer& out, std::string_view id) {
  put(out,
      "<w:r><w:fldChar w:fldCharType=\"begin\" w:dirty=\"true\"/></w:r>"
      "<w:r><w:instrText xml:space=\"preserve\"> PAGEREF ");
  putContent(out, bookmarkName(id));
  put(out, " \\h ");
  put(out, kResult);
  put(out, kFieldEnd);
}

void writeBookmark(OutputBuffer& out, std::string_view id, std::int64_t number) {
  put(out, "<w:bookmarkStart w:id=\"", number, "\" w:name=\"");
  putValue(out, bookmarkName(id));
  put(out, "\"/><w:bookmarkEnd w:id=\"", number, "\"/>");
}

}  // namespace scrivalen::document::docx

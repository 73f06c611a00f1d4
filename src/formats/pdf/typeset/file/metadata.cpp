#include "formats/pdf/typeset/file/metadata.h"

#include "formats/pdf/typeset/file/syntax.h"
#include "text/calendar.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

namespace scrivalen::typeset {
namespace {

constexpr std::string_view kProducer = "Scrivalen";
constexpr std::size_t kLongestName = 127;  // PDF 1.7, Annex C
constexpr std::string_view kOwnNames[] = {"Title",    "Author",       "Subject", "Keywords", "Creator",
                                          "Producer", "CreationDate", "ModDate", "Trapped"};

void appendMarkup(std::string& out, std::string_view text) {
  for (const char c : text) {
    switch (c) {
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '&': out += "&amp;"; break;
      default: out += c;
    }
  }
}

void appendPadded(std::string& out, std::int64_t value, std::size_t digits) {
  std::string number;
  appendInteger(number, value);
  out.append(digits - std::min(number.size(), digits), '0').append(number);
}

std::string isoTime(std::int64_t time) {
  const CalendarTime moment = calendarTimeOf(time);
  std::string text;
  appendPadded(text, moment.date.year, 4);
  for (const auto& [sign, part] :
       {std::pair('-', moment.date.month), std::pair('-', moment.date.day), std::pair('T', moment.hour),
        std::pair(':', moment.minute), std::pair(':', moment.second)}) {
    text += sign;
    appendPadded(text, part, 2);
  }
  return text + "Z";
}

// A property of XMP; nothing for an empty text.
void append(std::string& out, std::string_view begin, std::string_view text, std::string_view end) {
  if (!text.empty()) {
    out.append(begin);
    appendMarkup(out, text);
    out.append(end).append("\n");
  }
}

// The standard that the file conforms to (ISO 19005-1, 6.7.11).
void appendStandard(std::string& xmp, Standard standard) {
  if (standard != Standard::None) {
    const bool isFirst = standard == Standard::A1b;
    xmp += "<rdf:Description rdf:about=\"\" xmlns:pdfaid=\"http://www.aiim.org/pdfa/ns/id/\">\n";
    append(xmp, "<pdfaid:part>", isFirst ? "1" : "2", "</pdfaid:part>");
    append(xmp, "<pdfaid:conformance>", isFirst ? "B" : "U", "</pdfaid:conformance>");
    xmp += "</rdf:Description>\n";
  }
}

}  // namespace

bool isPropertyName(std::string_view name) {
  return name.size() <= kLongestName &&
         std::find(std::begin(kOwnNames), std::end(kOwnNames), name) == std::end(kOwnNames);
}

std::uint64_t Metadata::identity() const {
  std::uint64_t hash = 14695981039346656037u;  // FNV-1a
  for (const std::string* text : {&title, &author, &subject, &keywords, &language}) {
    for (const char c : *text) {
      hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211u;
    }
    hash *= 1099511628211u;
  }
  return hash ^ static_cast<std::uint64_t>(time);
}

int writeInformation(PdfFile& file, const Metadata& metadata) {
  std::string object = "<<";
  const auto add = [&object](std::string_view key, std::string_view text) {
    if (!text.empty()) {
      object.append(key);
      appendText(object, text);
    }
  };
  add("/Title", metadata.title);
  add("/Author", metadata.author);
  add("/Subject", metadata.subject);
  add("/Keywords", metadata.keywords);
  add("/Creator", kProducer);
  add("/Producer", kProducer);
  for (const auto& [name, value] : metadata.properties) {
    appendName(object, name);
    appendText(object, value);
  }
  object += "/CreationDate";
  appendDate(object, metadata.time);
  object += "/ModDate";
  appendDate(object, metadata.time);
  object += ">>";
  const int number = file.newNumber();
  file.writeObject(number, object);
  return number;
}

int writeXmp(PdfFile& file, const Metadata& metadata) {
  std::string xmp =
      "<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>\n"
      "<x:xmpmeta xmlns:x=\"adobe:ns:meta/\">\n"
      "<rdf:RDF xmlns:rdf=\"http://www.w3.org/1999/02/22-rdf-syntax-ns#\">\n"
      "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\""
      " xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\" xmlns:xmp=\"http://ns.adobe.com/xap/1.0/\">\n";
  append(xmp, "<dc:title><rdf:Alt><rdf:li xml:lang=\"x-default\">", metadata.title, "</rdf:li></rdf:Alt></dc:title>");
  append(xmp, "<dc:creator><rdf:Seq><rdf:li>", metadata.author, "</rdf:li></rdf:Seq></dc:creator>");
  append(xmp, "<dc:description><rdf:Alt><rdf:li xml:lang=\"x-default\">", metadata.subject,
         "</rdf:li></rdf:Alt></dc:description>");
  append(xmp, "<dc:language><rdf:Bag><rdf:li>", metadata.language, "</rdf:li></rdf:Bag></dc:language>");
  append(xmp, "<pdf:Keywords>", metadata.keywords, "</pdf:Keywords>");
  append(xmp, "<pdf:Producer>", kProducer, "</pdf:Producer>");
  append(xmp, "<xmp:CreatorTool>", kProducer, "</xmp:CreatorTool>");
  const std::string time = isoTime(metadata.time);
  append(xmp, "<xmp:CreateDate>", time, "</xmp:CreateDate>");
  append(xmp, "<xmp:ModifyDate>", time, "</xmp:ModifyDate>");
  xmp += "</rdf:Description>\n";
  appendStandard(xmp, file.standard());
  xmp += "</rdf:RDF>\n</x:xmpmeta>\n<?xpacket end=\"w\"?>";
  const int number = file.newNumber();
  file.writeEncodedStream(number, "/Type/Metadata/Subtype/XML", xmp);
  return number;
}

}  // namespace scrivalen::typeset
